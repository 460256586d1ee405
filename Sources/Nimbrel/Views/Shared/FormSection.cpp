#include "Views/Shared/FormSection.h"

#include "Views/Shared/LeadingText.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>

#include <memory>

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 5;
constexpr int explainedPaddingAlong = Measures::step8;
constexpr int rowSpacing = 10;
constexpr int titleInset = 2;
constexpr int titleGap = 5;

QWidget* labelColumn(const QString& label, const QString& explanation) {
  auto* column = new QWidget;
  auto* lines = new QVBoxLayout(column);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->setSpacing(Measures::step2);
  auto* first = new QLabel(label);
  setTextLook(*first, TextStyle::Body);
  first->setMinimumHeight(lineHeight(TextStyle::Body));
  alignToLayout(*first);
  lines->addWidget(first);
  if (!explanation.isEmpty()) {
    auto* second = new QLabel(explanation);
    setTextLook(*second, TextStyle::Caption, Token::Secondary);
    second->setWordWrap(true);
    alignToLayout(*second);
    lines->addWidget(second);
  }
  return column;
}

}  // namespace

class FormSection::Box final : public QWidget {
 public:
  Box() : rows_(new QVBoxLayout(this)) {
    rows_->setContentsMargins(1, 1, 1, 1);
    rows_->setSpacing(0);
  }

  [[nodiscard]] int count() const { return rows_->count(); }

  void insert(int index, QWidget* row) { rows_->insertWidget(index, row); }

  QHBoxLayout* insertRow(int index, int paddingAlong = rowPaddingAlong) {
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(Measures::rowPadding, paddingAlong, Measures::rowPadding, paddingAlong);
    line->setSpacing(rowSpacing);
    // Not a minimum of the row itself, which would hide that of two lines of text.
    line->addStrut(scaled(Measures::formRowHeight) - 2 * paddingAlong);
    insert(index, row);
    return line;
  }

  void remove(int index) {
    const std::unique_ptr<QLayoutItem> item(rows_->takeAt(index));
    if (auto* row = item ? item->widget() : nullptr) {
      row->hide();
      row->setParent(nullptr);
      row->deleteLater();
    }
    update();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    Painting::fillOutlined(painter, rect(), Measures::groupRadius, themeColor(Token::Group),
                           themeColor(Token::Separator));
    // The rules take nothing of the rows' height, which is that of a row whether or not others stand above it.
    for (int i = 1; i < rows_->count(); ++i) {
      const auto top = rows_->itemAt(i)->geometry().top();
      const QRect rule(1 + Measures::rowPadding, top, width() - Measures::rowPadding - 2, 1);
      Painting::horizontalRule(painter, QStyle::visualRect(layoutDirection(), rect(), rule),
                               themeColor(Token::Separator));
    }
  }

 private:
  QVBoxLayout* rows_;
};

FormSection::FormSection(const QString& title, QWidget* parent)
    : QWidget(parent), column_(new QVBoxLayout(this)), box_(new Box) {
  column_->setContentsMargins(0, 0, 0, Measures::sectionGap);
  column_->setSpacing(0);
  if (!title.isEmpty()) {
    auto* label = new QLabel(title);
    setTextLook(*label, TextStyle::CaptionTitle, Token::Secondary);
    alignToLayout(*label);
    heading_ = new QHBoxLayout;
    heading_->setContentsMargins(titleInset, 0, titleInset, titleGap);
    heading_->setSpacing(Measures::step8);
    heading_->addWidget(label, 1);
    column_->addLayout(heading_);
  }
  box_->setAccessibleName(title);
  column_->addWidget(box_);
}

void FormSection::setAccessory(QWidget* widget) {
  if (heading_ != nullptr) heading_->addWidget(widget);
}

void FormSection::addRow(const QString& label, QWidget* control, Fit fit, const QString& explanation) {
  if (control->accessibleName().isEmpty()) control->setAccessibleName(label);
  if (!explanation.isEmpty()) control->setAccessibleDescription(explanation);
  auto* line = box_->insertRow(box_->count(), explanation.isEmpty() ? rowPaddingAlong : explainedPaddingAlong);
  line->addWidget(labelColumn(label, explanation), fit == Fit::Keep ? 1 : 0);
  line->addWidget(control, fit == Fit::Fill ? 1 : 0);
}

ElidedLabel* FormSection::addValueRow(const QString& label, const QString& value) {
  auto* shown = new ElidedLabel(TextStyle::Body, Token::Secondary);
  shown->setFullText(value);
  shown->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  addRow(label, shown, Fit::Fill);
  return shown;
}

QCheckBox* FormSection::addToggle(const QString& label, const QString& explanation) {
  auto* toggle = new QCheckBox;
  addRow(label, toggle, Fit::Keep, explanation);
  return toggle;
}

void FormSection::addWidgetRow(QWidget* widget) { insertWidgetRow(box_->count(), widget); }

void FormSection::addBareRow(QWidget* widget) { insertBareRow(box_->count(), widget); }

void FormSection::insertWidgetRow(int index, QWidget* widget) { box_->insertRow(index)->addWidget(widget); }

void FormSection::insertBareRow(int index, QWidget* widget) { box_->insert(index, widget); }

void FormSection::removeRow(int index) { box_->remove(index); }

void FormSection::clear() {
  while (box_->count() > 0) removeRow(0);
}

}  // namespace Nimbrel
