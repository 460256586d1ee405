#include "Views/QuickFind/QuickFindView.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/QuickFind/QuickFindDelegate.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace Nimbrel {

QuickFindView::QuickFindView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QWidget(parent),
      actions_(store),
      results_(store),
      loader_(thumbs, previews),
      thumbs_(thumbs, loader_, nullptr),
      body_(new QStackedWidget),
      list_(new QListView) {
  setObjectName(QStringLiteral("quickFind.view"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeFieldRow());
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(body_, 1);
  setUpList();
  body_->addWidget(list_);
  body_->addWidget(makeEmptyBody());
  setFocusProxy(field_);

  connect(field_, &QLineEdit::textChanged, &results_, &QuickFindResults::setText);
  connect(field_, &QLineEdit::returnPressed, this, &QuickFindView::copySelected);
  connect(&results_, &QAbstractItemModel::modelReset, this, &QuickFindView::showResults);
  connect(&results_, &QAbstractItemModel::dataChanged, this, &QuickFindView::showThumbs);
  connect(&results_, &QuickFindResults::highlightedChanged, this, &QuickFindView::showHighlight);
  connect(&thumbs_, &VisibleThumbs::arrived, list_->viewport(), qOverload<>(&QWidget::update));
  showResults();
}

QWidget* QuickFindView::makeFieldRow() {
  auto* bar = new QWidget;
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(Measures::step16, Measures::step12, Measures::step16, Measures::step12);
  row->setSpacing(Measures::step8);
  row->addWidget(new SymbolView(QStringLiteral("magnifyingglass"), scaled(Measures::toolSymbol), Token::Secondary));
  field_ = new QLineEdit;
  field_->setObjectName(QStringLiteral("quickFind.field"));
  field_->setPlaceholderText(tr("Find a screenshot by its text"));
  field_->setAccessibleName(tr("Find a screenshot by its text"));
  field_->setFont(textFont(TextStyle::Title3Field));
  // It has the whole row, and the keyboard for as long as the panel is up.
  field_->setFrame(false);
  field_->setFixedHeight(scaled(Measures::step24));
  row->addWidget(field_, 1);
  hint_ = new QLabel(tr("↩ copy"));
  hint_->setObjectName(QStringLiteral("quickFind.hint"));
  setTextLook(*hint_, TextStyle::Caption, Token::Tertiary);
  row->addWidget(hint_);
  return bar;
}

QWidget* QuickFindView::makeEmptyBody() {
  empty_ = new QWidget;
  auto* column = new QVBoxLayout(empty_);
  column->setSpacing(Measures::step4);
  emptyTitle_ = new QLabel;
  emptyTitle_->setObjectName(QStringLiteral("quickFind.emptyTitle"));
  setTextLook(*emptyTitle_, TextStyle::Body, Token::Secondary);
  emptyHint_ = new QLabel(tr("Return copies the image · Esc closes"));
  emptyHint_->setObjectName(QStringLiteral("quickFind.emptyHint"));
  setTextLook(*emptyHint_, TextStyle::Caption, Token::Tertiary);
  column->addStretch();
  column->addWidget(emptyTitle_, 0, Qt::AlignHCenter);
  column->addWidget(emptyHint_, 0, Qt::AlignHCenter);
  column->addStretch();
  return empty_;
}

void QuickFindView::setUpList() {
  list_->setObjectName(QStringLiteral("quickFind.list"));
  list_->setAccessibleName(tr("Screenshots"));
  list_->setModel(&results_);
  list_->setItemDelegate(new QuickFindDelegate(thumbs_, list_));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setFocusPolicy(Qt::NoFocus);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setSelectionMode(QAbstractItemView::NoSelection);
  list_->setUniformItemSizes(true);
  list_->setAutoScroll(false);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  // The panel is seen behind the rows.
  list_->viewport()->setAutoFillBackground(false);
  list_->viewport()->installEventFilter(this);
  connect(list_->verticalScrollBar(), &QScrollBar::valueChanged, this, &QuickFindView::showThumbs);
  connect(list_, &QListView::clicked, this, [this](const QModelIndex& row) {
    results_.highlight(row.row());
    copySelected();
  });
}

void QuickFindView::startAfresh() {
  field_->clear();
  results_.setText({});
  field_->setFocus(Qt::OtherFocusReason);
}

void QuickFindView::showResults() {
  const bool isEmpty = results_.rowCount() == 0;
  hint_->setVisible(!isEmpty);
  emptyTitle_->setText(results_.text().isEmpty() ? tr("Type to search your screenshots") : tr("No matches"));
  emptyHint_->setVisible(results_.text().isEmpty());
  body_->setCurrentWidget(isEmpty ? empty_ : list_);
  showHighlight();
  showThumbs();
}

void QuickFindView::showHighlight() {
  const auto row = results_.index(results_.highlighted());
  list_->setCurrentIndex(row);
  if (row.isValid()) list_->scrollTo(row, QAbstractItemView::PositionAtCenter);
  // The keyboard stays in the field, which is what screen readers read.
  field_->setAccessibleDescription(row.data(Qt::AccessibleTextRole).toString());
  list_->viewport()->update();
}

void QuickFindView::showThumbs() {
  thumbs_.setRoom(QuickFindDelegate::thumbSize, devicePixelRatioF());
  const auto height = QuickFindDelegate::rowHeight();
  const auto top = list_->verticalScrollBar()->value();
  const auto& shots = results_.shots();
  std::vector<ThumbLoader::Place> places;
  const auto last = std::min(results_.rowCount() - 1, (top + list_->viewport()->height()) / height);
  for (int position = top / height; position <= last; ++position) {
    const auto& path = shots[static_cast<std::size_t>(position)]->path;
    places.push_back({.path = path, .isObscured = results_.rowAt(position).isProtected});
  }
  thumbs_.show(places);
}

void QuickFindView::copySelected() {
  const auto shot = results_.selected();
  if (!shot) return;
  // The owner may take their time, and the panel go meanwhile.
  actions_.copyImageThen(*shot, [self = QPointer(this)] {
    if (self) Q_EMIT self->closeRequested();
  });
}

void QuickFindView::keyPressEvent(QKeyEvent* event) {
  // What the field has no use for comes here.
  switch (event->key()) {
    case Qt::Key_Escape:
      Q_EMIT closeRequested();
      return;
    case Qt::Key_Down:
      return results_.moveDown();
    case Qt::Key_Up:
      return results_.moveUp();
    default:
      QWidget::keyPressEvent(event);
  }
}

bool QuickFindView::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Resize) showThumbs();
  return QWidget::eventFilter(object, event);
}

}  // namespace Nimbrel
