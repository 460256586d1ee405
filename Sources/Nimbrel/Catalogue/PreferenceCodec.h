#pragma once

#include "Model/CaptureOptions.h"
#include "Model/ProductivityModels.h"

#include <QJsonValue>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Nimbrel {

enum class GalleryLayout { grid, gallery };
enum class GallerySort { newest, oldest, name };

/// The text by which a case is stored: its name.
[[nodiscard]] std::string_view rawValue(GalleryLayout layout);
[[nodiscard]] std::string_view rawValue(GallerySort sort);

/// The cases of an enumeration in their order.
template <class Enum>
inline constexpr std::array<Enum, 0> allCases{};
template <>
inline constexpr std::array allCases<GalleryLayout>{GalleryLayout::grid, GalleryLayout::gallery};
template <>
inline constexpr std::array allCases<GallerySort>{GallerySort::newest, GallerySort::oldest, GallerySort::name};
template <>
inline constexpr auto allCases<CaptureDestination> = allCaptureDestinations;

/// How values of type T stand in a settings suite. `decode` is empty for a value of another type: text is no number, a
/// number no flag; a whole number does where a fraction is stored. `encode` is undefined where the key is to be
/// removed. A type whose form for people and scripts differs from the stored one also has `toJson` and `fromJson`.
template <class T>
struct PreferenceCodec;

template <>
struct PreferenceCodec<bool> {
  static std::optional<bool> decode(const QJsonValue& stored);
  static QJsonValue encode(bool value) { return value; }
};

template <>
struct PreferenceCodec<int> {
  static std::optional<int> decode(const QJsonValue& stored);
  static QJsonValue encode(int value) { return value; }
};

template <>
struct PreferenceCodec<double> {
  static std::optional<double> decode(const QJsonValue& stored);
  static QJsonValue encode(double value) { return value; }
};

template <>
struct PreferenceCodec<std::string> {
  static std::optional<std::string> decode(const QJsonValue& stored);
  static QJsonValue encode(const std::string& value);
};

template <>
struct PreferenceCodec<std::vector<std::string>> {
  static std::optional<std::vector<std::string>> decode(const QJsonValue& stored);
  static QJsonValue encode(const std::vector<std::string>& value);
};

/// A text that may be absent: a missing key in the suite, null for scripts. An empty one is absent too.
template <>
struct PreferenceCodec<std::optional<std::string>> {
  using Value = std::optional<std::string>;
  static std::optional<Value> decode(const QJsonValue& stored);
  static QJsonValue encode(const Value& value);
  static std::optional<Value> fromJson(const QJsonValue& json);
  static QJsonValue toJson(const Value& value);
};

/// Rules are stored as the bytes of a JSON array and shown as the array.
template <>
struct PreferenceCodec<std::vector<AutomationRule>> {
  using Value = std::vector<AutomationRule>;
  static std::optional<Value> decode(const QJsonValue& stored);
  static QJsonValue encode(const Value& value);
  static std::optional<Value> fromJson(const QJsonValue& json);
  static QJsonValue toJson(const Value& value);
};

/// A stored text that names no case reads as the first one; to scripts it is an error.
template <class Enum>
requires std::is_enum_v<Enum>
struct PreferenceCodec<Enum> {
  static std::optional<Enum> decode(const QJsonValue& stored) {
    if (!stored.isString()) return std::nullopt;
    return named(stored).value_or(allCases<Enum>.front());
  }
  static QJsonValue encode(Enum value) {
    const auto name = rawValue(value);
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  }
  static std::optional<Enum> fromJson(const QJsonValue& json) { return named(json); }
  static QJsonValue toJson(Enum value) { return encode(value); }

 private:
  static std::optional<Enum> named(const QJsonValue& name) {
    for (const Enum value : allCases<Enum>) {
      if (encode(value) == name) return value;
    }
    return std::nullopt;
  }
};

}  // namespace Nimbrel
