#include "Views/Window/Toolbar.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Window/MenuTitles.h"
#include "Views/Window/MoreOptionsMenu.h"
#include "Views/Window/ThumbnailSizeControl.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>

namespace Nimbrel {

namespace {

constexpr int leadingPadding = Measures::step8;
constexpr int trailingPadding = Measures::step12;
constexpr int gap = Measures::step6;
constexpr int gapBeforeSearch = Measures::step16;

void prepare(QToolButton& button, const QString& name) {
  button.setObjectName(name);
  const auto size = scaled(Measures::toolSymbol);
  button.setIconSize({size, size});
}

}  // namespace

Toolbar::Toolbar(Store& store, const std::vector<QMenu*>& menus, QWidget* parent)
    : QWidget(parent),
      store_(store),
      sidebarButton_(new QToolButton(this)),
      viewOptions_(new ViewOptionsMenu(store.settings(), this)),
      viewButton_(addMenuButton(QStringLiteral("viewOptions"), QStringLiteral("View Options"),
                                QStringLiteral("Sort, group, and resize screenshots"), viewOptions_)),
      search_(new SearchField(store, this)) {
  setObjectName(QStringLiteral("toolbar"));
  setFixedHeight(scaled(Measures::toolbarHeight));
  prepare(*sidebarButton_, QStringLiteral("sidebarButton"));
  sidebarButton_->setIcon(Symbols::icon(QStringLiteral("sidebar.left")));
  connect(sidebarButton_, &QToolButton::clicked, this, &Toolbar::sidebarToggled);
  connect(viewOptions_, &ViewOptionsMenu::detailsToggled, this, &Toolbar::detailsToggled);
  auto* titles = new MenuTitles(this);
  for (auto* menu : menus) titles->addMenu(menu);
  auto* size = new ThumbnailSizeControl(store.settings(), this);
  auto* more = addMenuButton(QStringLiteral("moreOptions"), QStringLiteral("More Options"),
                             QStringLiteral("File or delete selected screenshots"), new MoreOptionsMenu(store, this));
  more->setIcon(Symbols::icon(QStringLiteral("ellipsis.circle")));
  layOut(titles, size, more);
  setSidebarWidth(std::nullopt);
  showLayout();
  connect(&store.settings(), &Settings::changed, this, &Toolbar::showLayout);
}

QToolButton* Toolbar::addMenuButton(const QString& name, const QString& title, const QString& help, QMenu* menu) {
  auto* button = new QToolButton(this);
  prepare(*button, name);
  button->setAccessibleName(title);
  button->setToolTip(help);
  button->setMenu(menu);
  button->setPopupMode(QToolButton::InstantPopup);
  return button;
}

void Toolbar::layOut(QWidget* titles, QWidget* size, QWidget* more) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(leadingPadding, 0, trailingPadding, 0);
  row->setSpacing(gap);
  row->addWidget(sidebarButton_);
  row->addWidget(titles);
  row->addStretch(1);
  row->addWidget(viewButton_);
  row->addWidget(size);
  row->addWidget(more);
  row->addSpacing(gapBeforeSearch - gap);
  row->addWidget(search_);
  const std::vector<QWidget*> order{sidebarButton_, titles, viewButton_, size->focusProxy(), more, search_};
  for (std::size_t i = 1; i < order.size(); ++i) setTabOrder(order[i - 1], order[i]);
}

void Toolbar::setSidebarWidth(std::optional<int> width) {
  sidebarWidth_ = width;
  const auto title = width ? QStringLiteral("Hide Sidebar") : QStringLiteral("Show Sidebar");
  sidebarButton_->setText(title);
  sidebarButton_->setAccessibleName(title);
  sidebarButton_->setToolTip(title);
  update();
}

void Toolbar::showLayout() {
  viewButton_->setIcon(Symbols::icon(ViewOptionsMenu::symbolOf(store_.settings().galleryLayout())));
}

void Toolbar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), themeColor(Token::Window));
  if (!sidebarWidth_) return;
  const QRect lead(0, 0, *sidebarWidth_, height());
  painter.fillRect(QStyle::visualRect(layoutDirection(), rect(), lead), themeColor(Token::Sidebar));
  const QRect rule(lead.width(), 0, 1, height());
  Painting::verticalRule(painter, QStyle::visualRect(layoutDirection(), rect(), rule), themeColor(Token::Separator));
}

}  // namespace Nimbrel
