#include "Linux/Desktop/GnomeScreenshotSettings.h"

#include "Linux/Desktop/GLibHandles.h"

#include <gio/gio.h>

#include <memory>

namespace Nimbrel {

namespace {

using Schema = std::unique_ptr<GSettingsSchema, GLibRelease<g_settings_schema_unref>>;

constexpr const char* schemaName = "org.gnome.gnome-screenshot";
constexpr const char* keyName = "auto-save-directory";

/// GIO ends the process when asked for settings that are not installed, so all of this is looked up before.
Schema installedSchema() {
  GSettingsSchemaSource* source = g_settings_schema_source_get_default();
  if (source == nullptr) return nullptr;
  Schema schema(g_settings_schema_source_lookup(source, schemaName, TRUE));
  const bool isUsable = schema && g_settings_schema_get_path(schema.get()) != nullptr &&
                        g_settings_schema_has_key(schema.get(), keyName) != FALSE;
  return isUsable ? std::move(schema) : nullptr;
}

}  // namespace

std::optional<std::string> gnomeScreenshotFolder() {
  const auto schema = installedSchema();
  if (!schema) return std::nullopt;
  const GLibObject<GSettings> settings(g_settings_new_full(schema.get(), nullptr, nullptr));
  const GLibVariant value(g_settings_get_user_value(settings.get(), keyName));
  if (!value || g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING) == FALSE) return std::nullopt;
  return std::string(g_variant_get_string(value.get(), nullptr));
}

std::optional<std::string> pathFromFileUri(const std::string& uri) {
  const GLibText path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
  if (!path) return std::nullopt;
  return std::string(path.get());
}

}  // namespace Nimbrel
