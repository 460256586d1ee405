#include "Views/Inspector/ItemRow.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Measures.h"

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 4;
constexpr int linkGap = 4;  ///< beside the row's spacing

}  // namespace

ItemRow::ItemRow(const QString& symbol, const std::string& text, Qt::TextElideMode mode)
    : label_(new ElidedLabel(TextStyle::Body, Token::Text, mode)), line_(new QHBoxLayout(this)) {
  line_->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  line_->setSpacing(Measures::step6);
  label_->setFullText(QString::fromStdString(text));
  label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  line_->addWidget(new SymbolView(symbol, scaled(Measures::textSymbol), Token::Secondary));
  line_->addWidget(label_, 1);
}

LinkButton* ItemRow::addLink(const QString& title, const QString& name) {
  auto* link = rowLink(title, objectName() + name);
  link->setAccessibleName(title + QStringLiteral(" ") + label_->fullText());
  line_->addSpacing(linkGap);
  line_->addWidget(link);
  return link;
}

}  // namespace Nimbrel
