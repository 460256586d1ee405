#pragma once

#include "Store/Store.h"
#include "Views/Gallery/SharedShots.h"

#include <QObject>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// What the gallery shows, worked out once for each change of the store however many of its facts changed, and shared
/// by the parts of the gallery. Main thread.
class GalleryShots final : public QObject {
  Q_OBJECT

 public:
  /// Why the shots are others.
  enum class Cause {
    Reload,  ///< the same choice, of shots that changed
    Choice,  ///< the user looks at something else: another filter or search
  };

  /// So many shots under one title, which may be empty.
  struct Section {
    std::string title;
    std::size_t count = 0;
  };

  /// The store is borrowed and must outlive the object.
  explicit GalleryShots(Store& store, QObject* parent = nullptr);

  /// As of now, also before changed() tells. Valid until the next turn of the event loop.
  [[nodiscard]] const std::vector<Section>& sections();
  /// The shots of all sections in turn.
  [[nodiscard]] const SharedShots& ordered();

 Q_SIGNALS:
  /// In a later turn of the event loop than the change itself.
  void changed(Nimbrel::GalleryShots::Cause cause);

 private:
  void note(Cause cause);
  void workOut();

  Store& store_;
  std::optional<Cause> untold_;
  bool isCurrent_ = false;
  std::vector<Section> sections_;
  SharedShots ordered_;
};

}  // namespace Nimbrel
