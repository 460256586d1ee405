#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QString>

#include <vector>

namespace Nimbrel::Benchmarks {

/// A text as it stands on a page.
struct TrueLine {
  QString text;
  double pixels = 0;  ///< size of its type in pixels of the picture
};

/// A picture and what is to be read off it.
struct Page {
  QString name;
  QImage picture;
  std::vector<TrueLine> lines;
};

/// How the pages of a kind differ from each other.
struct Look {
  QString family;       ///< of the running text
  QString fixedFamily;  ///< of code and terminals
  int pixels = 13;      ///< of the running text
  double scale = 1;     ///< pixels of the picture for one of the page
  bool dark = false;
  bool subpixels = false;  ///< drawn for the stripes of a panel
  unsigned seed = 0;
};

/// Draws a page and keeps account of its texts. Lengths are in pixels before scaling.
class Canvas {
 public:
  struct Type {
    int pixels = 13;
    QColor colour;
    bool bold = false;
    bool fixed = false;
    bool italic = false;
  };

  Canvas(QSize size, const Look& look);

  [[nodiscard]] const Look& look() const { return look_; }
  [[nodiscard]] QSize size() const { return size_; }
  [[nodiscard]] QColor paper() const { return look_.dark ? QColor(30, 31, 36) : QColor(255, 255, 255); }
  [[nodiscard]] QColor panel() const { return look_.dark ? QColor(43, 45, 52) : QColor(240, 241, 244); }
  [[nodiscard]] QColor edge() const { return look_.dark ? QColor(70, 73, 82) : QColor(208, 210, 216); }
  [[nodiscard]] QColor ink() const { return look_.dark ? QColor(222, 224, 230) : QColor(28, 30, 36); }
  [[nodiscard]] QColor faint() const { return look_.dark ? QColor(150, 155, 168) : QColor(110, 115, 126); }

  /// The running text of the page; `step` makes it larger or smaller.
  [[nodiscard]] Type type(int step = 0) const { return {.pixels = look_.pixels + step, .colour = ink()}; }
  [[nodiscard]] Type fixed(int step = 0) const {
    return {.pixels = look_.pixels + step, .colour = ink(), .fixed = true};
  }

  [[nodiscard]] double widthOf(const QString& text, const Type& type) const;
  /// Draws a text from its left end on the baseline and returns where it ends.
  double text(double x, double baseline, const QString& text, const Type& type);
  void textRight(double right, double baseline, const QString& text, const Type& type);
  void textCentred(double centre, double baseline, const QString& text, const Type& type);

  void box(const QRectF& place, const QColor& fill, const QColor& edge = Qt::transparent, double radius = 0);
  void rule(double x1, double y1, double x2, double y2, const QColor& colour);
  /// A button, tag or pill: a text on a colour.
  void pill(const QRectF& place, const QString& text, const QColor& fill, const Type& type, double radius);
  void disc(double x, double y, double radius, const QColor& fill);

  [[nodiscard]] Page finished(const QString& name);

 private:
  [[nodiscard]] QFont fontOf(const Type& type) const;

  QSize size_;
  Look look_;
  QImage image_;
  QPainter painter_;
  std::vector<TrueLine> lines_;
};

}  // namespace Nimbrel::Benchmarks
