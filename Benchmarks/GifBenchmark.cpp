// A recording of the screen turned into an animated GIF, beside the ffmpeg command with a palette for the whole film:
// once of all its pixels, once of those that change. Prints CPU time and peak memory of the processes, the sizes of the
// files, and how far their frames are from what was on the screen.

#include "Measure.h"
#include "Platform/MovieWriter.h"
#include "Recording/RecordingProcessor.h"
#include "ScreenScene.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <QTemporaryDir>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Benchmarks {

namespace {

constexpr int rounds = 3;
constexpr double seconds = static_cast<double>(ScreenScene::frameCount) / ScreenScene::framesPerSecond;
constexpr std::string_view ownRole = "--make";

[[noreturn]] void giveUp(const std::string& why) {
  std::fprintf(stderr, "%s\n", why.c_str());
  std::exit(EXIT_FAILURE);
}

void writeMovie(const ScreenScene& scene, const std::string& path) {
  auto opened = MovieWriter::open(path, {.size = ScreenScene::size, .framesPerSecond = ScreenScene::framesPerSecond});
  if (!opened) giveUp(opened.error().message);
  const auto& writer = opened.value();
  for (int i = 0; i < ScreenScene::frameCount; ++i) {
    const auto failure = writer->addFrame(scene.frame(i), static_cast<double>(i) / ScreenScene::framesPerSecond);
    if (failure) giveUp(failure->message);
  }
  if (const auto failure = writer->finish(seconds)) giveUp(failure->message);
}

/// In a process of its own, so that its memory can be told. The file stands beside the movie.
int makeOurs(const std::string& movie) {
  const auto path = RecordingProcessor::gif(movie, 0, seconds, ScreenScene::framesPerSecond, false, {});
  if (!path) giveUp(path.error().message);
  return EXIT_SUCCESS;
}

struct Usage {
  double cpu = 0;
  double memory = 0;
};

Usage usageOf(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  int status = 0;
  rusage used{};
  if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
      wait4(child, &status, 0, &used) != child || status != 0) {
    giveUp(words.front() + " failed");
  }
  const auto time = [](const timeval& value) {
    return static_cast<double>(value.tv_sec) + static_cast<double>(value.tv_usec) * 1e-6;
  };
  return {.cpu = time(used.ru_utime) + time(used.ru_stime), .memory = static_cast<double>(used.ru_maxrss) * 1024};
}

struct Way {
  std::string name;
  std::vector<std::string> command;
  std::string gif;
  std::vector<double> cpu = {};
  double memory = 0;

  void run() {
    QFile::remove(QString::fromStdString(gif));
    const auto usage = usageOf(command);
    cpu.push_back(usage.cpu);
    memory = std::max(memory, usage.memory);
  }
  [[nodiscard]] double medianCpu() const {
    auto sorted = cpu;
    std::ranges::sort(sorted);
    return sorted[sorted.size() / 2];
  }
  [[nodiscard]] double fileSize() const { return static_cast<double>(QFile(QString::fromStdString(gif)).size()); }
};

double squaredError(const QImage& one, const QImage& other) {
  double sum = 0;
  for (int y = 0; y < one.height(); ++y) {
    const auto* a = reinterpret_cast<const QRgb*>(one.constScanLine(y));
    const auto* b = reinterpret_cast<const QRgb*>(other.constScanLine(y));
    for (int x = 0; x < one.width(); ++x) {
      const int red = qRed(a[x]) - qRed(b[x]);
      const int green = qGreen(a[x]) - qGreen(b[x]);
      const int blue = qBlue(a[x]) - qBlue(b[x]);
      sum += red * red + green * green + blue * blue;
    }
  }
  return sum / (3.0 * one.width() * one.height());
}

/// The mean squared error of a channel over all frames.
double errorOf(const Way& way, const ScreenScene& scene) {
  QImageReader reader(QString::fromStdString(way.gif));
  double sum = 0;
  for (int i = 0; i < ScreenScene::frameCount; ++i) {
    const auto shown = reader.read().convertToFormat(QImage::Format_RGB32);
    if (shown.size() != ScreenScene::size) giveUp(way.name + " lacks a frame");
    sum += squaredError(shown, scene.frame(i));
  }
  return sum / ScreenScene::frameCount;
}

Way peer(const std::string& name, const std::string& movie, const std::string& gif, const std::string& statistics) {
  const auto filters =
      "split[a][b];[a]palettegen=stats_mode=" + statistics + "[p];[b][p]paletteuse=diff_mode=rectangle";
  return {.name = name, .command = {"ffmpeg", "-v", "error", "-i", movie, "-filter_complex", filters, gif}, .gif = gif};
}

int compareWays(const ScreenScene& scene, const Way& ours, const std::vector<Way>& peers) {
  std::vector<Comparison> time;
  std::vector<Comparison> memory;
  std::vector<Comparison> size;
  std::vector<Comparison> error;
  for (const auto& way : peers) {
    time.push_back({way.name, ours.medianCpu(), way.medianCpu(), 1});
    memory.push_back({way.name, ours.memory, way.memory, 0.25});
    size.push_back({way.name, ours.fileSize(), way.fileSize(), 1});
    error.push_back({way.name, errorOf(ours, scene), errorOf(way, scene), 1});
  }
  const std::array missed{printTable(time, "seconds of CPU time"), printTable(memory, "bytes of memory at most"),
                          printTable(size, "bytes of the file"), printTable(error, "squared error of a channel")};
  return *std::ranges::max_element(missed);
}

int run() {
  const QTemporaryDir folder;
  const auto at = [&](const char* name) { return folder.filePath(QLatin1String(name)).toStdString(); };
  const ScreenScene scene;
  const auto movie = at("scene.mov");
  writeMovie(scene, movie);
  Way ours{.name = "ours", .command = {"/proc/self/exe", std::string(ownRole), movie}, .gif = at("scene.gif")};
  std::vector peers{peer("ffmpeg, palette of the whole film", movie, at("whole.gif"), "full"),
                    peer("ffmpeg, palette of what changes", movie, at("changes.gif"), "diff")};
  for (int round = 0; round < rounds; ++round) {
    for (auto& way : peers) way.run();
    ours.run();
  }
  return compareWays(scene, ours, peers);
}

}  // namespace

}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  using namespace Nimbrel::Benchmarks;
  if (argc == 3 && argv[1] == ownRole) return makeOurs(argv[2]);
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  return run();
}
