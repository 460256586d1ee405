#pragma once

#include "Views/Gallery/CellContent.h"
#include "Views/Gallery/SnippetRuns.h"
#include "Views/Shared/TextStyles.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QRect>

#include <span>

namespace Nimbrel {

/// Paints the cells of the grid and of the filmstrip, by the tokens of the theme. Lives for one paint event.
class CellPainter {
 public:
  /// What a cell shows beside its words.
  struct Look {
    bool isSelected = false;
    const QPixmap* picture = nullptr;     ///< made to fit; null while there is none
    std::span<const SnippetRun> snippet;  ///< empty when the shot has none
  };

  CellPainter(QPainter& painter, Qt::LayoutDirection direction);

  /// A cell of the grid, whose box is at the top of its place.
  void paintCell(const QRect& place, QSize box, const CellContent& content, const Look& look) const;
  /// A cell of the filmstrip.
  void paintFilmstripCell(const QRect& place, const QString& title, bool isProtected, const Look& look) const;
  /// The bar with the title of a day.
  void paintSectionTitle(const QRect& place, const QString& title) const;

  /// Where there is room for the picture of a box of the grid, and for one of the filmstrip.
  [[nodiscard]] static QSize pictureRoom(QSize box);
  [[nodiscard]] static QSize filmstripPictureRoom();
  /// Of a cell of the filmstrip.
  [[nodiscard]] static QSize filmstripCellSize();

  /// What stands where a picture cannot be shown, in the middle of a place.
  static void paintLock(QPainter& painter, const QRectF& place, int size);
  static void paintMissing(QPainter& painter, const QRectF& place);

 private:
  struct Box {
    QRect place;
    double radius;
    double selectedStroke;
    int lockSize;
  };
  void paintBox(const Box& box, bool isProtected, const Look& look) const;
  void paintStar(const QRect& box) const;
  void paintText(const QRect& place, const QString& text, TextStyle style, Token token, Qt::TextElideMode mode,
                 Qt::Alignment alignment = Qt::AlignLeading) const;
  void paintMeta(const QRect& place, const CellContent& content) const;
  void paintSnippet(const QRect& place, std::span<const SnippetRun> runs) const;
  /// The place as it lies within the other in the direction of the script.
  [[nodiscard]] QRect mirrored(const QRect& place, const QRect& within) const;

  QPainter& painter_;
  Qt::LayoutDirection direction_;
};

}  // namespace Nimbrel
