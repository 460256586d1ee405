// Screenshots encoded as HEIC, from the PNG to the bytes of the file: the CPU time of all beside that of heif-enc at
// the same quality and the same resolution of colours, and the time until all are done beside heif-enc called for one
// after the other, with all cores and with one.

#include "Measure.h"
#include "ProgramUsage.h"
#include "ScreenScene.h"
#include "Store/HeicEncodings.h"

#include <QDir>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QThreadPool>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int pictureCount = 10;
constexpr double quality = 0.9;
constexpr double cpuTarget = 1.05;
constexpr double wallTarget = 1 / 1.6;

using Pictures = std::vector<HeicEncodings::Picture>;

Pictures draw(const QDir& folder) {
  const ScreenScene scene;
  Pictures pictures;
  for (int i = 0; i < pictureCount; ++i) {
    const auto path = folder.filePath(QStringLiteral("%1.png").arg(i));
    if (!scene.frame(i * ScreenScene::frameCount / pictureCount).save(path)) std::exit(1);
    const auto name = path.toStdString();
    pictures.push_back({.path = name, .limit = static_cast<std::int64_t>(std::filesystem::file_size(name))});
  }
  return pictures;
}

double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

Usage ours(const Pictures& pictures) {
  const double cpu = cpuSeconds();
  const auto start = std::chrono::steady_clock::now();
  QThreadPool threads;
  HeicEncodings encodings(threads, pictures, quality);
  std::size_t kept = 0;
  for (const auto& picture : pictures) {
    const auto file = encodings.next();
    if (file && std::cmp_greater_equal(file->content.size(), picture.limit)) std::exit(1);
    kept += file ? 1 : 0;
  }
  std::printf("%zu of %zu have become smaller\n", kept, pictures.size());
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  return {.wall = wall.count(), .cpu = cpuSeconds() - cpu};
}

Usage peer(const Pictures& pictures, const QDir& folder, const std::vector<std::string>& launcher = {}) {
  Usage sum;
  for (const auto& picture : pictures) {
    auto command = launcher;
    command.insert(command.end(), {"heif-enc", "-q", "90", "-p", "chroma=444", "-o",
                                   folder.filePath(QStringLiteral("peer.heic")).toStdString(), picture.path});
    const auto one = usageOf(command);
    sum.wall += one.wall;
    sum.cpu += one.cpu;
  }
  return sum;
}

int run() {
  const QTemporaryDir folder;
  const QDir place(folder.path());
  const auto pictures = draw(place);
  const auto heifEnc = peer(pictures, place);
  const auto onOneCore = peer(pictures, place, {"taskset", "--cpu-list", "0"});
  const auto nimbrel = ours(pictures);
  return printTable({{"CPU time, beside heif-enc", nimbrel.cpu, heifEnc.cpu, cpuTarget},
                     {"until all are done, beside one heif-enc after the other", nimbrel.wall, heifEnc.wall, 1},
                     {"the same, each heif-enc on one core", nimbrel.wall, onOneCore.wall, wallTarget}},
                    "seconds");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  return Nimbrel::Benchmarks::run();
}
