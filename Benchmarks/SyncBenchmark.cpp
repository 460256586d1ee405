// The encrypted exchange of 500 shots, 64 MB, beside the bare work that it cannot do without, with the same flushing,
// and whole commands beside rclone with a crypt remote. rclone does not wait for the disk. We always do, unless
// eatmydata takes all flushing away, as it does where both are to be equally durable.

#include "Measure.h"
#include "Sync/EncryptedSync.h"
#include "Sync/Vault.h"

#include <QTemporaryDir>

#include <fcntl.h>
#include <openssl/evp.h>
#include <openssl/rand.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

namespace fs = std::filesystem;

constexpr int shotCount = 500;
constexpr std::size_t shotBytes = (std::size_t{64} << 20) / shotCount;
constexpr std::string_view passphrase = "correct horse battery staple";
constexpr int rounds = 7;

void demand(bool condition, const char* what) {
  if (condition) return;
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

/// A home with a library of pictures that nothing can make smaller, of half to one and a half times the mean size.
class Home {
 public:
  Home() {
    std::mt19937_64 random(1);
    std::vector<std::uint64_t> words(shotBytes * 3 / 2 / sizeof(std::uint64_t));
    for (int i = 0; i < shotCount; ++i) {
      std::ranges::generate(words, std::ref(random));
      const auto path = library() + "/2024/2024-" + std::to_string(1 + i % 12) + "/Shot " + std::to_string(i) + ".png";
      fs::create_directories(fs::path(path).parent_path());
      std::ofstream(path, std::ios::binary)
          .write(reinterpret_cast<const char*>(words.data()),
                 static_cast<std::streamsize>(shotBytes / 2 + shotBytes * static_cast<std::size_t>(i) / shotCount));
      shots_.push_back(path);
    }
    ::sync();
  }

  [[nodiscard]] std::string path(const std::string& name) const { return folder_.path().toStdString() + "/" + name; }
  [[nodiscard]] std::string library() const { return path("Pictures/Nimbrel"); }
  [[nodiscard]] const std::vector<std::string>& shots() const { return shots_; }
  /// A folder that is not there yet, another one each time.
  [[nodiscard]] std::string newVault() { return path("vault " + std::to_string(++vaults_)); }

 private:
  QTemporaryDir folder_;
  std::vector<std::string> shots_;
  int vaults_ = 0;
};

void exchange(const Home& home, const std::string& vault, SyncResult expected) {
  const auto result = EncryptedSync::run(home.library(), vault, passphrase);
  demand(result && result.value() == expected, "the exchange went wrong");
}

using Bytes = std::vector<unsigned char>;
constexpr int nonceBytes = 12;
constexpr int tagBytes = 16;

std::size_t readInto(Bytes& room, const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat facts {};
  demand(file >= 0 && ::fstat(file, &facts) == 0, "a file cannot be opened");
  const auto size = static_cast<std::size_t>(facts.st_size);
  if (room.size() < size) room.resize(size);
  demand(::read(file, room.data(), size) == facts.st_size, "a file cannot be read");
  ::close(file);
  return size;
}

/// The loop that nobody gets around: read, base64, AES-GCM, write; then flush, rename, flush the folder.
class BareExport {
 public:
  explicit BareExport(std::string vault) : vault_(std::move(vault)), key_(Vault::key(passphrase).value()) {
    fs::create_directory(vault_);
    EVP_EncryptInit_ex(cipher_, EVP_aes_256_gcm(), nullptr, reinterpret_cast<const unsigned char*>(key_.bytes().data()),
                       nullptr);
  }
  ~BareExport() { EVP_CIPHER_CTX_free(cipher_); }
  BareExport(const BareExport&) = delete;
  BareExport& operator=(const BareExport&) = delete;

  void run(const std::vector<std::string>& shots) {
    for (const auto& shot : shots) {
      seal(shot);
      if (waiting_.size() == 64 || bytes_ >= std::size_t{32} << 20) place();
    }
    place();
  }

 private:
  void seal(const std::string& shot) {
    const auto size = readInto(plain_, shot);
    sealed_.resize(size / 3 * 4 + 400);
    auto* payload = sealed_.data() + nonceBytes;
    int length = std::sprintf(reinterpret_cast<char*>(payload),
                              R"({"relativePath":"%.200s","modified":721692800.5,"data":")", shot.c_str());
    length += EVP_EncodeBlock(payload + length, plain_.data(), static_cast<int>(size));
    length += std::sprintf(reinterpret_cast<char*>(payload + length), "\"}");
    RAND_bytes(sealed_.data(), nonceBytes);
    EVP_EncryptInit_ex(cipher_, nullptr, nullptr, nullptr, sealed_.data());
    int written = 0;
    EVP_EncryptUpdate(cipher_, payload, &written, payload, length);
    EVP_EncryptFinal_ex(cipher_, payload, &written);
    EVP_CIPHER_CTX_ctrl(cipher_, EVP_CTRL_AEAD_GET_TAG, tagBytes, payload + length);
    write(static_cast<std::size_t>(nonceBytes + length + tagBytes));
  }

  void write(std::size_t size) {
    const auto name = vault_ + "/." + std::to_string(number_++);
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    demand(file >= 0 && ::write(file, sealed_.data(), size) == static_cast<ssize_t>(size), "a file cannot be written");
    ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
    waiting_.emplace_back(file, name);
    bytes_ += size;
  }

  void place() {
    std::atomic<std::size_t> next = 0;
    {
      std::vector<std::jthread> threads;
      for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
          for (auto at = next++; at < waiting_.size(); at = next++) ::fsync(waiting_[at].first);
        });
      }
    }
    for (const auto& [file, name] : waiting_) {
      ::close(file);
      ::rename(name.c_str(), (name + ".nimbrelvault").replace(vault_.size() + 1, 1, "").c_str());
    }
    const int folder = ::open(vault_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ::fsync(folder);
    ::close(folder);
    waiting_.clear();
    bytes_ = 0;
  }

  std::string vault_;
  Crypto::Key key_;
  EVP_CIPHER_CTX* cipher_ = EVP_CIPHER_CTX_new();
  Bytes plain_;
  Bytes sealed_;
  std::vector<std::pair<int, std::string>> waiting_;
  std::size_t bytes_ = 0;
  int number_ = 0;
};

/// Reads every file of a vault and opens it.
void openBare(const std::string& vault) {
  const auto key = Vault::key(passphrase).value();
  auto* cipher = EVP_CIPHER_CTX_new();
  EVP_DecryptInit_ex(cipher, EVP_aes_256_gcm(), nullptr, reinterpret_cast<const unsigned char*>(key.bytes().data()),
                     nullptr);
  Bytes bytes;
  for (const auto& entry : fs::directory_iterator(vault)) {
    const auto size = readInto(bytes, entry.path());
    const auto length = static_cast<int>(size) - nonceBytes - tagBytes;
    auto* payload = bytes.data() + nonceBytes;
    int written = 0;
    EVP_DecryptInit_ex(cipher, nullptr, nullptr, nullptr, bytes.data());
    EVP_DecryptUpdate(cipher, payload, &written, payload, length);
    EVP_CIPHER_CTX_ctrl(cipher, EVP_CTRL_AEAD_SET_TAG, tagBytes, payload + length);
    demand(EVP_DecryptFinal_ex(cipher, payload, &written) == 1, "a vault file does not open");
    use(payload[0]);
  }
  EVP_CIPHER_CTX_free(cipher);
}

enum class Flushing { Off, On };

struct Cost {
  double wall = 0;
  double cpu = 0;
};

double childrenSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Runs a command to its end with a file as its input; it must succeed.
Cost costOf(std::vector<std::string> words, const std::string& input) {
  std::vector<char*> arguments;
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const auto cpu = childrenSeconds();
  pid_t child = 0;
  int status = 0;
  // What another command has left to be written is not this one's work.
  ::sync();
  const auto start = std::chrono::steady_clock::now();
  demand(posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0, arguments[0]);
  demand(waitpid(child, &status, 0) == child && status == 0, arguments[0]);
  posix_spawn_file_actions_destroy(&actions);
  return {std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), childrenSeconds() - cpu};
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

/// What is to be reached beside the peer; nothing where it is not equally durable or does less.
struct Targets {
  double wall = std::numeric_limits<double>::infinity();
  double cpu = std::numeric_limits<double>::infinity();
};

/// Both commands by turns; a row for the time that they take and one for what they cost the processor.
void compareCommands(std::vector<Comparison>& table, const std::string& name, const Targets& targets,
                     const std::function<Cost()>& ours, const std::function<Cost()>& peer) {
  std::array<std::vector<double>, 4> costs;
  for (int round = 0; round < rounds; ++round) {
    const auto theirs = peer();
    const auto own = ours();
    const std::array values{own.wall, theirs.wall, own.cpu, theirs.cpu};
    for (std::size_t i = 0; i < values.size(); ++i) costs[i].push_back(values[i]);
  }
  table.push_back({name + ", time", median(costs[0]), median(costs[1]), targets.wall});
  table.push_back({name + ", CPU", median(costs[2]), median(costs[3]), targets.cpu});
}

void setEnvironment(const Home& home) {
  ::setenv("HOME", home.path("").c_str(), 1);
  ::setenv("XDG_DATA_HOME", home.path(".local/share").c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", home.path(".config").c_str(), 1);
  ::setenv("RCLONE_CONFIG", "/dev/null", 1);
  ::setenv("RCLONE_CONFIG_VAULT_TYPE", "crypt", 1);
  // "correct horse battery staple" in the form that rclone wants its passwords in.
  ::setenv("RCLONE_CONFIG_VAULT_PASSWORD", "7mojgIvfV5cloQf9_tZQfT1M2_xgu19hobGQpFaFqitme75NJq8Gr5DO2hc", 1);
}

std::string program(const char* name) { return fs::read_symlink("/proc/self/exe").parent_path() / name; }

void compareWithRclone(std::vector<Comparison>& table, Home& home) {
  setEnvironment(home);
  const auto passphraseFile = home.path("passphrase");
  std::ofstream(passphraseFile) << passphrase << '\n';
  const auto ctl = [&](const std::vector<std::string>& words, Flushing flushing = Flushing::On) {
    std::vector<std::string> command{program("nimbrelctl")};
    if (flushing == Flushing::Off) command.insert(command.begin(), "eatmydata");
    command.insert(command.end(), words.begin(), words.end());
    return costOf(std::move(command), passphraseFile);
  };
  const auto rclone = [&] { return costOf({"rclone", "sync", home.library(), "vault:"}, "/dev/null"); };
  const auto beginVault = [&] { ::setenv("RCLONE_CONFIG_VAULT_REMOTE", home.newVault().c_str(), 1); };
  // The pictures are in the catalogue by then, as they would be.
  ctl({"scan"});
  for (const auto flushing : {Flushing::Off, Flushing::On}) {
    const std::string suffix = flushing == Flushing::On ? ", ours flushed" : "";
    compareCommands(
        table, "nimbrelctl sync, 500 shots out; rclone sync" + suffix,
        flushing == Flushing::On ? Targets() : Targets{.wall = 0.5, .cpu = 1.0 / 3},
        [&] {
          ctl({"settings", "syncRoot", home.newVault()});
          return ctl({"sync"}, flushing);
        },
        [&] {
          beginVault();
          return rclone();
        });
  }
  compareCommands(
      table, "the same again, unchanged; rclone does not open the files", {}, [&] { return ctl({"sync"}); }, rclone);
}

int run() {
  Home home;
  std::vector<Comparison> table;
  const SyncResult allOut{.exported = shotCount, .imported = 0};
  const auto ours = [&] { exchange(home, home.newVault(), allOut); };
  const auto bare = [&] { BareExport(home.newVault()).run(home.shots()); };
  table.push_back(compare("500 shots out; bare loop, flushed alike", 1 / 0.7, rounds, ours, bare));
  table.push_back(compareCpu("the same, CPU", 1 / 0.7, rounds, ours, bare));

  const auto vault = home.newVault();
  exchange(home, vault, allOut);
  const auto again = [&] { exchange(home, vault, {}); };
  const auto open = [&] { openBare(vault); };
  table.push_back(compare("unchanged run; bare reading and opening", 1.3, rounds, again, open));
  table.push_back(compareCpu("the same, CPU", 1.3, rounds, again, open));

  compareWithRclone(table, home);
  return printTable(table, "seconds");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main() { return Nimbrel::Benchmarks::run(); }
