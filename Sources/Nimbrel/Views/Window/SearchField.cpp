#include "Views/Window/SearchField.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QKeyEvent>
#include <QSignalBlocker>

namespace Nimbrel {

SearchField::SearchField(Store& store, QWidget* parent) : QLineEdit(parent), store_(store) {
  setObjectName(QStringLiteral("searchField"));
  setPlaceholderText(QStringLiteral("Search text in shots"));
  setAccessibleName(QStringLiteral("Search text in shots"));
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  setMaximumWidth(scaled(Measures::searchFieldWidth));
  // The text stands close to the symbols.
  setTextMargins(-Measures::step6, 0, -Measures::step6, 0);
  // Files that are dropped here are meant for the window.
  setAcceptDrops(false);
  addAction(Symbols::icon(QStringLiteral("magnifyingglass")), LeadingPosition)->setText(QStringLiteral("Search"));
  clear_ = addAction(Symbols::icon(QStringLiteral("xmark.circle.fill"), {.normal = Token::Glyph}), TrailingPosition);
  clear_->setObjectName(QStringLiteral("searchField.clear"));
  clear_->setText(QStringLiteral("Clear"));
  clear_->setToolTip(QStringLiteral("Clear"));
  connect(clear_, &QAction::triggered, this, &QLineEdit::clear);
  showQuery();
  connect(this, &QLineEdit::textChanged, this, &SearchField::search);
  connect(&store, &Store::queryChanged, this, &SearchField::showQuery);
}

QSize SearchField::sizeHint() const {
  return {scaled(Measures::searchFieldWidth), scaled(Measures::searchFieldHeight)};
}

QSize SearchField::minimumSizeHint() const {
  return {Measures::searchFieldMinimum, scaled(Measures::searchFieldHeight)};
}

void SearchField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && !text().isEmpty()) return clear();
  QLineEdit::keyPressEvent(event);
}

void SearchField::search(const QString& text) {
  clear_->setVisible(!text.isEmpty());
  store_.setQuery(text.toStdString());
  store_.runSearch();
}

void SearchField::showQuery() {
  const auto query = QString::fromStdString(store_.query());
  clear_->setVisible(!query.isEmpty());
  if (query == text()) return;
  // Who has changed the query searches.
  const QSignalBlocker blocker(this);
  setText(query);
}

}  // namespace Nimbrel
