#include "Views/Shared/SegmentedControl.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QRadioButton>
#include <QSignalBlocker>

#include <utility>

namespace Nimbrel {

namespace {

constexpr int titlePadding = 7;
constexpr int leastPadding = 2;

/// A radio button by its ways, a segment by its looks.
class Segment final : public QRadioButton {
 public:
  Segment(QString symbol, const QString& title, QWidget* parent)
      : QRadioButton(title, parent), symbol_(std::move(symbol)) {
    setAccessibleName(title);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  [[nodiscard]] QSize sizeHint() const override { return sizeWith(titlePadding); }
  /// A row of a fixed width has its titles closer together in a wide font.
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeWith(leastPadding); }

 protected:
  [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }

  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    if (!isEnabled()) painter.setOpacity(Measures::disabledOpacity);
    if (isChecked()) {
      Painting::fillOutlined(painter, rect(), Measures::controlRadius, themeColor(Token::Base),
                             themeColor(Token::Border));
    }
    const auto color = themeColor(isChecked() ? Token::Accent : Token::Secondary);
    const auto symbol = scaled(Measures::toolSymbol);
    const auto line = lineHeight(TextStyle::Caption2);
    const auto top = (height() - symbol - Measures::step2 - line) / 2;
    Symbols::paint(painter, QRectF(0, top, width(), symbol), symbol_, symbol, color);
    painter.setFont(titleFont(isChecked()));
    painter.setPen(color);
    painter.drawText(QRect(0, top + symbol + Measures::step2, width(), line), Qt::AlignCenter, text());
  }

 private:
  /// Widths are those of the chosen look, so that nothing moves when the choice does.
  [[nodiscard]] static QFont titleFont(bool isChosen) {
    auto font = textFont(TextStyle::Caption2);
    if (isChosen) font.setWeight(QFont::DemiBold);
    return font;
  }

  [[nodiscard]] QSize sizeWith(int padding) const {
    const auto title = QFontMetrics(titleFont(true)).horizontalAdvance(text());
    return {title + 2 * padding, scaled(Measures::segmentedHeight) - 2 * Measures::step2};
  }

  QString symbol_;
};

}  // namespace

SegmentedControl::SegmentedControl(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Measures::step2, Measures::step2, Measures::step2, Measures::step2);
  row->setSpacing(0);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  connect(&segments_, &QButtonGroup::idToggled, this, [this](int index, bool isChosen) {
    if (isChosen) Q_EMIT chosenChanged(index);
  });
}

void SegmentedControl::addSegment(const QString& symbol, const QString& title) {
  const auto index = count();
  auto* segment = new Segment(symbol, title, this);
  segments_.addButton(segment, index);
  layout()->addWidget(segment);
  if (index == 0) choose(0);
}

void SegmentedControl::choose(int index) {
  auto* segment = segments_.button(index);
  if (segment == nullptr) return;
  const QSignalBlocker silence(segments_);
  segment->setChecked(true);
}

void SegmentedControl::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), Measures::groupRadius, themeColor(Token::Quaternary));
}

}  // namespace Nimbrel
