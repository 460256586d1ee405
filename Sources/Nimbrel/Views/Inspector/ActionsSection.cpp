#include "Views/Inspector/ActionsSection.h"

#include "Views/Inspector/MenuLink.h"
#include "Views/Shared/Measures.h"

namespace Nimbrel {

namespace {

constexpr int boxPadding = 10;
constexpr int columns = 4;
constexpr int columnSpacing = 6;
constexpr int rowSpacing = 7;

}  // namespace

ActionsSection::ActionsSection(const InspectorContext& context)
    : ShotSection(context, tr("Actions")),
      grid_(new QGridLayout),
      more_(new MenuLink(QStringLiteral("ellipsis.circle"), tr("More Actions"))) {
  setObjectName(QStringLiteral("inspector.actions"));
  grid_->setHorizontalSpacing(columnSpacing);
  grid_->setVerticalSpacing(rowSpacing);
  for (int column = 0; column < columns; ++column) grid_->setColumnStretch(column, 1);
  addButtons();
  more_->setObjectName(QStringLiteral("inspector.moreActions"));
  connect(more_, &QPushButton::clicked, this, &ActionsSection::showMore);

  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(boxPadding, boxPadding, boxPadding, Measures::step6);
  column->setSpacing(Measures::step6);
  column->addLayout(grid_);
  column->addWidget(more_, 0, Qt::AlignLeft);
  addBareRow(row);
}

IconButton* ActionsSection::add(const QString& name, const QString& title, const QString& symbol) {
  auto* button = new IconButton(symbol, title);
  button->setObjectName(QStringLiteral("inspector.") + name);
  const auto count = grid_->count();
  grid_->addWidget(button, count / columns, count % columns);
  return button;
}

IconButton* ActionsSection::addGuarded(const QString& name, const QString& title, const QString& symbol,
                                       void (Store::*run)(const Shot& shot)) {
  auto* button = add(name, title, symbol);
  connect(button, &QPushButton::clicked, this,
          [this, run] { handOut([run](Store& store, const Shot& shot) { (store.*run)(shot); }); });
  return button;
}

void ActionsSection::addButtons() {
  addGuarded(QStringLiteral("open"), tr("Open Image"), QStringLiteral("arrow.up.forward.app"), &Store::open);
  addGuarded(QStringLiteral("reveal"), tr("Reveal in Finder"), QStringLiteral("folder"), &Store::reveal);
  addGuarded(QStringLiteral("copyImage"), tr("Copy Image"), QStringLiteral("photo.on.rectangle"), &Store::copyImage);
  copyText_ = addGuarded(QStringLiteral("copyText"), tr("Copy Recognized Text"), QStringLiteral("text.viewfinder"),
                         &Store::copyText);
  favorite_ = add(QStringLiteral("favorite"), tr("Add to Favorites"), QStringLiteral("star"));
  connect(favorite_, &QPushButton::clicked, this, &ActionsSection::toggleFavorite);
  edit_ = add(QStringLiteral("edit"), tr("Edit or Redact"), QStringLiteral("pencil.tip.crop.circle"));
  connect(edit_, &QPushButton::clicked, this, &ActionsSection::editClicked);
  pin_ = add(QStringLiteral("pin"), tr("Pin to Screen"), QStringLiteral("pin"));
  connect(pin_, &QPushButton::clicked, this, &ActionsSection::pinClicked);
  auto* share = add(QStringLiteral("share"), tr("Share"), QStringLiteral("square.and.arrow.up"));
  connect(share, &QPushButton::clicked, this, [this, share] { Q_EMIT shareClicked(share); });
}

void ActionsSection::fill(const Shot& shot) {
  copyText_->setEnabled(!shot.ocr.empty());
  if (shot.favorite) {
    favorite_->setSymbol(QStringLiteral("star.fill"), tr("Remove from Favorites"), Token::Star);
  } else {
    favorite_->setSymbol(QStringLiteral("star"), tr("Add to Favorites"));
  }
}

void ActionsSection::toggleFavorite() const {
  if (!isInCatalogue()) return;
  store().database().setFavorite(shot()->id, !shot()->favorite);
  store().reload();
}

void ActionsSection::showMore() {
  closeMenu();
  menu_ = new MoreActionsMenu(store(), shot(), more_);
  const QPoint corner(layoutDirection() == Qt::LeftToRight ? 0 : more_->width() - menu_->sizeHint().width(),
                      more_->height());
  menu_->popup(more_->mapToGlobal(corner));
}

void ActionsSection::closeMenu() {
  if (menu_) menu_->close();
}

}  // namespace Nimbrel
