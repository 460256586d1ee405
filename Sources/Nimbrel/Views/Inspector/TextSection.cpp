#include "Views/Inspector/TextSection.h"

#include "Views/Shared/BusyRing.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/OCRDisplay.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

constexpr int rowPaddingAlong = 10;

QLabel* caption(const QString& text, TextStyle style) {
  auto* label = new QLabel(text);
  setTextLook(*label, style, Token::Secondary);
  label->setWordWrap(true);
  return label;
}

}  // namespace

TextSection::TextSection(const InspectorContext& context)
    : ShotSection(context, tr("Recognized Text")),
      copyAll_(new LinkButton(tr("Copy All"))),
      waiting_(waitingRow()),
      none_(caption(tr("No text found"), TextStyle::Body)),
      find_(new FindBar),
      count_(caption({}, TextStyle::Caption2)),
      scroller_(new TextScroller),
      text_(textColumn()) {
  setObjectName(QStringLiteral("inspector.text"));
  copyAll_->setObjectName(QStringLiteral("inspector.copyAll"));
  copyAll_->setFont(textFont(TextStyle::Caption));
  copyAll_->setFixedHeight(lineHeight(TextStyle::Caption));
  setAccessory(copyAll_);
  none_->setObjectName(QStringLiteral("inspector.noText"));
  count_->setObjectName(QStringLiteral("inspector.matchCount"));
  scroller_->setObjectName(QStringLiteral("inspector.ocr"));

  auto* row = new QWidget;
  auto* column = new QVBoxLayout(row);
  column->setContentsMargins(Measures::rowPadding, rowPaddingAlong, Measures::rowPadding, rowPaddingAlong);
  column->setSpacing(0);
  for (auto* part : {waiting_, static_cast<QWidget*>(none_), text_}) column->addWidget(part);
  addBareRow(row);
  connect(copyAll_, &QPushButton::clicked, this,
          [this] { handOut([](Store& store, const Shot& shot) { store.copyText(shot); }); });
  connect(find_, &FindBar::queryChanged, this, [this](const QString& query) {
    drafts().ocrQuery = query;
    showMatches();
  });
  connect(&Theme::shared(), &Theme::changed, this, &TextSection::showMatches);
}

QWidget* TextSection::waitingRow() {
  auto* row = new QWidget;
  row->setObjectName(QStringLiteral("inspector.reading"));
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(Measures::step6);
  line->addWidget(new BusyRing);
  line->addWidget(caption(tr("Reading text…"), TextStyle::Body), 1);
  return row;
}

QWidget* TextSection::textColumn() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(Measures::step8);
  column->addWidget(caption(tr("Machine-read text · line breaks and order may be approximate"), TextStyle::Caption2));
  column->addWidget(find_);
  column->addWidget(count_);
  column->addWidget(scroller_);
  return part;
}

void TextSection::fill(const Shot& shot) {
  const bool hasText = shot.ocrDone && !shot.ocr.empty();
  copyAll_->setVisible(!shot.ocr.empty());
  waiting_->setVisible(!shot.ocrDone);
  none_->setVisible(shot.ocrDone && shot.ocr.empty());
  text_->setVisible(hasText);
  find_->setQuery(drafts().ocrQuery);
  showText(hasText ? shot.ocr : std::string());
  showMatches();
}

void TextSection::showText(const std::string& text) {
  if (shown_ == text) return;
  shown_ = text;
  scroller_->setText(QString::fromStdString(text));
}

void TextSection::showMatches() {
  const auto& query = drafts().ocrQuery;
  count_->setHidden(query.isEmpty());
  auto matches = OCRDisplay::highlighted(scroller_->text(), query, themeColor(Token::FoundText)).formats;
  count_->setText(QString::number(matches.size()) + tr(" matches"));
  scroller_->setMatches(std::move(matches));
}

}  // namespace Nimbrel
