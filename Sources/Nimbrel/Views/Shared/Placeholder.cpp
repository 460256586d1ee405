#include "Views/Shared/Placeholder.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QVBoxLayout>

namespace Nimbrel {

class Placeholder::SymbolView final : public QWidget {
 public:
  SymbolView(int size, QWidget* parent) : QWidget(parent) { setFixedSize(size, size); }

  void show(const QString& symbol) {
    symbol_ = symbol;
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    Symbols::paint(painter, rect(), symbol_, width(), themeColor(Token::Glyph));
  }

 private:
  QString symbol_;
};

Placeholder::Placeholder(const QString& symbol, const QString& title, const QString& description, Size size,
                         QWidget* parent)
    : QWidget(parent) {
  const bool isSmall = size == Size::Small;
  symbol_ = new SymbolView(scaled(isSmall ? Measures::noSelectionSymbol : Measures::emptySymbol), this);
  title_ = new QLabel(this);
  setTextLook(*title_, isSmall ? TextStyle::Headline : TextStyle::Title2);
  description_ = new QLabel(this);
  setTextLook(*description_, isSmall ? TextStyle::Caption : TextStyle::Body, Token::Secondary);
  for (auto* label : {title_, description_}) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
  }
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(Measures::step20, Measures::step20, Measures::step20, Measures::step20);
  column->setSpacing(0);
  column->addStretch();
  column->addWidget(symbol_, 0, Qt::AlignHCenter);
  column->addSpacing(isSmall ? Measures::step6 : Measures::step12);
  column->addWidget(title_);
  column->addSpacing(Measures::step4);
  column->addWidget(description_);
  column->addStretch();
  setContent(symbol, title, description);
}

void Placeholder::setContent(const QString& symbol, const QString& title, const QString& description) {
  symbol_->show(symbol);
  title_->setText(title);
  description_->setText(description);
  description_->setVisible(!description.isEmpty());
  setAccessibleName(title);
  setAccessibleDescription(description);
}

}  // namespace Nimbrel
