#pragma once

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace Nimbrel {

/// Shows the sheets of a window, one at a time, in step with the state that asks for them: a sheet opens when it is
/// wanted and no other is up, closes when it is not wanted any more, and its state is told when the user closes it.
/// Without a window they are windows of their own. Main thread.
class SheetHost final : public QObject {
  Q_OBJECT

 public:
  /// A kind of sheet.
  struct Sheet {
    std::function<bool()> isWanted;
    std::function<void()> dismissed;  ///< makes it not wanted
    std::function<QDialog*(QWidget* window)>
        make;  ///< a child of the window, if any; empty where there is no such sheet
  };

  /// The window must outlive it.
  explicit SheetHost(QWidget& window);
  /// Of no window: each sheet is one of its own. They end with it.
  explicit SheetHost(QObject* parent);
  ~SheetHost() override;

  /// Those added first open first. A sheet that cannot be made is dismissed as soon as it is wanted.
  void add(Sheet sheet);

  /// To be called when what `isWanted` looks at may have changed.
  void look();

  /// The sheet that is up; null when none is.
  [[nodiscard]] QDialog* shown() const { return dialog_; }

 Q_SIGNALS:
  /// A sheet is up from now on.
  void opened();

 private:
  void open(std::size_t index);
  void end();

  QWidget* window_ = nullptr;
  std::vector<Sheet> sheets_;
  QPointer<QDialog> dialog_;
  std::size_t index_ = 0;  ///< of the dialog's sheet
};

}  // namespace Nimbrel
