#pragma once

#include "Views/Shared/Chip.h"
#include "Views/Shared/FlowLayout.h"

#include <QBasicTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <string>
#include <vector>

namespace Nimbrel {

/// A shot's tags as chips that can be removed. Many come in portions, in later turns of the event loop, so that
/// thousands hold nothing up.
class TagChips final : public QWidget {
  Q_OBJECT

 public:
  explicit TagChips(QWidget* parent = nullptr);

  /// Shows these, and keeps the chips of those that were shown before, where they follow each other as they did.
  void setTags(const std::vector<std::string>& tags);
  /// Those that have their chips by now, in turn.
  [[nodiscard]] std::size_t chipCount() const { return chips_.size(); }

 Q_SIGNALS:
  void removeRequested(const std::string& tag);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  struct Entry {
    std::string tag;
    Chip* chip;
  };
  /// Leaves only chips that the new tags begin with.
  void dropOthers();
  /// Takes all chips out, at once: each that goes alone is looked for among all others.
  void startAnew();
  void addPortion();
  void add(const std::string& tag);

  QVBoxLayout* column_;
  QWidget* rows_ = nullptr;
  FlowLayout* flow_ = nullptr;
  std::vector<std::string> tags_;
  std::vector<Entry> chips_;  ///< of the first of the tags
  QBasicTimer more_;
};

}  // namespace Nimbrel
