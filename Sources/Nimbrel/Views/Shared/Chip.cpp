#include "Views/Shared/Chip.h"

#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/GlyphButton.h"
#include "Views/Shared/Painting.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int chipPaddingAcross = 7;
constexpr int chipPaddingAlong = 3;

}  // namespace

Chip::Chip(const QString& text, Kind kind, QWidget* parent) : QWidget(parent), text_(text) {
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(chipPaddingAcross, chipPaddingAlong, chipPaddingAcross, chipPaddingAlong);
  row->setSpacing(chipPaddingAlong);
  auto* label = new ElidedLabel(TextStyle::Caption, Token::Text, Qt::ElideRight, this);
  label->setFullText(text);
  row->addWidget(label);
  setAccessibleName(label->fullText());
  if (kind == Kind::Fixed) return;
  remove_ = new GlyphButton(QStringLiteral("xmark.circle.fill"), tr("Remove %1").arg(label->fullText()), this);
  connect(remove_, &QAbstractButton::clicked, this, &Chip::removeRequested);
  row->addWidget(remove_);
}

void Chip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), height() / 2.0, themeColor(Token::Quaternary));
}

}  // namespace Nimbrel
