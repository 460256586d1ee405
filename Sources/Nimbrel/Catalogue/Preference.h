#pragma once

#include "Catalogue/PreferenceCodec.h"
#include "Platform/Defaults.h"

#include <QJsonValue>
#include <QString>

#include <functional>
#include <utility>

namespace Nimbrel {

/// One setting under its key, whatever its type: what a list of all settings works with. Main thread only.
class AnyPreference {
 public:
  AnyPreference(Defaults& defaults, QString key, std::function<void(const QString& key)> onChange)
      : defaults_(defaults), key_(std::move(key)), onChange_(std::move(onChange)) {}
  virtual ~AnyPreference() = default;
  AnyPreference(const AnyPreference&) = delete;
  AnyPreference& operator=(const AnyPreference&) = delete;

  [[nodiscard]] const QString& key() const { return key_; }

  /// The value in its form for people and scripts.
  [[nodiscard]] virtual QJsonValue toJson() const = 0;
  /// Sets the value from that form; false, and nothing is set, when it has the wrong type.
  [[nodiscard]] virtual bool setFromJson(const QJsonValue& json) = 0;
  /// Whether scripts may give the value as plain text.
  [[nodiscard]] virtual bool isText() const = 0;
  /// Takes over what another process has stored. Returns whether the value is now another.
  virtual bool refresh() = 0;

 protected:
  [[nodiscard]] QJsonValue stored() const { return defaults_.value(key_); }
  void store(const QJsonValue& value) {
    if (value.isUndefined()) {
      defaults_.remove(key_);
    } else {
      defaults_.set(key_, value);
    }
  }
  void tellChanged() const { onChange_(key_); }

 private:
  Defaults& defaults_;
  QString key_;
  std::function<void(const QString& key)> onChange_;
};

/// A setting of type T. It is loaded when it is made: `fallback` stands in for a missing key or a value of the wrong
/// type, and `onLoad` brings what was loaded into its range.
template <class T>
class Preference final : public AnyPreference {
 public:
  Preference(Defaults& defaults, QString key, std::function<void(const QString& key)> onChange, T fallback,
             T (*onLoad)(T) = nullptr)
      : AnyPreference(defaults, std::move(key), std::move(onChange)),
        fallback_(std::move(fallback)),
        value_(onLoad == nullptr ? read() : onLoad(read())) {}

  [[nodiscard]] const T& operator()() const { return value_; }

  /// Stores the value at once, as it is: ranges apply only when loading. Tells when it is another than before.
  void set(T value) {
    const bool changed = value != value_;
    value_ = std::move(value);
    store(PreferenceCodec<T>::encode(value_));
    if (changed) tellChanged();
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

  [[nodiscard]] bool setFromJson(const QJsonValue& json) override {
    std::optional<T> value;
    if constexpr (requires { PreferenceCodec<T>::fromJson(json); }) {
      value = PreferenceCodec<T>::fromJson(json);
    } else {
      value = PreferenceCodec<T>::decode(json);
    }
    if (!value) return false;
    set(std::move(*value));
    return true;
  }

  [[nodiscard]] bool isText() const override {
    return std::is_same_v<T, std::string> || std::is_same_v<T, std::optional<std::string>> || std::is_enum_v<T>;
  }

 private:
  [[nodiscard]] T read() const { return PreferenceCodec<T>::decode(stored()).value_or(fallback_); }

  bool adopt(T value) {
    if (value == value_) return false;
    set(std::move(value));
    return true;
  }

  T fallback_;
  T value_;
};

}  // namespace Nimbrel
