#include "Views/Settings/SettingsView.h"

#include "Views/Settings/CapturePane.h"
#include "Views/Settings/LibraryPane.h"
#include "Views/Settings/PrivacyPane.h"
#include "Views/Settings/ProjectsPane.h"
#include "Views/Settings/RulesPane.h"
#include "Views/Settings/SettingsStatusBar.h"
#include "Views/Settings/SyncPane.h"
#include "Views/Settings/TabOrder.h"
#include "Views/Settings/TextPane.h"
#include "Views/Settings/WatchedFoldersPane.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

namespace Nimbrel {

namespace {

constexpr int windowWidth = 600;
constexpr int windowHeight = 650;

}  // namespace

SettingsView::SettingsView(Store& store, const SettingsLinks& links, QWidget* parent)
    : QWidget(parent, Qt::Dialog), form_(new GroupedForm) {
  setObjectName(QStringLiteral("settings"));
  setWindowTitle(tr("Settings"));
  setAttribute(Qt::WA_DeleteOnClose);
  setFixedSize(QSize(scaled(windowWidth), scaled(windowHeight)).boundedTo(screen()->availableSize()));
  fillForm(store, links);
  layOut(store);
  placeMargins();
  closeOn(QKeySequence::Cancel);
  closeOn(QKeySequence::Close);
  orderTabsByLayout(*this);
}

void SettingsView::fillForm(Store& store, const SettingsLinks& links) {
  const std::initializer_list<SettingsPane*> panes = {
      new LibraryPane(store),        new CapturePane(store, links.applyHotkeySetting),
      new WatchedFoldersPane(store), new TextPane(store),
      new ProjectsPane(store),       new RulesPane(store),
      new SyncPane(store),           new PrivacyPane(store, links.privacyPolicy)};
  for (auto* pane : panes) {
    form_->add(pane);
    connect(pane, &SettingsPane::rowsChanged, this, [this] { orderTabsByLayout(*this); });
  }
}

void SettingsView::layOut(Store& store) {
  auto* scroll = new QScrollArea;
  scroll->setObjectName(QStringLiteral("settings.scroll"));
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  scroll->setWidget(form_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(scroll, 1);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(new SettingsStatusBar(store));
}

void SettingsView::closeOn(const QKeySequence& keys) {
  connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
}

void SettingsView::raiseWindow() {
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
  activateWindow();
}

void SettingsView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::StyleChange) placeMargins();
}

void SettingsView::placeMargins() {
  // The place of the scroll bar counts as margin, whether or not there is something to scroll.
  const auto narrow = std::max(0, Measures::dialogMargin - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  const bool isLeftToRight = layoutDirection() == Qt::LeftToRight;
  form_->layout()->setContentsMargins(isLeftToRight ? Measures::dialogMargin : narrow, Measures::step16,
                                      isLeftToRight ? narrow : Measures::dialogMargin, Measures::step2);
}

}  // namespace Nimbrel
