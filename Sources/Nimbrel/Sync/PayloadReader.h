#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>

namespace Nimbrel {

/// Reads JSON (RFC 8259, UTF-8) piece by piece from the front, where it stands: a text with escapes is unescaped in
/// place, so nothing is copied. The general readers at hand build the whole document, which for a picture in base64
/// takes several times the memory of the picture, and hand texts out as UTF-16, which is twice as much again.
///
/// Made for hostile bytes: it never reads beyond them, and nesting is limited. After anything that returns false or is
/// absent, the bytes are not the JSON asked for, and nothing more is to be read. The bytes are borrowed.
class PayloadReader {
 public:
  explicit PayloadReader(std::span<char> bytes) : bytes_(bytes) {}

  /// Asked for the value of each member of an object, in turn; reads it, and returns whether that worked.
  using Member = std::function<bool(std::string_view key)>;
  /// An object, all of it.
  [[nodiscard]] bool object(const Member& member);
  /// A text; a view into the bytes, which stays as it is.
  [[nodiscard]] std::optional<std::string_view> string();
  /// A text in base64 that is written without escapes, likewise, and faster; of any other value nothing is taken, so
  /// that it can be read as what it is.
  [[nodiscard]] std::optional<std::string_view> plainBase64();
  /// A number that a double can hold.
  [[nodiscard]] std::optional<double> number();
  /// Any value. Objects and lists may stand in one another up to 512 deep.
  [[nodiscard]] bool skip();

  /// Whether nothing but white space is left.
  [[nodiscard]] bool isAtEnd();

 private:
  [[nodiscard]] std::string_view rest() const;
  void skipSpace();
  bool take(char character);
  bool takeWord(std::string_view word);
  bool takeDigits();
  std::optional<std::string_view> numberText();
  std::optional<std::string_view> unescaped(std::size_t quote);
  std::size_t unescape(std::size_t end);
  std::optional<char32_t> codeUnit();
  bool list();

  std::span<char> bytes_;
  std::size_t position_ = 0;
  int depth_ = 0;
};

}  // namespace Nimbrel
