#include "Linux/Desktop/LinuxScreenshotTool.h"

#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Linux/Desktop/GnomeScreenshotSettings.h"
#include "Linux/Desktop/ToolConfiguration.h"
#include "Platform/UserFolders.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>

#include <array>
#include <cstdlib>
#include <string_view>

namespace Nimbrel {

namespace {

using Folder = std::optional<std::string>;

Folder gnome(const std::string&) { return gnomeScreenshotFolder(); }

Folder kde(const std::string& configurations) {
  const ToolConfiguration file(FilePath::join(configurations, "spectaclerc"));
  const auto folder = file.value("ImageSave", "imageSaveLocation").value_or("");
  return folder.empty() ? file.value("Save", "defaultSaveLocation") : folder;
}

Folder xfce(const std::string& configurations) {
  return ToolConfiguration(FilePath::join(configurations, "xfce4/xfce4-screenshooter"))
      .value("Default", "screenshot_dir");
}

/// The desktop has no tool of its own; this is the one that its distributions bring along. It writes as QSettings does.
Folder lxqt(const std::string& configurations) {
  const auto path = QFile::decodeName(FilePath::join(configurations, "flameshot/flameshot.ini").c_str());
  if (!QFileInfo(path).isFile()) return std::nullopt;
  const QSettings file(path, QSettings::IniFormat);
  return QFile::encodeName(file.value(QStringLiteral("savePath")).toString()).toStdString();
}

struct Desktop {
  std::string_view name;
  Folder (*folder)(const std::string& configurations);
};

constexpr std::array<Desktop, 8> desktops{{
    {"GNOME", gnome},
    {"Unity", gnome},
    {"Budgie", gnome},
    {"X-Cinnamon", gnome},
    {"Pantheon", gnome},
    {"KDE", kde},
    {"XFCE", xfce},
    {"LXQt", lxqt},
}};

/// What a tool has stored, as a path; absent when it is no place that can be found again.
Folder usablePath(const Folder& stored) {
  if (!stored) return std::nullopt;
  const auto path = stored->starts_with("file:") ? pathFromFileUri(*stored) : stored;
  const bool isUsable = path && (path->starts_with('/') || path == "~" || path->starts_with("~/"));
  return isUsable ? Folder(FilePath::withoutTrailingSlashes(*path)) : std::nullopt;
}

class LinuxScreenshotTool final : public ScreenshotTool {
 public:
  [[nodiscard]] std::optional<std::string> configuredFolder() const override {
    const char* current = std::getenv("XDG_CURRENT_DESKTOP");
    const auto folders = UserFolders::ofCurrentUser();
    if (current == nullptr || !folders) return std::nullopt;
    const std::string configurations(FilePath::folder(folders->preferences));
    for (const auto& name : Text::split(current, ':', Text::EmptyPieces::Drop)) {
      for (const auto& desktop : desktops) {
        if (desktop.name != name) continue;
        if (auto folder = usablePath(desktop.folder(configurations))) return folder;
      }
    }
    return std::nullopt;
  }
};

}  // namespace

std::unique_ptr<ScreenshotTool> makeLinuxScreenshotTool() { return std::make_unique<LinuxScreenshotTool>(); }

}  // namespace Nimbrel
