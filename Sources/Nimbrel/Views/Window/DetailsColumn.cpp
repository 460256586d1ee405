#include "Views/Window/DetailsColumn.h"

#include "Views/Shared/Placeholder.h"
#include "Views/Window/Surface.h"

namespace Nimbrel {

DetailsColumn::DetailsColumn(Store& store, const WindowParts& parts, EditorTarget& editor, QWidget* parent)
    : QStackedWidget(parent),
      store_(store),
      inspector_(addPage(parts.inspector, editor)),
      several_(addPage(parts.severalSelected, editor)),
      nothing_(new Placeholder(QStringLiteral("square.dashed"), QStringLiteral("No Selection"),
                               QStringLiteral("Pick a shot to see its details."), Placeholder::Size::Small, this)) {
  setObjectName(QStringLiteral("details"));
  setAccessibleName(QStringLiteral("Details"));
  nothing_->setObjectName(QStringLiteral("details.nothing"));
  addWidget(nothing_);
  setSurface(*this, Token::Window);
  choosing_.setSingleShot(true);
  connect(&choosing_, &QTimer::timeout, this, &DetailsColumn::choose);
  connect(&store, &Store::selectionChanged, this, [this] { choosing_.start(); });
  connect(&store, &Store::shotsChanged, this, [this] { choosing_.start(); });
  choose();
}

QWidget* DetailsColumn::addPage(const WindowParts::Column& make, EditorTarget& editor) {
  auto* page = make ? make(this, editor) : new QWidget(this);
  addWidget(page);
  return page;
}

void DetailsColumn::choose() {
  if (store_.focused()) return setCurrentWidget(inspector_);
  setCurrentWidget(store_.selection().size() >= 2 ? several_ : nothing_);
}

}  // namespace Nimbrel
