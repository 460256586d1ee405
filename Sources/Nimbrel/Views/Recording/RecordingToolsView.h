#pragma once

#include "Views/Recording/ExportProgress.h"
#include "Views/Recording/FrameLoader.h"
#include "Views/Recording/FramePreview.h"
#include "Views/Recording/RecordingExports.h"
#include "Views/Recording/TrimSection.h"
#include "Views/Shared/SheetDialog.h"

#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include <stop_token>
#include <string>

namespace Nimbrel {

/// The sheet that makes a shorter movie or an animated GIF of a recording. It shows the picture at the end that was
/// moved last, and the sound with what the removal of silence would drop. Closing it does not stop an export. It
/// deletes itself when it has closed. Main thread; the recording is read in others.
class RecordingToolsView final : public SheetDialog {
  Q_OBJECT

 public:
  /// The recording need not be there or be readable; why it is not is told in the sheet. The workspace and the exports
  /// must outlive it.
  RecordingToolsView(Workspace& workspace, RecordingExports& exports, const std::string& url, QWidget* parent);
  /// Gives up what is still read, without waiting for that.
  ~RecordingToolsView() override;

 private:
  enum class Format { Movie, Gif };

  void addName();
  void addForm();
  void addStatus();
  void addButtons();
  void measure();
  void lookForSound();
  void showMoment(double seconds);
  void begin(Format format);
  void setNote(const QString& note);
  void setBusy(bool isBusy);

  Workspace& workspace_;
  RecordingExports& exports_;
  std::string url_;
  FrameLoader frames_;
  FramePreview* preview_;
  TrimSection* trim_;
  QSlider* fps_;
  QLabel* note_;
  ExportProgress* progress_;
  QPushButton* exportGif_ = nullptr;
  QPushButton* save_ = nullptr;
  std::stop_source listening_;  ///< to the sound, which takes longest
};

}  // namespace Nimbrel
