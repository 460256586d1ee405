#pragma once

#include "Platform/Pasteboard.h"
#include "Platform/PictureReader.h"
#include "Store/Store.h"
#include "Views/Editor/EditorCanvas.h"
#include "Views/Editor/EditorCopy.h"
#include "Views/Editor/EditorFooter.h"
#include "Views/Editor/EditorHeader.h"
#include "Views/Editor/EditorPicture.h"
#include "Views/Editor/EditorState.h"
#include "Views/Editor/EditorToolbar.h"
#include "Views/Window/EditorTarget.h"

#include <QDialog>
#include <QKeySequence>
#include <QShortcut>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// The sheet in which one shot is marked up, and saved as a copy beside it; the shot's own file is never changed. The
/// marks are lost when it closes, in whatever way. While a copy is rendered nothing but Cancel can be done, which gives
/// it up; when the sheet is closed otherwise, the copy is still written. Outcomes go to the Store's status. Main
/// thread.
class EditorView final : public QDialog {
  Q_OBJECT

 public:
  /// Services that it borrows.
  struct Tools {
    PictureReader& reader;
    Pasteboard& pasteboard;
    /// Hears the path of a copy that was written, before it enters the catalogue: what is kept of a former file of that
    /// name may show what is covered now. May be empty; may be called once the sheet is gone.
    std::function<void(const std::string& path)> written = {};
  };

  /// Whoever opens it has asked for access to the shot, never null. Everything else must outlive it.
  EditorView(Store& store, Tools tools, ShotPtr shot, QWidget* parent);

  [[nodiscard]] EditorState& state() { return *state_; }
  [[nodiscard]] EditorCanvas& canvas() { return *canvas_; }
  /// Whether the picture or its text is still being read, and whether a copy is being made.
  [[nodiscard]] bool isLoading() const { return isLoading_; }
  [[nodiscard]] bool isSaving() const { return givesUp_ != nullptr; }

 public Q_SLOTS:
  void done(int result) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void layOut();
  void addKeys();
  void addKey(const QKeySequence& key, std::function<void()> act);
  void redo();
  /// Where the file is by now: it may have been filed or renamed since.
  [[nodiscard]] std::string path() const;
  void load();
  void takePicture(EditorPicture picture);
  void recognize();
  void save();
  void endSaving(const EditorCopy::Saved& saved);
  /// The user's way out.
  void cancel();
  void giveUpSaving();
  void refresh();

  Store& store_;
  Tools tools_;
  ShotPtr shot_;
  EditorState* state_;
  EditorHeader* header_;
  EditorToolbar* toolbar_;
  EditorCanvas* canvas_;
  EditorFooter* footer_;
  std::vector<QShortcut*> keys_;
  EditorPicture picture_;
  bool isLoading_ = true;
  int loads_ = 0;                               ///< only the text that was read for the last one counts
  std::shared_ptr<std::atomic<bool>> givesUp_;  ///< of the copy that is being made
};

/// The sheet for the shot of the target; null when there is none, or when it is protected.
[[nodiscard]] QDialog* makeEditor(Store& store, EditorView::Tools tools, EditorTarget& target, QWidget* window);

}  // namespace Nimbrel
