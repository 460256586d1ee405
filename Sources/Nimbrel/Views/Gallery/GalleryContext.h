#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/GalleryShots.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Shared/AppIcons.h"

namespace Nimbrel {

/// What the parts of the gallery work with. All of it is borrowed and outlives them.
struct GalleryContext {
  Store& store;
  AppIcons& icons;
  ThumbCache& thumbs;
  GalleryPreviewCache& previews;
  ThumbLoader& loader;
  GalleryShots& shots;
  GalleryActions& actions;
};

}  // namespace Nimbrel
