#include "MarkedScreen.h"

#include <QCoreApplication>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace Nimbrel::Benchmarks {

namespace {

constexpr int step = 4;

}  // namespace

void fail(const std::string& message) {
  std::fprintf(stderr, "%s\n", message.c_str());
  std::exit(EXIT_FAILURE);
}

MarkedScreen::MarkedScreen(const QString& folder) {
  server_.start(QStringLiteral("Xvfb"),
                {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                 QStringLiteral("1280x800x24"), QStringLiteral("-fbdir"), folder});
  if (!server_.waitForReadyRead()) fail("Xvfb does not start");
  name_ = QLatin1Char(':') + QString::fromLatin1(server_.readAllStandardOutput().trimmed());
  file_.setFileName(folder + QStringLiteral("/Xvfb_screen0"));
  if (!file_.open(QIODevice::ReadOnly)) fail("Xvfb shows nothing");
  pixels_ = file_.map(0, file_.size());
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), name_);
  manager_.setProcessEnvironment(environment);
  manager_.start(QStringLiteral("openbox"), QStringList());
  manager_.waitForStarted();
}

MarkedScreen::~MarkedScreen() {
  for (auto* process : {&manager_, &server_}) {
    process->terminate();
    process->waitForFinished();
  }
}

std::size_t MarkedScreen::marked(std::size_t width) const {
  width = std::min(width, field(4));
  std::size_t count = 0;
  for (std::size_t y = 0; y < field(5); y += step) {
    for (std::size_t x = 0; x < width; x += step) {
      const auto* pixel = at(x, y);
      if (pixel[0] > 150 && pixel[1] < 60 && pixel[2] > 200) ++count;
    }
  }
  return count;
}

QRgb MarkedScreen::pixel(QPoint place) const {
  const auto* bytes = at(static_cast<std::size_t>(place.x()), static_cast<std::size_t>(place.y()));
  return qRgb(bytes[2], bytes[1], bytes[0]);
}

const uchar* MarkedScreen::at(std::size_t x, std::size_t y) const {
  // The header of an XWD file: its size, the width, the height, the bytes of a line, the number of colours.
  return pixels_ + field(0) + field(19) * 12 + y * field(12) + x * 4;
}

std::size_t MarkedScreen::field(int number) const {
  const auto* bytes = pixels_ + static_cast<std::ptrdiff_t>(number) * 4;
  return std::size_t{bytes[0]} << 24 | std::size_t{bytes[1]} << 16 | std::size_t{bytes[2]} << 8 | bytes[3];
}

int runAgainOnScreen(std::string_view argument) {
  constexpr int waitsForever = -1;
  const QTemporaryDir folder;
  const MarkedScreen screen(folder.path());
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("DISPLAY"), screen.name());
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
  QProcess child;
  child.setProcessEnvironment(environment);
  child.setProcessChannelMode(QProcess::ForwardedChannels);
  child.start(QCoreApplication::applicationFilePath(),
              {QString::fromUtf8(argument.data(), static_cast<qsizetype>(argument.size()))});
  child.waitForFinished(waitsForever);
  return child.exitStatus() == QProcess::NormalExit ? child.exitCode() : 1;
}

}  // namespace Nimbrel::Benchmarks
