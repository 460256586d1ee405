#include "Views/Window/HeaderLine.h"

#include "Views/Shared/Measures.h"
#include "Views/Window/HeaderSubtitle.h"
#include "Views/Window/Surface.h"

#include <QStyle>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int padding = Measures::step16;
constexpr int gap = Measures::step12;
constexpr int leastEnd = Measures::step8;  ///< free behind the subtitle

/// Where the text of a label of that height has its baseline, from the label's upper edge.
int baselineOf(const QLabel& label, int height) {
  const auto metrics = label.fontMetrics();
  return (height - metrics.height()) / 2 + metrics.ascent();
}

}  // namespace

HeaderLine::HeaderLine(Store& store, QWidget* parent)
    : QWidget(parent),
      store_(store),
      title_(new ElidedLabel(TextStyle::Title3, Token::Text, Qt::ElideRight, this)),
      subtitle_(new ElidedLabel(TextStyle::Caption, Token::Secondary, Qt::ElideRight, this)) {
  setObjectName(QStringLiteral("header"));
  title_->setObjectName(QStringLiteral("header.title"));
  subtitle_->setObjectName(QStringLiteral("header.subtitle"));
  setFixedHeight(scaled(Measures::headerLineHeight));
  setSurface(*this, Token::Window);

  refreshing_.setSingleShot(true);
  connect(&refreshing_, &QTimer::timeout, this, &HeaderLine::refresh);
  for (const auto signal : {&Store::shotsChanged, &Store::derivedChanged, &Store::filterChanged,
                            &Store::searchResultChanged, &Store::ocrRemainingChanged, &Store::statusChanged}) {
    connect(&store, signal, this, [this] { refreshing_.start(); });
  }
  refresh();
}

void HeaderLine::resizeEvent(QResizeEvent* /*event*/) { place(); }

void HeaderLine::refresh() {
  const auto title = store_.filter().title();
  title_->setFullText(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  subtitle_->setFullText(QString::fromStdString(headerSubtitle(store_)));
  place();
}

void HeaderLine::place() {
  const auto room = std::max(0, width() - 2 * padding);
  const auto titleHeight = title_->sizeHint().height();
  const QRect title(padding, (height() - titleHeight) / 2, std::min(title_->sizeHint().width(), room), titleHeight);
  const auto left = title.left() + title.width() + gap;
  const auto subtitleHeight = subtitle_->sizeHint().height();
  const auto top = title.top() + baselineOf(*title_, titleHeight) - baselineOf(*subtitle_, subtitleHeight);
  const auto subtitleWidth = std::min(subtitle_->sizeHint().width(), width() - padding - leastEnd - left);
  title_->setGeometry(QStyle::visualRect(layoutDirection(), rect(), title));
  subtitle_->setVisible(subtitleWidth > 0);
  subtitle_->setGeometry(
      QStyle::visualRect(layoutDirection(), rect(), QRect(left, top, std::max(0, subtitleWidth), subtitleHeight)));
}

}  // namespace Nimbrel
