#pragma once

#include <string>
#include <utility>
#include <variant>

namespace Nimbrel {

/// Why an operation failed, in words fit for the status line or for standard error.
struct Error {
  std::string message;

  bool operator==(const Error&) const = default;
};

/// A value, or the error that stood in its way. Operations whose caller can act on a failure return it;
/// those that can only fail in one way return a fallback instead.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
  Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

  [[nodiscard]] bool hasValue() const { return state_.index() == 0; }
  explicit operator bool() const { return hasValue(); }

  /// Only when hasValue(); otherwise std::bad_variant_access.
  [[nodiscard]] T& value() & { return std::get<0>(state_); }
  [[nodiscard]] const T& value() const& { return std::get<0>(state_); }
  [[nodiscard]] T&& value() && { return std::get<0>(std::move(state_)); }

  /// Only when not hasValue(); otherwise std::bad_variant_access.
  [[nodiscard]] const Error& error() const { return std::get<1>(state_); }

 private:
  std::variant<T, Error> state_;
};

}  // namespace Nimbrel
