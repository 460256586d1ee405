#include "Linux/Desktop/AppInfo.h"

namespace Nimbrel {

std::string textOf(const char* text) { return text == nullptr ? std::string() : std::string(text); }

std::string iconOf(GAppInfo* application) {
  GIcon* icon = g_app_info_get_icon(application);
  if (G_IS_FILE_ICON(icon)) return textOf(g_file_peek_path(g_file_icon_get_file(G_FILE_ICON(icon))));
  if (!G_IS_THEMED_ICON(icon)) return {};
  return textOf(*g_themed_icon_get_names(G_THEMED_ICON(icon)));
}

}  // namespace Nimbrel
