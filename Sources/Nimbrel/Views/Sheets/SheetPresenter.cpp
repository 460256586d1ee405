#include "Views/Sheets/SheetPresenter.h"

#include "Store/Store.h"
#include "Views/Sheets/CleanupSuggestionsView.h"
#include "Views/Sheets/DuplicatesView.h"
#include "Views/Sheets/PurgeView.h"
#include "Views/Sheets/ShrinkView.h"

#include <memory>

namespace Nimbrel {

SheetPresenter::SheetPresenter(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget& window)
    : QObject(&window), store_(store) {
  auto* over = &window;
  follow({&Store::showPurge, &Store::setShowPurge, &Store::showPurgeChanged,
          [this, over] { return new PurgeView(store_, over); }});
  follow({&Store::showCleanup, &Store::setShowCleanup, &Store::showCleanupChanged,
          [this, over] { return new CleanupSuggestionsView(store_, over); }});
  follow({&Store::showShrink, &Store::setShowShrink, &Store::showShrinkChanged,
          [this, over] { return new ShrinkView(store_, over); }});
  follow({&Store::showDuplicates, &Store::setShowDuplicates, &Store::showDuplicatesChanged,
          [this, over, &thumbs, &previews] { return new DuplicatesView(store_, thumbs, previews, over); }});
}

void SheetPresenter::follow(const Kind& kind) {
  const auto sheet = std::make_shared<QPointer<QDialog>>();
  const auto update = [this, kind, sheet] {
    const bool isShown = (store_.*kind.isShown)();
    if (isShown == !sheet->isNull()) return;
    if (!isShown) return (*sheet)->reject();
    *sheet = kind.make();
    connect(*sheet, &QDialog::finished, this, [this, kind, sheet] {
      sheet->clear();
      (store_.*kind.setShown)(false);
    });
    (*sheet)->open();
  };
  connect(&store_, kind.changed, this, update);
  update();
}

}  // namespace Nimbrel
