// Thumbnails beside a bare decode of the whole picture, in one thread, and beside vipsthumbnail. Prints CPU time per
// picture and the ratios that are asked for.

#include "Platform/ImageFile.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QTemporaryDir>

#include <fcntl.h>
#include <jpeglib.h>
#include <png.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr QSize pictureSize(1440, 900);
constexpr int pngCount = 200;
constexpr int jpegCount = 100;
constexpr int rounds = 3;
constexpr std::array thumbnailSizes{640, 64};

using Paths = std::vector<std::string>;
using Random = std::mt19937;

int upTo(Random& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

/// Smooth shapes with grain, as a camera sees them.
QImage photo(QSize size, Random& random) {
  QImage image(size, QImage::Format_RGB32);
  QPainter painter(&image);
  QLinearGradient sky(0, 0, 0, size.height());
  sky.setColorAt(0, QColor::fromHsv(upTo(random, 360), 120, 230));
  sky.setColorAt(1, QColor::fromHsv(upTo(random, 360), 200, 90));
  painter.fillRect(image.rect(), sky);
  for (int i = 0; i < 20; ++i) {
    const QPoint centre(upTo(random, size.width()), upTo(random, size.height()));
    QRadialGradient light(centre, 20 + upTo(random, size.height() / 2));
    light.setColorAt(0, QColor::fromHsv(upTo(random, 360), 180, 250, 120));
    light.setColorAt(1, Qt::transparent);
    painter.fillRect(image.rect(), light);
  }
  painter.end();
  for (int y = 0; y < size.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < size.width(); ++x) {
      const int grain = upTo(random, 9) - 4;
      const auto with = [&](int value) { return std::clamp(value + grain, 0, 255); };
      line[x] = qRgb(with(qRed(line[x])), with(qGreen(line[x])), with(qBlue(line[x])));
    }
  }
  return image;
}

QString words(Random& random, int count) {
  QString text;
  for (int i = 0; i < count; ++i) {
    for (int letters = 2 + upTo(random, 9); letters > 0; --letters) text += QChar(u'a' + upTo(random, 26));
    text += QLatin1Char(' ');
  }
  return text;
}

void drawWindow(QPainter& painter, const QRect& frame, Random& random) {
  const bool dark = upTo(random, 3) == 0;
  painter.fillRect(frame, dark ? QColor(30, 31, 34) : QColor(Qt::white));
  painter.fillRect(QRect(frame.topLeft(), QSize(frame.width(), 28)), dark ? QColor(50, 51, 56) : QColor(232, 232, 236));
  painter.fillRect(QRect(frame.left(), frame.top() + 28, frame.width() / 5, frame.height() - 28),
                   dark ? QColor(38, 39, 43) : QColor(244, 245, 248));
  painter.setRenderHint(QPainter::Antialiasing);
  for (int line = 0; frame.top() + 60 + line * 18 < frame.bottom(); ++line) {
    painter.setPen(dark ? QColor::fromHsv(upTo(random, 360), 60, 220) : QColor(40, 40, 48));
    const QRect place(frame.left() + frame.width() / 5 + 16, frame.top() + 42 + line * 18, frame.width() * 3 / 4, 18);
    painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine, words(random, 4 + upTo(random, 12)));
    if (line % 2 == 0) {
      painter.drawText(place.translated(-frame.width() / 5, 0), Qt::AlignVCenter, words(random, 1));
    }
  }
  for (int i = 0; i < 6; ++i) {
    painter.setBrush(QColor::fromHsv(upTo(random, 360), 170, 220));
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(frame.right() - 40 - 30 * i, frame.top() + 34, 24, 18, 5, 5);
  }
}

/// Windows with text on a plain desk; a photo in one of four.
QImage screenshot(int seed) {
  Random random(static_cast<unsigned>(seed));
  QImage image(pictureSize, QImage::Format_RGB32);
  QPainter painter(&image);
  painter.fillRect(image.rect(), QColor::fromHsv(upTo(random, 360), 80, 160));
  for (int windows = 1 + upTo(random, 3); windows > 0; --windows) {
    const QSize size(700 + upTo(random, 600), 500 + upTo(random, 350));
    drawWindow(painter, QRect(QPoint(upTo(random, 1440 - size.width()), upTo(random, 900 - size.height())), size),
               random);
  }
  if (seed % 4 == 0) {
    painter.drawImage(QPoint(200 + upTo(random, 500), 100 + upTo(random, 300)), photo(QSize(480, 320), random));
  }
  return image;
}

Paths draw(const QDir& folder, const char* extension, int count, const std::function<QImage(int)>& picture) {
  Paths paths;
  for (int i = 0; i < count; ++i) {
    const auto name = QStringLiteral("%1.%2").arg(i, 3, 10, QLatin1Char('0')).arg(QLatin1String(extension));
    if (!picture(i).save(folder.filePath(name), extension, qstrcmp(extension, "jpg") == 0 ? 90 : -1)) std::exit(1);
    paths.push_back(folder.filePath(name).toStdString());
  }
  return paths;
}

void decodeBarePng(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  auto* png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  auto* info = png_create_info_struct(png);
  png_init_io(png, file.get());
  png_read_info(png, info);
  std::vector<png_byte> row(png_get_rowbytes(png, info));
  for (png_uint_32 y = png_get_image_height(png, info); y > 0; --y) png_read_row(png, row.data(), nullptr);
  png_read_end(png, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
}

void decodeBareJpeg(const std::string& path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
  jpeg_decompress_struct info{};
  jpeg_error_mgr errors{};
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_stdio_src(&info, file.get());
  jpeg_read_header(&info, TRUE);
  jpeg_start_decompress(&info);
  std::vector<JSAMPLE> row(std::size_t{info.output_width} * static_cast<std::size_t>(info.output_components));
  JSAMPROW rows[] = {row.data()};
  while (info.output_scanline < info.output_height) jpeg_read_scanlines(&info, rows, 1);
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
}

void makeThumbnails(const std::string& path) {
  if (Nimbrel::ImageFile::thumbnails(path, thumbnailSizes).size() != thumbnailSizes.size()) std::exit(1);
}

void readPixelSize(const std::string& path) {
  const Nimbrel::ImageFile::PixelSize expected{.width = pictureSize.width(), .height = pictureSize.height()};
  if (Nimbrel::ImageFile::pixelSize(path) != expected) std::exit(1);
}

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

double childrenSeconds() {
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// CPU time of this thread for each of the ways, by turns so that a slow moment meets them all; the best round counts.
std::vector<double> cpuOf(const Paths& paths, const std::vector<std::function<void(const std::string&)>>& ways) {
  std::vector<double> best(ways.size(), std::numeric_limits<double>::max());
  for (int round = 0; round < rounds; ++round) {
    std::vector<double> sums(ways.size());
    for (const auto& path : paths) {
      for (std::size_t way = 0; way < ways.size(); ++way) {
        const auto start = threadSeconds();
        ways[way](path);
        sums[way] += threadSeconds() - start;
      }
    }
    for (std::size_t way = 0; way < ways.size(); ++way) best[way] = std::min(best[way], sums[way]);
  }
  return best;
}

/// CPU time of the command over the files; negative when it is not installed or failed.
double cpuOfVips(const Paths& paths, const std::string& output) {
  std::vector<std::string> words{"vipsthumbnail", "--size", "640", "-o", output};
  words.insert(words.end(), paths.begin(), paths.end());
  std::vector<char*> arguments;
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const auto start = childrenSeconds();
  pid_t child = 0;
  int status = 0;
  if (posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) return -1;
  if (waitpid(child, &status, 0) != child || status != 0) return -1;
  return childrenSeconds() - start;
}

double cpuOfVipsOneByOne(const Paths& paths, const std::string& output) {
  double sum = 0;
  for (const auto& path : paths) {
    const auto seconds = cpuOfVips({path}, output);
    if (seconds < 0) return -1;
    sum += seconds;
  }
  return sum;
}

void printRow(const char* what, double seconds, std::size_t count, double ours) {
  if (seconds < 0) {
    std::printf("  %-44s not available\n", what);
  } else {
    std::printf("  %-44s %8.2f ms   ours is %5.2f times that\n", what, seconds * 1000 / static_cast<double>(count),
                ours / seconds);
  }
}

void compare(const char* kind, const Paths& paths, void (*bare)(const std::string&), const std::string& output) {
  const auto cpu = cpuOf(paths, {bare, makeThumbnails, readPixelSize});
  const double ours = cpu[1];
  std::printf("%zu %s, %d x %d, CPU per picture\n", paths.size(), kind, pictureSize.width(), pictureSize.height());
  std::printf("  %-44s %8.2f ms\n", "thumbnails({640, 64})", ours * 1000 / static_cast<double>(paths.size()));
  std::printf("  %-44s %8.4f ms\n", "pixelSize", cpu[2] * 1000 / static_cast<double>(paths.size()));
  printRow("bare decode of the whole picture", cpu[0], paths.size(), ours);
  printRow("vipsthumbnail, a call for each picture", cpuOfVipsOneByOne(paths, output), paths.size(), ours);
  printRow("vipsthumbnail, one call for all", cpuOfVips(paths, output), paths.size(), ours);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QTemporaryDir folder;
  const QDir place(folder.path());
  // vipsthumbnail names what it makes after the picture.
  const auto output = place.filePath(QStringLiteral("small-%s.jpg")).toStdString();
  const auto photograph = [](int seed) {
    Random random(static_cast<unsigned>(seed));
    return photo(pictureSize, random);
  };
  const auto screenshots = draw(place, "png", pngCount, screenshot);
  const auto photographs = draw(place, "jpg", jpegCount, photograph);
  compare("PNG", screenshots, decodeBarePng, output);
  compare("JPEG", photographs, decodeBareJpeg, output);
  return 0;
}
