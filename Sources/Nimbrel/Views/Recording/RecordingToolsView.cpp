#include "Views/Recording/RecordingToolsView.h"

#include "Foundation/Background.h"
#include "Foundation/FilePath.h"
#include "Recording/RecordingProcessor.h"
#include "Views/Recording/SliderRow.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/GroupedForm.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/WrappedText.h"

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 560;
constexpr int contentWidth = sheetWidth - 2 * Measures::dialogMargin;
constexpr int partGap = 14;

constexpr int slowest = 4;
constexpr int fastest = 15;
constexpr int usual = 8;

}  // namespace

RecordingToolsView::RecordingToolsView(Workspace& workspace, RecordingExports& exports, const std::string& url,
                                       QWidget* parent)
    : SheetDialog(tr("Recording Tools"), parent),
      workspace_(workspace),
      exports_(exports),
      url_(url),
      frames_(grabFrom(url), exports.readers()),
      preview_(new FramePreview),
      trim_(new TrimSection),
      fps_(new QSlider(Qt::Horizontal)),
      note_(new WrappedText(QString(), TextStyle::Caption, Token::Secondary)),
      progress_(new ExportProgress) {
  setObjectName(QStringLiteral("recordingTools"));
  setAttribute(Qt::WA_DeleteOnClose);
  content()->setContentsMargins(Measures::dialogMargin, Measures::dialogMargin, Measures::dialogMargin,
                                Measures::step16);
  content()->setSpacing(0);
  preview_->setObjectName(QStringLiteral("recordingTools.preview"));
  preview_->setMinimumWidth(contentWidth);
  addName();
  content()->addSpacing(partGap);
  content()->addWidget(preview_);
  content()->addSpacing(partGap);
  addForm();
  addStatus();
  addButtons();
  connect(trim_, &TrimSection::momentChanged, this, &RecordingToolsView::showMoment);
  connect(&frames_, &FrameLoader::loaded, preview_, &FramePreview::setFrame);
  measure();
  lookForSound();
}

RecordingToolsView::~RecordingToolsView() { listening_.request_stop(); }

void RecordingToolsView::addName() {
  auto* name = new ElidedLabel(TextStyle::Body, Token::Secondary, Qt::ElideMiddle);
  name->setObjectName(QStringLiteral("recordingTools.fileName"));
  // A long name is shortened and does not widen the sheet.
  name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  name->setFullText(shownText(FilePath::lastComponent(url_)));
  content()->addSpacing(Measures::step2);
  content()->addWidget(name);
}

void RecordingToolsView::addForm() {
  auto* form = new GroupedForm;
  form->layout()->setContentsMargins(0, 0, 0, 0);
  form->setMinimumWidth(contentWidth);
  form->add(trim_);
  auto* gif = new FormSection(tr("Animated GIF"));
  form->add(gif);
  auto* value = new QLabel;
  fps_->setObjectName(QStringLiteral("recordingTools.fps"));
  value->setObjectName(QStringLiteral("recordingTools.fpsValue"));
  fps_->setRange(slowest, fastest);
  fps_->setPageStep(1);
  connect(fps_, &QSlider::valueChanged, value, qOverload<int>(&QLabel::setNum));
  fps_->setValue(usual);
  gif->addBareRow(new SliderRow(tr("Frames per second"), fps_, value));
  content()->addWidget(form);
}

void RecordingToolsView::addStatus() {
  note_->setObjectName(QStringLiteral("recordingTools.note"));
  note_->setFixedWidth(contentWidth);
  note_->setContentsMargins(Measures::step2, 0, Measures::step2, 0);
  auto* place = new QWidget;
  // Room for both lines, so that the sheet keeps its size when an export begins.
  place->setMinimumHeight(2 * lineHeight(TextStyle::Caption) + Measures::step6);
  auto* lines = new QVBoxLayout(place);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->setSpacing(Measures::step6);
  lines->addWidget(note_);
  lines->addWidget(progress_);
  lines->addStretch();
  content()->addWidget(place);
  setNote(QString());
}

void RecordingToolsView::addButtons() {
  auto* original = new QPushButton(tr("Show Original"));
  original->setObjectName(QStringLiteral("recordingTools.showOriginal"));
  setVariant(*original, ButtonVariant::Plain);
  footerStart()->addWidget(original);
  connect(original, &QPushButton::clicked, this, [this] { workspace_.reveal(url_); });
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("recordingTools.cancel"));
  exportGif_ = addFurtherButton(tr("Export GIF"));
  exportGif_->setObjectName(QStringLiteral("recordingTools.exportGif"));
  connect(exportGif_, &QPushButton::clicked, this, [this] { begin(Format::Gif); });
  save_ = addDefaultButton(tr("Save Trimmed Copy"));
  save_->setObjectName(QStringLiteral("recordingTools.save"));
  connect(save_, &QPushButton::clicked, this, [this] { begin(Format::Movie); });
}

void RecordingToolsView::measure() {
  inBackground(
      this, exports_.readers(), [url = url_] { return RecordingProcessor::duration(url); },
      [this](const Result<double>& duration) {
        if (!duration) return setNote(shownText(duration.error().message));
        trim_->setDuration(duration.value());
      });
}

void RecordingToolsView::lookForSound() {
  inBackground(
      this, exports_.readers(),
      [url = url_, stop = listening_.get_token()] {
        return RecordingProcessor::soundOverview(url, SoundStrip::wantedParts, stop);
      },
      [this](Result<RecordingProcessor::SoundOverview> sound) {
        if (!sound) return trim_->strip().setMissing(shownText(sound.error().message));
        trim_->strip().setSound(std::move(sound).value());
      });
}

void RecordingToolsView::showMoment(double seconds) { frames_.load(seconds, preview_->room()); }

void RecordingToolsView::begin(Format format) {
  const bool isGif = format == Format::Gif;
  const auto& times = trim_->times();
  setBusy(true);
  setNote(isGif ? tr("Creating GIF…") : tr("Exporting recording…"));
  auto* run = exports_.begin({.url = url_,
                              .start = times.start,
                              .end = times.end,
                              .removeSilence = trim_->removesSilence(),
                              .fps = isGif ? std::optional(fps_->value()) : std::nullopt});
  progress_->follow(run);
  connect(run, &RecordingExport::succeeded, this, &RecordingToolsView::accept);
  connect(run, &RecordingExport::failed, this, [this](const std::string& message) {
    setNote(shownText(message));
    setBusy(false);
  });
}

void RecordingToolsView::setNote(const QString& note) {
  note_->setText(note);
  note_->setVisible(!note.isEmpty());
}

void RecordingToolsView::setBusy(bool isBusy) {
  exportGif_->setEnabled(!isBusy);
  save_->setEnabled(!isBusy);
  if (!isBusy) progress_->stop();
}

}  // namespace Nimbrel
