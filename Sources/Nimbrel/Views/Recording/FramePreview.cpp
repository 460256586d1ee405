#include "Views/Recording/FramePreview.h"

#include "Views/Recording/TrimTimes.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QPainterPath>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr QSize preferredSize(520, 200);

/// Lower by what larger text takes elsewhere, so that the window still fits a small screen.
int preferredHeight() { return static_cast<int>(preferredSize.height() / std::max(1.0, textScale())); }

}  // namespace

FramePreview::FramePreview(QWidget* parent) : Figure(parent) {
  setAccessibleName(tr("Preview"));
  setFixedHeight(preferredHeight());
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize FramePreview::sizeHint() const { return {preferredSize.width(), preferredHeight()}; }

QSize FramePreview::room() const { return (QSizeF(size()) * devicePixelRatioF()).toSize(); }

void FramePreview::setFrame(double seconds, const QImage& frame) {
  seconds_ = seconds;
  frame_ = frame;
  setAccessibleDescription(frame.isNull() ? tr("No picture") : timeText(seconds));
  update();
}

void FramePreview::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), Measures::groupRadius, themeColor(Token::Track));
  if (frame_.isNull()) {
    Symbols::paint(painter, rect(), QStringLiteral("film"), Measures::emptySymbol, themeColor(Token::Glyph));
    return;
  }
  auto place = QSizeF(frame_.size()) / devicePixelRatioF();
  // After a move to a screen of another scale the picture may be one for that.
  if (place.width() > width() || place.height() > height()) place.scale(size(), Qt::KeepAspectRatio);
  const QRectF whole(QPointF((width() - place.width()) / 2, (height() - place.height()) / 2), place);
  QPainterPath outline;
  outline.addRoundedRect(rect(), Measures::groupRadius, Measures::groupRadius);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.setClipPath(outline);
  painter.drawImage(Painting::onGrid(painter, whole), frame_);
}

}  // namespace Nimbrel
