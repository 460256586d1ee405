#include "Views/Panels/QuickLookPanel.h"

#include "Foundation/FilePath.h"
#include "Platform/ImageFile.h"
#include "Views/Panels/PictureView.h"
#include "Views/Shared/BusyRing.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Placeholder.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr QSize defaultSize(880, 620);

const auto photoSymbol = QStringLiteral("photo");

}  // namespace

QuickLookPanel::QuickLookPanel(QWidget* parent) : QuickLookPanel(&ImageFile::picture, parent) {}

QuickLookPanel::QuickLookPanel(Decoder decoder, QWidget* parent)
    : QWidget(parent, Qt::Window),
      bar_(new QWidget),
      name_(new ElidedLabel(TextStyle::Title3, Token::Text, Qt::ElideMiddle)),
      place_(new QLabel),
      ring_(new BusyRing),
      stage_(new QStackedWidget),
      view_(new PictureView),
      placeholder_(new Placeholder(photoSymbol, tr("No Preview"), {})),
      queue_(1, std::move(decoder), [this](const std::string& path, const QImage& image) { take(path, image); }) {
  setObjectName(QStringLiteral("quickLook"));
  setWindowTitle(tr("Quick Look"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_QuitOnClose, false);
  resize(defaultSize);
  setUp();
}

QuickLookPanel::~QuickLookPanel() = default;

void QuickLookPanel::setUp() {
  auto* row = new QHBoxLayout(bar_);
  row->setContentsMargins(Measures::rowPadding, 0, Measures::rowPadding, 0);
  row->setSpacing(Measures::step8);
  bar_->setFixedHeight(scaled(Measures::toolbarHeight));
  name_->setObjectName(QStringLiteral("quickLook.name"));
  place_->setObjectName(QStringLiteral("quickLook.place"));
  ring_->setObjectName(QStringLiteral("quickLook.ring"));
  setTextLook(*place_, TextStyle::Caption, Token::Secondary);
  row->addWidget(name_, 1);
  row->addWidget(ring_);
  row->addWidget(place_);
  const auto add = [&](const QString& symbol, const QString& title, const QString& name) {
    auto* button = addButton(symbol, title, name);
    row->addWidget(button);
    return button;
  };
  previous_ = add(QStringLiteral("chevron.left"), tr("Previous"), QStringLiteral("quickLook.previous"));
  next_ = add(QStringLiteral("chevron.right"), tr("Next"), QStringLiteral("quickLook.next"));
  connect(previous_, &QToolButton::clicked, this, [this] { step(-1); });
  connect(next_, &QToolButton::clicked, this, [this] { step(1); });
  auto* smaller = add(QStringLiteral("minus"), tr("Zoom Out"), QStringLiteral("quickLook.zoomOut"));
  auto* larger = add(QStringLiteral("plus"), tr("Zoom In"), QStringLiteral("quickLook.zoomIn"));
  connect(smaller, &QToolButton::clicked, view_, &PictureView::zoomOut);
  connect(larger, &QToolButton::clicked, view_, &PictureView::zoomIn);

  placeholder_->setObjectName(QStringLiteral("quickLook.placeholder"));
  stage_->addWidget(view_);
  stage_->addWidget(placeholder_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(bar_);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(stage_, 1);
}

QToolButton* QuickLookPanel::addButton(const QString& symbol, const QString& title, const QString& name) {
  auto* button = new QToolButton;
  button->setObjectName(name);
  button->setIcon(Symbols::icon(symbol));
  button->setIconSize({Measures::toolSymbol, Measures::toolSymbol});
  button->setAccessibleName(title);
  button->setToolTip(title);
  // The keys are those of the panel; Space would press a button and Escape do nothing.
  button->setFocusPolicy(Qt::NoFocus);
  return button;
}

void QuickLookPanel::showFiles(const std::vector<std::string>& paths, std::size_t start) {
  if (paths.empty()) return;
  if (isVisible() && paths == paths_) {
    close();
    return;
  }
  paths_ = paths;
  current_ = std::min(start, paths_.size() - 1);
  showCurrent();
  show();
  raise();
  activateWindow();
  setFocus();
}

void QuickLookPanel::dismiss() {
  paths_.clear();
  current_ = 0;
  close();
  putAway();
  name_->setFullText({});
  place_->clear();
  view_->setAccessibleName({});
  placeholder_->setContent(photoSymbol, tr("No Preview"), {});
  setWindowTitle(tr("Quick Look"));
}

void QuickLookPanel::step(int by) {
  const auto last = static_cast<int>(paths_.size()) - 1;
  const auto target = std::clamp(static_cast<int>(current_) + by, 0, std::max(last, 0));
  if (static_cast<std::size_t>(target) == current_) return;
  current_ = static_cast<std::size_t>(target);
  showCurrent();
}

void QuickLookPanel::showCurrent() {
  const auto& path = paths_[current_];
  const auto name = shownText(FilePath::lastComponent(path));
  name_->setFullText(name);
  setWindowTitle(name);
  place_->setText(paths_.size() > 1 ? tr("%1 of %2").arg(current_ + 1).arg(paths_.size()) : QString());
  previous_->setEnabled(current_ > 0);
  next_->setEnabled(current_ + 1 < paths_.size());
  view_->setPicture({});
  view_->setAccessibleName(name);
  stage_->setCurrentWidget(view_);
  ring_->show();
  // Forgotten first, so that the same file is read again and not taken for one that is shown already.
  queue_.show({}, [](const std::string&) { return false; });
  queue_.show({path}, [](const std::string&) { return false; });
}

void QuickLookPanel::take(const std::string& path, const QImage& picture) {
  // The user may have gone on, or have closed the panel; one that is hidden while a capture is taken comes back.
  if (!queue_.isShown(path)) return;
  ring_->hide();
  view_->setPicture(picture);
  placeholder_->setContent(photoSymbol, tr("No Preview"), shownText(FilePath::lastComponent(path)));
  stage_->setCurrentWidget(picture.isNull() ? static_cast<QWidget*>(placeholder_) : view_);
}

void QuickLookPanel::putAway() {
  queue_.show({}, [](const std::string&) { return false; });
  view_->setPicture({});
  ring_->hide();
}

void QuickLookPanel::closeEvent(QCloseEvent* event) {
  putAway();
  QWidget::closeEvent(event);
}

void QuickLookPanel::keyPressEvent(QKeyEvent* event) {
  const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
  switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Escape:
      close();
      return;
    case Qt::Key_Right:
      return step(forward);
    case Qt::Key_Left:
      return step(-forward);
    case Qt::Key_Down:
      return step(1);
    case Qt::Key_Up:
      return step(-1);
    case Qt::Key_Home:
      return step(-static_cast<int>(current_));
    case Qt::Key_End:
      return step(static_cast<int>(paths_.size()));
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return view_->zoomIn();
    case Qt::Key_Minus:
      return view_->zoomOut();
    case Qt::Key_0:
      return view_->fit();
    case Qt::Key_1:
      return view_->showPixels();
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace Nimbrel
