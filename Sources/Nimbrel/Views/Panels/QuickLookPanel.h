#pragma once

#include "Views/Gallery/DecodeQueue.h"

#include <QImage>
#include <QLabel>
#include <QStackedWidget>
#include <QToolButton>
#include <QWidget>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

class BusyRing;
class ElidedLabel;
class PictureView;
class Placeholder;

/// A window that shows the files of a list large, one at a time. Pictures are read in a thread of their own, and only
/// the one that is shown is kept. Whoever shows shots asks for access to all of them first.
class QuickLookPanel final : public QWidget {
  Q_OBJECT

 public:
  /// Null when a file is no picture; called in another thread.
  using Decoder = std::function<QImage(const std::string& path)>;

  explicit QuickLookPanel(QWidget* parent = nullptr);
  QuickLookPanel(Decoder decoder, QWidget* parent);
  ~QuickLookPanel() override;

  /// Shows the files, from the one at `start` or the nearest there is. The same list again, while it is shown, closes
  /// the panel; an empty one does nothing.
  void showFiles(const std::vector<std::string>& paths, std::size_t start);
  /// Closes it and forgets what it showed.
  void dismiss();

  [[nodiscard]] const std::vector<std::string>& files() const { return paths_; }
  [[nodiscard]] std::size_t current() const { return current_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void setUp();
  QToolButton* addButton(const QString& symbol, const QString& title, const QString& name);
  void step(int by);
  void showCurrent();
  void take(const std::string& path, const QImage& picture);
  void putAway();

  std::vector<std::string> paths_;
  std::size_t current_ = 0;

  QWidget* bar_;
  ElidedLabel* name_;
  QLabel* place_;
  BusyRing* ring_;
  QToolButton* previous_ = nullptr;
  QToolButton* next_ = nullptr;
  QStackedWidget* stage_;
  PictureView* view_;
  Placeholder* placeholder_;
  DecodeQueue<QImage> queue_;
};

}  // namespace Nimbrel
