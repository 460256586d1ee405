#include "Views/Window/ThumbnailSizeControl.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include <cmath>

namespace Nimbrel {

namespace {

constexpr int smallest = 120;
constexpr int largest = 320;
constexpr int keyStep = 10;
constexpr QSize wholeSize(190, 32);
constexpr int boxHeight = 24;
constexpr int boxTop = (32 - boxHeight) / 2;
constexpr QRect smallBox(8, boxTop, 20, boxHeight);
constexpr QRect sliderBox(34, boxTop, 120, boxHeight);
constexpr QRect largeBox(160, boxTop, 22, boxHeight);
constexpr int smallSymbol = 14;
constexpr int largeSymbol = 20;

}  // namespace

ThumbnailSizeControl::ThumbnailSizeControl(Settings& settings, QWidget* parent)
    : QWidget(parent), settings_(settings), slider_(new QSlider(Qt::Horizontal, this)) {
  setObjectName(QStringLiteral("thumbnailSizeControl"));
  setFixedSize(wholeSize);
  setToolTip(QStringLiteral("Adjust thumbnail size"));
  setFocusProxy(slider_);
  slider_->setObjectName(QStringLiteral("thumbnailSize"));
  slider_->setAccessibleName(QStringLiteral("Thumbnail Size"));
  slider_->setRange(smallest, largest);
  slider_->setSingleStep(keyStep);
  slider_->setPageStep(2 * keyStep);
  slider_->setFocusPolicy(Qt::TabFocus);
  showSetting();
  connect(slider_, &QSlider::valueChanged, this, [this](int value) { settings_.thumbSize.set(value); });
  connect(&settings, &Settings::changed, this, &ThumbnailSizeControl::showSetting);
}

void ThumbnailSizeControl::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto color = themeColor(Token::Secondary);
  const auto place = [this](const QRect& box) { return QStyle::visualRect(layoutDirection(), rect(), box); };
  Symbols::paint(painter, place(smallBox), QStringLiteral("photo"), smallSymbol, color);
  Symbols::paint(painter, place(largeBox), QStringLiteral("photo.fill"), largeSymbol, color);
}

void ThumbnailSizeControl::resizeEvent(QResizeEvent* /*event*/) {
  slider_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), sliderBox));
}

void ThumbnailSizeControl::showSetting() {
  const QSignalBlocker blocker(slider_);
  slider_->setValue(static_cast<int>(std::lround(settings_.thumbSize())));
}

}  // namespace Nimbrel
