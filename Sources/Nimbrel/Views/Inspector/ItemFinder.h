#pragma once

#include "Analysis/Detected.h"
#include "Foundation/Timestamp.h"

#include <QObject>

#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Looks for what a person would act on in the text of the shot that is shown, in another thread, since a long text
/// takes a while. Of several texts in quick succession only the first and the last are looked through. Main thread.
class ItemFinder final : public QObject {
  Q_OBJECT

 public:
  using Find = std::function<std::vector<DetectedItem>(const std::string& text, Timestamp now)>;

  /// `find` is called in other threads, and owns what it touches.
  explicit ItemFinder(Find find, QObject* parent = nullptr);

  /// From now on this text is shown. found() tells none at once, and the items in a later turn of the event loop; the
  /// text that is shown already tells nothing again.
  void show(const std::string& text, Timestamp now);

 Q_SIGNALS:
  /// What there is in the text that is shown.
  void found(const std::vector<DetectedItem>& items);

 private:
  void begin();

  Find find_;
  std::string text_;
  Timestamp now_;
  bool isBusy_ = false;
};

}  // namespace Nimbrel
