#include "Linux/Images/QuietLibraries.h"

#include <QLoggingCategory>

#include <dlfcn.h>

#include <atomic>
#include <string_view>

namespace Nimbrel::Images {

namespace {

std::atomic<QLoggingCategory::CategoryFilter> formerFilter = nullptr;

void withoutComplaints(QLoggingCategory* category) {
  if (const auto former = formerFilter.load()) former(category);
  const std::string_view name(category->categoryName());
  if (name == "qt.gui.icc" || name.starts_with("qt.gui.imageio")) category->setEnabled(QtWarningMsg, false);
}

/// The plugin for TIFF leaves the handlers of the library at those that print. They belong to the process, and the name
/// finds the copy that the plugin uses.
void quietTiff() {
  using SetHandler = void* (*)(void*);
  auto* library = ::dlopen("libtiff.so.6", RTLD_LAZY);
  if (!library) return;
  for (const auto* name : {"TIFFSetErrorHandler", "TIFFSetWarningHandler"}) {
    if (const auto setHandler = reinterpret_cast<SetHandler>(::dlsym(library, name))) setHandler(nullptr);
  }
}

}  // namespace

void quietLibraries() {
  [[maybe_unused]] static const bool done = [] {
    formerFilter = QLoggingCategory::installFilter(withoutComplaints);
    quietTiff();
    return true;
  }();
}

}  // namespace Nimbrel::Images
