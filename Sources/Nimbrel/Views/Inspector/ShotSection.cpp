#include "Views/Inspector/ShotSection.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

constexpr int rowLinkHeight = 22;

}  // namespace

bool ShotSection::isInCatalogue() const {
  const auto row = store().database().shot(shot_->id);
  return row && row->added == shot_->added;
}

LinkButton* rowLink(const QString& text, const QString& objectName) {
  auto* link = new LinkButton(text);
  link->setObjectName(objectName);
  link->setFixedHeight(scaled(rowLinkHeight));
  return link;
}

}  // namespace Nimbrel
