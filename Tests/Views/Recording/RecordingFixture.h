#pragma once

#include "Support/Movies.h"
#include "Views/Recording/FramePreview.h"
#include "Views/Recording/RecordingToolsView.h"
#include "Views/Recording/SoundStrip.h"
#include "Views/Recording/TimeSlider.h"
#include "Views/Sheets/SheetFixture.h"

#include <QCheckBox>
#include <QPointer>
#include <QPushButton>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// The tools of a recording of the test's own making, over a window, driven by the names of their parts.
class RecordingFixture : public SheetFixture {
 protected:
  /// A recording of thirty numbered pictures a second that clicks at those times; without any it has no sound.
  void writeRecording(double end, const std::vector<double>& clicks = {}) const;
  /// One that takes long to work on. No sound.
  void writeLongRecording() const;

  /// Opens the sheet for the recording, without waiting for anything.
  void openSheet();
  /// Opens it and waits until recording, picture and sound are known.
  void openAndWait();

  [[nodiscard]] bool isOpen() const { return sheet_ && sheet_->isVisible(); }
  [[nodiscard]] TimeSlider* start() const { return in<TimeSlider>(*sheet_, "recordingTools.start"); }
  [[nodiscard]] TimeSlider* end() const { return in<TimeSlider>(*sheet_, "recordingTools.end"); }
  [[nodiscard]] FramePreview* preview() const { return in<FramePreview>(*sheet_, "recordingTools.preview"); }
  [[nodiscard]] SoundStrip* strip() const { return in<SoundStrip>(*sheet_, "recordingTools.sound"); }
  [[nodiscard]] QCheckBox* removeSilence() const { return in<QCheckBox>(*sheet_, "recordingTools.removeSilence"); }
  [[nodiscard]] QPushButton* button(const char* name) const { return in<QPushButton>(*sheet_, name); }
  [[nodiscard]] QPushButton* save() const { return button("recordingTools.save"); }
  [[nodiscard]] QPushButton* exportGif() const { return button("recordingTools.exportGif"); }
  /// The words of a label; empty while it is hidden.
  [[nodiscard]] std::string textOf(const char* name) const;
  [[nodiscard]] std::string note() const { return textOf("recordingTools.note"); }

  /// Moves a slider as far as its span allows.
  static void move(TimeSlider* slider, double seconds);
  /// Whether the preview comes to show the picture of that moment.
  [[nodiscard]] bool comesToShow(double seconds) const;
  /// Presses a button and waits until the export has closed the sheet.
  void exportBy(QPushButton* button);

  /// Everything in the recording's folder but the recording.
  [[nodiscard]] std::vector<std::string> madeFiles() const;

  std::string path_ = home_.desktop("Screen recording.mov");
  std::unique_ptr<RecordingExports> exports_ = std::make_unique<RecordingExports>(*store_, *workspace_);
  QPointer<RecordingToolsView> sheet_;
};

}  // namespace Nimbrel::Testing
