#include "Linux/Desktop/GnomeScreenshotSettings.h"

#include <gio/gio.h>

#include <memory>

namespace Nimbrel {

namespace {

template <auto release>
struct Release {
  template <class Thing>
  void operator()(Thing* thing) const {
    release(thing);
  }
};

using Schema = std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>>;
using Settings = std::unique_ptr<GSettings, Release<g_object_unref>>;
using Value = std::unique_ptr<GVariant, Release<g_variant_unref>>;
using Text = std::unique_ptr<char, Release<g_free>>;

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
  const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
  const Value value(g_settings_get_user_value(settings.get(), keyName));
  if (!value || g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING) == FALSE) return std::nullopt;
  return std::string(g_variant_get_string(value.get(), nullptr));
}

std::optional<std::string> pathFromFileUri(const std::string& uri) {
  const Text path(g_filename_from_uri(uri.c_str(), nullptr, nullptr));
  if (!path) return std::nullopt;
  return std::string(path.get());
}

}  // namespace Nimbrel
