#pragma once

#include <QColor>
#include <QFile>
#include <QPoint>
#include <QProcess>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Nimbrel::Benchmarks {

/// Prints why there is no measuring, and ends the process.
[[noreturn]] void fail(const std::string& message);

/// A display with a window manager, whose pixels lie in a file, so that what counts is what is seen on it. Needs an
/// application object.
class MarkedScreen {
 public:
  /// A colour that no program's own parts have, for the pictures that are looked for.
  static constexpr QColor mark{255, 0, 200};

  /// The file lies in that folder.
  explicit MarkedScreen(const QString& folder);
  ~MarkedScreen();
  MarkedScreen(const MarkedScreen&) = delete;
  MarkedScreen& operator=(const MarkedScreen&) = delete;

  /// As the environment names it.
  [[nodiscard]] const QString& name() const { return name_; }
  /// How much of the screen has the colour, up to that column: of every fourth pixel of every fourth line.
  [[nodiscard]] std::size_t marked(std::size_t width = SIZE_MAX) const;
  /// The colour of a place on the screen.
  [[nodiscard]] QRgb pixel(QPoint place) const;

 private:
  [[nodiscard]] std::size_t field(int number) const;
  /// The bytes of a pixel: blue, green, red.
  [[nodiscard]] const uchar* at(std::size_t x, std::size_t y) const;

  QProcess server_;
  QProcess manager_;
  QString name_;
  QFile file_;
  const uchar* pixels_ = nullptr;
};

/// Runs this program again, with that argument, on such a display, and returns how it ended. Needs an application
/// object.
[[nodiscard]] int runAgainOnScreen(std::string_view argument);

}  // namespace Nimbrel::Benchmarks
