#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Shared/ApplicationFocus.h"
#include "Views/Shared/FloatingPanel.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>

#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

class QuickFindView;

/// Where quick find stands: in the middle, with its lower edge a little above that of the screen, and whole.
[[nodiscard]] QPoint quickFindPlace(const QRect& visible, QSize size);

/// The search over whatever program the user works in: what is picked is on the pasteboard, and the keyboard goes back
/// to where it was. One for each process that has windows. Main thread.
class QuickFindPanel final : public QObject {
  Q_OBJECT

 public:
  static constexpr QSize panelSize{620, 420};

  /// All are borrowed and must outlive it. Its window is made when it is first opened.
  QuickFindPanel(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, DesktopWindows windows);
  ~QuickFindPanel() override;

  [[nodiscard]] bool isVisible() const;
  /// Null until it was opened. Borrowed.
  [[nodiscard]] FloatingPanel* window() const { return panel_.get(); }

  /// Shows it empty, with the keyboard, on the screen where the user works, and remembers where the keyboard was.
  /// `token` is what the desktop gave whoever asked for it; may be empty.
  void open(const std::string& token = {});
  /// Hides it and gives the keyboard back, unless that was in a window of this process.
  void close();
  /// Hides it, and leaves the keyboard to whoever has it. A question that is up over it is refused.
  void dismiss();
  /// What its command and its hotkey do.
  void toggle();

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void makePanel();
  void takeKeyboard(const std::string& token);
  void leave();
  void endQuestion();

  Store& store_;
  ThumbCache& thumbs_;
  GalleryPreviewCache& previews_;
  DesktopWindows windows_;
  ApplicationFocus focus_;
  std::optional<FocusedWindow> former_;  ///< that had the keyboard when it was opened
  std::unique_ptr<FloatingPanel> panel_;
  QuickFindView* view_ = nullptr;  ///< the panel's
  bool hasArrived_ = false;        ///< it has had the keyboard since it was opened
  bool isAsking_ = false;          ///< a dialog over the panel waits for an answer
};

}  // namespace Nimbrel
