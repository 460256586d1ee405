#pragma once

#include "Catalogue/PreferenceCodec.h"
#include "Platform/Defaults.h"

#include <QJsonValue>
#include <QString>

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Nimbrel {

class AnyPreference;

/// What the settings of one object share: the suite they are stored in, who hears of changes, and the list of them all
/// in the order in which they were made. Main thread only.
struct PreferenceGroup {
  Defaults& defaults;
  std::function<void(const QString& key)> onChange;
  std::vector<AnyPreference*> members = {};
};

/// One setting under its key, whatever its type: what a list of all settings works with. Main thread only.
class AnyPreference {
 public:
  /// Enters itself into the group, which must outlive it.
  AnyPreference(PreferenceGroup& group, QStringView key) : group_(group), key_(key.toString()) {
    group.members.push_back(this);
  }
  virtual ~AnyPreference() = default;
  AnyPreference(const AnyPreference&) = delete;
  AnyPreference& operator=(const AnyPreference&) = delete;

  [[nodiscard]] const QString& key() const { return key_; }

  /// The value in its form for people and scripts.
  [[nodiscard]] virtual QJsonValue toJson() const = 0;
  enum class Assignment { Stored, NotStored, WrongType };
  /// Sets the value from that form. One of the wrong type changes nothing; one that could not be written to disk holds
  /// for the life of the process.
  [[nodiscard]] virtual Assignment setFromJson(const QJsonValue& json) = 0;
  /// Whether scripts may give the value as plain text.
  [[nodiscard]] virtual bool isText() const = 0;
  /// Takes over what another process has stored. Returns whether the value is now another.
  virtual bool refresh() = 0;

 protected:
  [[nodiscard]] QJsonValue stored() const { return group_.defaults.value(key_); }
  bool store(const QJsonValue& value) {
    return value.isUndefined() ? group_.defaults.remove(key_) : group_.defaults.set(key_, value);
  }
  void tellChanged() const { group_.onChange(key_); }

 private:
  PreferenceGroup& group_;
  QString key_;
};

/// A setting of type T. It is loaded when it is made: `fallback` stands in for a missing key or a value of the wrong
/// type, and `onLoad` brings what was loaded into its range.
template <class T>
class Preference final : public AnyPreference {
 public:
  Preference(PreferenceGroup& group, QStringView key, T fallback = T(), T (*onLoad)(T) = nullptr)
      : AnyPreference(group, key),
        fallback_([fallback = std::move(fallback)] { return fallback; }),
        value_(onLoad == nullptr ? read() : onLoad(read())) {}

  /// With a fallback that may be another each time.
  Preference(PreferenceGroup& group, QStringView key, std::function<T()> fallback)
      : AnyPreference(group, key), fallback_(std::move(fallback)), value_(read()) {}

  [[nodiscard]] const T& operator()() const { return value_; }

  /// Stores the value at once, as it is: ranges apply only when loading. Tells when it is another than before. Returns
  /// whether it is on disk.
  bool set(T value) {
    const bool changed = value != value_;
    value_ = std::move(value);
    const bool isStored = store(PreferenceCodec<T>::encode(value_));
    if (changed) tellChanged();
    return isStored;
  }

  bool refresh() override { return adopt(read()); }

  /// The same, unless what is stored does not pass the test.
  bool refreshIf(bool (*isValid)(const T&)) {
    T stored = read();
    return isValid(stored) && adopt(std::move(stored));
  }

  [[nodiscard]] QJsonValue toJson() const override {
    if constexpr (requires { PreferenceCodec<T>::toJson(value_); }) {
      return PreferenceCodec<T>::toJson(value_);
    } else {
      return PreferenceCodec<T>::encode(value_);
    }
  }

  [[nodiscard]] Assignment setFromJson(const QJsonValue& json) override {
    std::optional<T> value;
    if constexpr (requires { PreferenceCodec<T>::fromJson(json); }) {
      value = PreferenceCodec<T>::fromJson(json);
    } else {
      value = PreferenceCodec<T>::decode(json);
    }
    if (!value) return Assignment::WrongType;
    return set(std::move(*value)) ? Assignment::Stored : Assignment::NotStored;
  }

  [[nodiscard]] bool isText() const override {
    return std::is_same_v<T, std::string> || std::is_same_v<T, std::optional<std::string>> || std::is_enum_v<T>;
  }

 private:
  [[nodiscard]] T read() const {
    auto decoded = PreferenceCodec<T>::decode(stored());
    return decoded ? std::move(*decoded) : fallback_();
  }

  bool adopt(T value) {
    if (value == value_) return false;
    set(std::move(value));
    return true;
  }

  std::function<T()> fallback_;
  T value_;
};

}  // namespace Nimbrel
