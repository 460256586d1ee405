#include "Platform/FileGroup.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/ErrorWords.h"
#include "Linux/Files/Flushing.h"
#include "Linux/Files/HiddenFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::size_t mostMembers = 64;
constexpr std::uint64_t mostBytes = std::uint64_t{32} << 20;
constexpr std::size_t flushesAtATime = 8;

/// Begins the writing at once and does not wait for it. Where that cannot be asked for, flushing does it all.
void startFlushing(int file) { ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE); }

/// Flushes all of them; returns the error of each, or 0. A disk that is asked for many flushes at a time makes them
/// one: sixty files in turn take fifty times as long as together.
std::vector<int> flushTogether(const std::vector<int>& files) {
  std::vector<int> errors(files.size());
  std::atomic<std::size_t> next = 0;
  const auto flushNext = [&] {
    for (auto i = next++; i < files.size(); i = next++) errors[i] = flush(files[i]);
  };
  std::vector<std::jthread> helpers;
  try {
    while (helpers.size() + 1 < std::min(files.size(), flushesAtATime)) helpers.emplace_back(flushNext);
  } catch (const std::system_error&) {
    // Those that could be started, and this thread, are enough.
  }
  flushNext();
  helpers.clear();
  return errors;
}

/// The time as the system counts it; absent when it cannot count that far.
std::optional<timespec> systemTime(Timestamp date) {
  const double seconds = std::floor(secondsSince1970(date));
  constexpr double most = 9e15;
  if (!(std::abs(seconds) < most)) return std::nullopt;
  const double nanoseconds = std::floor((secondsSince1970(date) - seconds) * 1e9);
  return timespec{static_cast<time_t>(seconds), std::min(static_cast<long>(nanoseconds), 999'999'999L)};
}

}  // namespace

struct PendingFile::State {
  explicit State(std::string wanted)
      : target(std::move(wanted)), file(std::string(FilePath::folder(target)), HiddenFile::Access::everybody) {}

  std::string target;
  HiddenFile file;
  std::uint64_t size = 0;
};

Result<PendingFile> PendingFile::beside(std::string target) {
  if (target.find('\0') != std::string::npos) return Error{wordsFor(EINVAL)};
  // What is wrong with the target's own name would be met only after all was written.
  struct stat former {};
  const bool isTaken = ::lstat(target.c_str(), &former) == 0;
  if (!isTaken && errno != ENOENT) return Error{wordsFor(errno)};
  if (isTaken && S_ISDIR(former.st_mode)) return Error{wordsFor(EISDIR)};
  auto state = std::make_unique<State>(std::move(target));
  const int error = state->file.error();
  if (error == ENOENT) return Error{"The folder is not there"};
  if (error != 0) return Error{wordsFor(error)};
  constexpr auto permissions = S_IRWXU | S_IRWXG | S_IRWXO;
  if (isTaken && S_ISREG(former.st_mode)) ::fchmod(state->file.number(), former.st_mode & permissions);
  return PendingFile(std::move(state));
}

PendingFile::PendingFile(std::unique_ptr<State> state) : state_(std::move(state)) {}
PendingFile::~PendingFile() = default;
PendingFile::PendingFile(PendingFile&& other) noexcept = default;
PendingFile& PendingFile::operator=(PendingFile&& other) noexcept = default;

std::optional<Error> PendingFile::write(std::string_view bytes) {
  if (const int error = state_->file.write(bytes.data(), bytes.size()); error != 0) return Error{wordsFor(error)};
  state_->size += bytes.size();
  return std::nullopt;
}

void PendingFile::setModificationDate(Timestamp date) {
  const auto time = systemTime(date);
  if (!time) return;
  const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, *time};
  ::futimens(state_->file.number(), times.data());
}

std::uint64_t PendingFile::size() const { return state_->size; }

std::optional<Error> FileGroup::add(PendingFile file, Condition condition) {
  startFlushing(file.state_->file.number());
  bytes_ += file.size();
  members_.push_back({std::move(file), std::move(condition)});
  return members_.size() < mostMembers && bytes_ < mostBytes ? std::nullopt : finish();
}

std::optional<Error> FileGroup::finish() {
  auto members = std::exchange(members_, {});
  bytes_ = 0;
  std::vector<int> files;
  files.reserve(members.size());
  for (const auto& member : members) files.push_back(member.file.state_->file.number());
  const auto errors = flushTogether(files);

  int firstError = 0;
  const auto isDone = [&](int error) {
    if (firstError == 0) firstError = error;
    return error == 0;
  };
  std::set<std::string_view> folders;
  for (std::size_t i = 0; i < members.size(); ++i) {
    auto& [file, condition] = members[i];
    const auto& target = file.state_->target;
    if (!isDone(errors[i]) || (condition && !condition()) || !isDone(file.state_->file.replace(target))) continue;
    folders.insert(FilePath::folder(target));
    ++placed_;
  }
  for (const auto folder : folders) isDone(flushFolder(std::string(folder)));
  return firstError == 0 ? std::nullopt : std::optional(Error{wordsFor(firstError)});
}

}  // namespace Nimbrel
