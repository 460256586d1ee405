#include "Views/Companion/CaptureSection.h"

#include "Views/Companion/PanelButton.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"

#include <QHBoxLayout>
#include <QLabel>

#include <array>
#include <span>

namespace Nimbrel {

namespace {

struct ModeWords {
  CaptureMode mode;
  const char* name;
  const char* title;
  const char* symbol;
};

constexpr std::array modes{
    ModeWords{CaptureMode::area, "panel.area", QT_TRANSLATE_NOOP("CaptureSection", "Selection"), "rectangle.dashed"},
    ModeWords{CaptureMode::window, "panel.window", QT_TRANSLATE_NOOP("CaptureSection", "Window"), "macwindow"},
    ModeWords{CaptureMode::screen, "panel.screen", QT_TRANSLATE_NOOP("CaptureSection", "Screen"), "display"},
    ModeWords{CaptureMode::recordArea, "panel.recordArea", QT_TRANSLATE_NOOP("CaptureSection", "Record Area"),
              "record.circle"},
    ModeWords{CaptureMode::recordScreen, "panel.recordScreen", QT_TRANSLATE_NOOP("CaptureSection", "Record Screen"),
              "video"},
};
constexpr std::size_t pictureModes = 3;

QHBoxLayout* newRow(QVBoxLayout& column) {
  auto* row = new QHBoxLayout;
  row->setSpacing(Measures::step6);
  column.addLayout(row);
  return row;
}

}  // namespace

CaptureSection::CaptureSection(Store& store, QWidget* parent)
    : QWidget(parent), store_(store), status_(new ElidedLabel(TextStyle::Caption, Token::Secondary)) {
  auto* title = new QLabel(tr("Capture"));
  setTextLook(*title, TextStyle::CaptionTitle, Token::Secondary);
  title->setMinimumHeight(lineHeight(TextStyle::CaptionTitle));
  status_->setObjectName(QStringLiteral("panel.status"));
  auto* buttons = new QVBoxLayout;
  buttons->setSpacing(Measures::step6);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(Measures::rowPadding, Measures::rowPadding, Measures::rowPadding, Measures::rowPadding);
  column->setSpacing(Measures::step8);
  column->addWidget(title);
  column->addLayout(buttons);
  column->addWidget(status_);
  addCaptureButtons(*buttons);
  addRecordingButtons(*buttons);
  connect(&store, &Store::recordingChanged, this, &CaptureSection::refresh);
  connect(&store, &Store::lastRecordingURLChanged, this, &CaptureSection::refresh);
  connect(&store, &Store::statusChanged, this, &CaptureSection::refresh);
  refresh();
}

void CaptureSection::addCaptureButtons(QVBoxLayout& column) {
  const std::span all(modes);
  for (const auto group : {all.first(pictureModes), all.subspan(pictureModes)}) {
    auto* row = newRow(column);
    for (const auto& words : group) {
      auto* button = new PanelButton(QLatin1String(words.symbol), tr(words.title));
      button->setObjectName(QLatin1String(words.name));
      connect(button, &QAbstractButton::clicked, this,
              [this, mode = words.mode] { store_.capture(mode, Store::Panel::Dismiss); });
      row->addWidget(button, 1);
    }
  }
}

void CaptureSection::addRecordingButtons(QVBoxLayout& column) {
  stop_ = new PanelButton(QStringLiteral("stop.circle.fill"), tr("Stop Recording"));
  stop_->setObjectName(QStringLiteral("panel.stopRecording"));
  connect(stop_, &QAbstractButton::clicked, this, [this] { store_.stopRecording(); });
  column.addWidget(stop_);

  lastRecording_ = new QWidget;
  auto* row = new QHBoxLayout(lastRecording_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(Measures::step6);
  auto* show = new PanelButton(QStringLiteral("film"), tr("Show Last Recording"));
  show->setObjectName(QStringLiteral("panel.showRecording"));
  connect(show, &QAbstractButton::clicked, this, [this] { store_.revealLastRecording(); });
  auto* edit = new PanelButton(QStringLiteral("slider.horizontal.3"), tr("Edit Last Recording"));
  edit->setObjectName(QStringLiteral("panel.editRecording"));
  connect(edit, &QAbstractButton::clicked, this, [this] {
    store_.setShowRecordingTools(true);
    Q_EMIT editRequested();
  });
  row->addWidget(show, 1);
  row->addWidget(edit, 1);
  column.addWidget(lastRecording_);
}

void CaptureSection::refresh() {
  stop_->setVisible(store_.recording());
  lastRecording_->setVisible(store_.lastRecordingURL().has_value());
  status_->setFullText(shownText(store_.status()));
  status_->setVisible(!store_.status().empty());
}

}  // namespace Nimbrel
