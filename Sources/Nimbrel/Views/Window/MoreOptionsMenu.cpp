#include "Views/Window/MoreOptionsMenu.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Symbols.h"

#include <algorithm>
#include <iterator>

namespace Nimbrel {

MoreOptionsMenu::MoreOptionsMenu(Store& store, QWidget* parent)
    : QMenu(parent),
      store_(store),
      file_(addAction(Symbols::icon(QStringLiteral("tray.and.arrow.down")), QString())),
      trash_(addAction(Symbols::icon(QStringLiteral("trash"), {.normal = Token::Danger}),
                       QStringLiteral("Move Selection to Trash"))) {
  setObjectName(QStringLiteral("moreOptions.menu"));
  setTitle(QStringLiteral("More Options"));
  file_->setObjectName(QStringLiteral("moreOptions.file"));
  trash_->setObjectName(QStringLiteral("moreOptions.trash"));
  setDestructive(*trash_);
  connect(file_, &QAction::triggered, this, &MoreOptionsMenu::file);
  connect(trash_, &QAction::triggered, this, [this] { store_.trash(store_.selectedShots()); });
  connect(this, &QMenu::aboutToShow, this, &MoreOptionsMenu::refresh);
  refresh();
}

void MoreOptionsMenu::refresh() {
  file_->setVisible(store_.inboxCount() >= 1);
  file_->setText(store_.selectedShots().empty() ? QStringLiteral("File All Inbox Screenshots")
                                                : QStringLiteral("File Selection to Library"));
  trash_->setEnabled(!store_.selection().empty());
}

void MoreOptionsMenu::file() {
  auto shots = store_.selectedShots();
  if (shots.empty()) {
    std::ranges::copy_if(store_.shots(), std::back_inserter(shots), [](const ShotPtr& shot) { return !shot->filed; });
  }
  store_.file(shots);
}

}  // namespace Nimbrel
