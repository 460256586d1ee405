#include "Views/Sheets/DuplicateButton.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QPainterPath>

namespace Nimbrel {

namespace {

constexpr int outlineRadius = 7;
constexpr int lockSize = 20;
constexpr int gap = Measures::step6;

}  // namespace

DuplicateButton::DuplicateButton(QWidget* parent) : QAbstractButton(parent) {
  setObjectName(QStringLiteral("duplicate"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
}

void DuplicateButton::setShot(const ShotPtr& shot, const QString& name) {
  if (!shot_ || shot_->path != shot->path) thumb_ = {};
  shot_ = shot;
  name_ = name;
  tellName();
}

void DuplicateButton::setKeeper(bool isKeeper) {
  isKeeper_ = isKeeper;
  tellName();
  update();
}

void DuplicateButton::setLocked(bool isLocked) {
  isLocked_ = isLocked;
  if (isLocked) thumb_ = {};
  update();
}

void DuplicateButton::setThumb(const QImage& image) {
  if (isLocked_) return;
  thumb_ = image;
  update();
}

void DuplicateButton::tellName() {
  const auto fate = isKeeper_ ? tr("Keep") : tr("Trash");
  setText(fate);
  setAccessibleName(tr("%1, %2").arg(name_, fate));
  setToolTip(name_.toHtmlEscaped());
}

QSize DuplicateButton::sizeHint() const { return {thumbWidth, thumbHeight + gap + lineHeight(TextStyle::Caption)}; }

void DuplicateButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRect box(0, 0, thumbWidth, thumbHeight);
  Painting::fillRounded(painter, box, outlineRadius, themeColor(Token::Quaternary));
  paintThumb(painter, box);
  const auto width = isKeeper_ ? Measures::selectionStroke : Painting::hairlineWidth(Painting::scaleOf(painter));
  Painting::strokeRounded(painter, box, outlineRadius, width, themeColor(isKeeper_ ? Token::Accent : Token::Separator));
  painter.setFont(textFont(isKeeper_ ? TextStyle::CaptionTitle : TextStyle::Caption));
  painter.setPen(themeColor(isKeeper_ ? Token::Accent : Token::Secondary));
  painter.drawText(rect().adjusted(0, thumbHeight + gap, 0, 0), Qt::AlignHCenter | Qt::AlignTop, text());
}

void DuplicateButton::paintThumb(QPainter& painter, const QRect& box) const {
  if (isLocked_)
    return Symbols::paint(painter, box, QStringLiteral("lock.fill"), lockSize, themeColor(Token::Secondary));
  if (thumb_.isNull()) {
    return Symbols::paint(painter, box, QStringLiteral("photo"), lockSize, themeColor(Token::Glyph));
  }
  QPainterPath outline;
  outline.addRoundedRect(box, outlineRadius, outlineRadius);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setClipPath(outline);
  QRectF place(QPointF(), QSizeF(thumb_.size()).scaled(box.size(), Qt::KeepAspectRatio));
  place.moveCenter(QRectF(box).center());
  painter.drawImage(place, thumb_);
  painter.restore();
}

}  // namespace Nimbrel
