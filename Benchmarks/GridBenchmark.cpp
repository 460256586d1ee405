// What the gallery's grid works out between two frames: the places of 100,000 cells, and the thumbnails that come onto
// the screen, which are kept packed. The other ways to keep them are printed beside ours.

#include "Measure.h"
#include "ScreenScene.h"
#include "Views/Gallery/CompactImage.h"
#include "Views/Gallery/GridLayout.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr double frame = 0.016;
constexpr std::size_t shotCount = 100'000;
constexpr std::size_t shotsPerDay = 23;
constexpr double mebibyte = 1024.0 * 1024.0;
constexpr std::size_t shotsScrolledThrough = 500;
constexpr std::size_t shotsOnScreen = 20;

double cpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double cpuOf(int times, const std::function<void()>& work) {
  work();
  const auto start = cpuSeconds();
  for (int i = 0; i < times; ++i) work();
  return (cpuSeconds() - start) / times;
}

/// Thumbnails of what is on a screen in the course of a day.
std::vector<QImage> thumbnails() {
  const ScreenScene scene;
  std::vector<QImage> images;
  for (int number = 0; number < ScreenScene::frameCount; number += 10) {
    images.push_back(scene.frame(number)
                         .convertToFormat(QImage::Format_RGB32)
                         .scaled(640, 640, Qt::KeepAspectRatio, Qt::SmoothTransformation));
  }
  return images;
}

QByteArray encoded(const QImage& image, const char* format, int quality) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  image.save(&buffer, format, quality);
  return bytes;
}

/// One way to keep thumbnails: how to pack one, and to unpack it.
struct Way {
  std::string name;
  std::function<QByteArray(const QImage&)> pack;
  std::function<std::size_t(const QByteArray&)> unpack;
};

std::vector<Way> ways() {
  const auto decode = [](const QByteArray& bytes) { return static_cast<std::size_t>(QImage::fromData(bytes).width()); };
  const auto coder = [](const char* format, int quality) {
    return [=](const QImage& image) { return encoded(image, format, quality); };
  };
  const auto deflate = [](const QImage& image) { return qCompress(image.constBits(), image.sizeInBytes(), 1); };
  return {
      {"JPEG, quality 80", coder("jpeg", 80), decode},
      {"JPEG, quality 92", coder("jpeg", 92), decode},
      {"JPEG, quality 97", coder("jpeg", 97), decode},
      {"PNG, quick", coder("png", 80), decode},
      {"pixels, deflated", deflate,
       [](const QByteArray& bytes) { return static_cast<std::size_t>(qUncompress(bytes).size()); }},
      {"pixels",
       [](const QImage& image) {
         return QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
       },
       [](const QByteArray& bytes) { return static_cast<std::size_t>(QByteArray(bytes.data(), bytes.size())[0]); }}};
}

void printWays(const std::vector<QImage>& images) {
  std::printf("A thumbnail of 640 pixels, and %zu of them\n", ThumbCache::limit);
  for (const auto& way : ways()) {
    std::vector<QByteArray> packed;
    double bytes = 0;
    const auto pack = cpuOf(1, [&] {
      packed.clear();
      for (const auto& image : images) packed.push_back(way.pack(image));
    });
    for (const auto& data : packed) bytes += static_cast<double>(data.size());
    const auto unpack = cpuOf(5, [&] {
      for (const auto& data : packed) use(way.unpack(data));
    });
    const auto count = static_cast<double>(images.size());
    std::printf("  %-20s %7.2f MiB   pack %6.2f ms   unpack %6.2f ms\n", way.name.c_str(),
                bytes / count * static_cast<double>(ThumbCache::limit) / mebibyte, pack / count * 1000,
                unpack / count * 1000);
  }
}

std::vector<Comparison> thumbRows(const std::vector<QImage>& images) {
  std::vector<CompactImage> kept;
  for (const auto& image : images) kept.emplace_back(image);
  const auto unpack = cpuOf(5, [&] {
    for (const auto& compact : kept) use(static_cast<std::size_t>(compact.image().width()));
  });
  // A row of seven new cells in each frame is quicker than anybody scrolls to look.
  return {{"seven thumbnails unpacked, beside a frame", unpack / static_cast<double>(kept.size()) * 7, frame, 1.0}};
}

std::vector<Comparison> memoryRows(const std::vector<QImage>& images) {
  double packed = 0;
  double pixels = 0;
  for (const auto& image : images) {
    packed += static_cast<double>(CompactImage(image).byteCount());
    pixels += static_cast<double>(image.sizeInBytes());
  }
  const auto all = static_cast<double>(ThumbCache::limit) / static_cast<double>(images.size());
  return {{"all thumbnails, beside their pixels", packed * all, pixels * all, 0.1}};
}

double residentBytes() {
  std::ifstream file("/proc/self/statm");
  double pages = 0;
  file >> pages >> pages;
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE));
}

/// Many shots of a few pictures.
std::vector<std::string> shotFiles(const std::string& folder) {
  const ScreenScene scene;
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < shotsScrolledThrough; ++i) {
    paths.push_back(folder + "/" + std::to_string(i) + ".png");
    constexpr std::size_t pictures = 6;
    if (i < pictures) {
      scene.frame(static_cast<int>(i) * 20).scaled(800, 500).save(QString::fromStdString(paths.back()));
    } else {
      std::filesystem::create_hard_link(paths[i % pictures], paths.back());
    }
  }
  return paths;
}

/// Everything that the process has gained after a long scroll, not the cache alone.
std::vector<Comparison> scrollRows() {
  const QTemporaryDir folder;
  const auto paths = shotFiles(folder.path().toStdString());
  const auto before = residentBytes();
  ThumbCache thumbs;
  GalleryPreviewCache previews;
  ThumbLoader loader(thumbs, previews);
  for (std::size_t first = 0; first < paths.size(); first += shotsOnScreen) {
    std::vector<ThumbLoader::Place> places;
    for (std::size_t i = first; i < first + shotsOnScreen; ++i) places.push_back({.path = paths[i]});
    loader.showThumbs(places);
    const auto isHere = [&](const ThumbLoader::Place& place) { return thumbs.holds(place.path); };
    while (!std::ranges::all_of(places, isHere)) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  return {{"memory gained by scrolling through 500 shots", residentBytes() - before, 64 * mebibyte, 1.0}};
}

std::vector<Comparison> layoutRows() {
  std::vector<GridSection> sections;
  for (std::size_t cells = 0; cells < shotCount; cells += shotsPerDay) sections.push_back({.cells = shotsPerDay});
  GridLayout layout;
  layout.setWidth(1000);
  const auto anew = cpuOf(20, [&] { layout.setSections(sections); });
  int width = 1000;
  const auto resized = cpuOf(20, [&] { layout.setWidth(++width); });
  layout.setWidth(60);
  const auto oneColumn = cpuOf(20, [&] { layout.setSections(sections); });
  layout.setWidth(1000);
  int y = 0;
  const auto looked = cpuOf(1000, [&] {
    y = (y + 7919 * 13) % layout.height();
    use(layout.cellsIn({0, y, 1000, 900}).size() + layout.cellAt({100, y}).value_or(0));
  });
  return {{"100,000 cells laid out anew, beside a frame", anew, frame, 0.25},
          {"the same after a change of width", resized, frame, 0.25},
          {"the same in one column", oneColumn, frame, 0.25},
          {"the cells on the screen, and that under the pointer", looked, frame, 0.01}};
}

int runAll() {
  const auto images = thumbnails();
  printWays(images);
  int missed = printTable(thumbRows(images), "seconds of CPU time");
  missed |= printTable(memoryRows(images), "bytes");
  missed |= printTable(scrollRows(), "bytes");
  missed |= printTable(layoutRows(), "seconds of CPU time");
  return missed;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  return Nimbrel::Benchmarks::runAll();
}
