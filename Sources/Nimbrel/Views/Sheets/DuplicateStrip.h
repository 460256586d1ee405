#pragma once

#include "Model/Models.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"

#include <QImage>
#include <QLabel>
#include <QRect>
#include <QScrollArea>

#include <map>
#include <vector>

namespace Nimbrel {

class DuplicateButton;
class Store;

/// A group of shots that look the same, in a row that scrolls sideways, under a line that says how many they are. Has
/// buttons for what is seen alone, however large the group.
class DuplicateStrip final : public QWidget {
  Q_OBJECT

 public:
  /// Both are borrowed.
  DuplicateStrip(const Store& store, const ThumbCache& thumbs, QWidget* parent);

  /// A group of at least two, and which of it is to stay.
  void setGroup(const ShotList& group, const ShotPtr& keeper);
  /// What of it is protected has changed.
  void refresh();
  /// The pictures that are seen, from the left.
  [[nodiscard]] std::vector<ThumbLoader::Place> places() const;
  void showThumb(const std::string& path, const QImage& image);

  /// The height of all strips.
  [[nodiscard]] static int stripHeight();

 Q_SIGNALS:
  void chosen(const ShotPtr& shot);
  /// Others are seen than before.
  void placesChanged();

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();
  void removeUnseen(int first, int last);
  DuplicateButton* makeButton(int index);
  [[nodiscard]] QRect placeOf(int index) const;
  void showState(DuplicateButton& button);
  void focusShot(int index);

  const Store& store_;
  const ThumbCache& thumbs_;
  ShotList group_;
  ShotPtr keeper_;
  QLabel* caption_;
  QScrollArea* area_;
  QWidget* row_;
  std::map<int, DuplicateButton*> buttons_;  ///< by their place in the group
};

}  // namespace Nimbrel
