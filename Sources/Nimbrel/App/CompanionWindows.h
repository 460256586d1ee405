#pragma once

#include "App/MainProcess.h"
#include "Store/Store.h"
#include "Views/Recording/RecordingExports.h"
#include "Views/Window/EditorTarget.h"
#include "Views/Window/SheetHost.h"

#include <QObject>

#include <functional>
#include <string>

namespace Nimbrel {

/// What is opened from the companion's panel and from its shelf, in windows of their own that outlive both: the tools
/// of the last recording and the editor. Main thread.
class CompanionWindows final : public QObject {
  Q_OBJECT

 public:
  /// Told the path of a file with new content.
  using Written = std::function<void(const std::string& path)>;

  /// All are borrowed and must outlive it.
  CompanionWindows(Store& store, const WindowServices& services, RecordingExports& exports, const Written& written);

  /// Has the tools of the last recording in front, if they are up; those of a former one give way to them.
  void raiseRecordingTools();

 Q_SIGNALS:
  /// One of them is in front from now on.
  void opened();

 private:
  void addRecordingTools(RecordingExports& exports);
  void addEditor(const Written& written);
  void bringToFront(const SheetHost& host);

  Store& store_;
  WindowServices services_;
  EditorTarget target_;
  std::string recording_;  ///< the one that tools were opened for last
  SheetHost recordingTools_;
  SheetHost editor_;
};

}  // namespace Nimbrel
