#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QWidget>

namespace Nimbrel {

/// A row of choices, symbol over title, of which one is chosen. Each is a radio button to assistive technology; the
/// arrow keys move the choice.
class SegmentedControl final : public QWidget {
  Q_OBJECT

 public:
  explicit SegmentedControl(QWidget* parent = nullptr);

  /// Adds a choice at the end; the first is chosen until another is.
  void addSegment(const QString& symbol, const QString& title);
  [[nodiscard]] int count() const { return static_cast<int>(segments_.buttons().size()); }
  [[nodiscard]] int chosen() const { return segments_.checkedId(); }
  /// Chooses without telling; an index that is none changes nothing.
  void choose(int index);
  [[nodiscard]] QAbstractButton* segment(int index) const { return segments_.button(index); }

 Q_SIGNALS:
  /// The user has chosen another.
  void chosenChanged(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QButtonGroup segments_;
};

}  // namespace Nimbrel
