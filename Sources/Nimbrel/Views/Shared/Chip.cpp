#include "Views/Shared/Chip.h"

#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int chipPaddingAcross = 7;
constexpr int chipPaddingAlong = 3;

class RemoveButton final : public QAbstractButton {
 public:
  explicit RemoveButton(QWidget* parent) : QAbstractButton(parent) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFixedSize(scaled(Measures::metaSymbol), scaled(Measures::metaSymbol));
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    const auto token = underMouse() || isDown() ? Token::Secondary : Token::Glyph;
    Symbols::paint(painter, rect(), QStringLiteral("xmark.circle.fill"), width(), themeColor(token));
  }
};

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
  remove_ = new RemoveButton(this);
  remove_->setAccessibleName(tr("Remove %1").arg(label->fullText()));
  remove_->setToolTip(remove_->accessibleName().toHtmlEscaped());
  connect(remove_, &QAbstractButton::clicked, this, &Chip::removeRequested);
  row->addWidget(remove_);
}

void Chip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), height() / 2.0, themeColor(Token::Quaternary));
}

}  // namespace Nimbrel
