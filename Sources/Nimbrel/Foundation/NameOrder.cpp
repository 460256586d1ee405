#include "Foundation/NameOrder.h"

#include "Foundation/Text.h"
#include "Foundation/UserLocale.h"
#include "Foundation/Utf8.h"

#include <unicode/coll.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::NameOrder {

namespace {

std::unique_ptr<const icu::Collator> makeCollator() {
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(UserLocale::forComparison(), status));
  if (U_FAILURE(status)) return nullptr;
  collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
  // Some locales pass over blanks and dashes, or order by case first; a list of files must not.
  collator->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, status);
  collator->setAttribute(UCOL_CASE_FIRST, UCOL_OFF, status);
  collator->setAttribute(UCOL_STRENGTH, UCOL_TERTIARY, status);
  return collator;
}

/// Null when the library has no data to compare by; bytes are compared then.
const icu::Collator* collator() {
  thread_local const auto instance = makeCollator();
  return instance.get();
}

icu::StringPiece piece(std::string_view text) { return {text.data(), static_cast<std::int32_t>(text.size())}; }

/// Turkish and Azerbaijani have two letters i, each with its own upper case.
bool hasTwoLettersI() {
  thread_local const bool has = [] {
    const std::string language = UserLocale::forComparison().getLanguage();
    return language == "tr" || language == "az";
  }();
  return has;
}

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

icu::UnicodeString foldedCharacters(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* composing = icu::Normalizer2::getNFCInstance(status);
  auto characters = icu::UnicodeString::fromUTF8(piece(text));
  if (U_FAILURE(status)) return characters.foldCase();
  characters = composing->normalize(characters, status);
  characters.foldCase(hasTwoLettersI() ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
  // Once more: what a letter folds to may come in pieces.
  return composing->normalize(characters, status);
}

std::string folded(std::string_view text) {
  if (!hasTwoLettersI() && isAscii(text)) return Text::asciiLowered(text);
  std::string bytes;
  foldedCharacters(text).toUTF8String(bytes);
  return bytes;
}

/// Whether a character ends before this text, so that no mark of it follows.
bool endsBefore(std::string_view text) {
  return text.empty() || u_getCombiningClass(static_cast<UChar32>(Utf8::first(text).code)) == 0;
}

}  // namespace

int compare(std::string_view a, std::string_view b) {
  if (collator() == nullptr) return a.compare(b);
  UErrorCode status = U_ZERO_ERROR;
  return collator()->compareUTF8(piece(a), piece(b), status);
}

std::string sortKey(std::string_view name) {
  if (collator() == nullptr) return std::string(name);
  const auto characters = icu::UnicodeString::fromUTF8(piece(name));
  // Long enough for most; without the zero at its end the key is what is kept.
  std::array<std::uint8_t, 256> buffer{};
  const auto length = collator()->getSortKey(characters, buffer.data(), static_cast<std::int32_t>(buffer.size()));
  if (length <= 0) return {};
  if (static_cast<std::size_t>(length) <= buffer.size()) return {buffer.begin(), buffer.begin() + length - 1};
  std::vector<std::uint8_t> longKey(static_cast<std::size_t>(length));
  collator()->getSortKey(characters, longKey.data(), length);
  return {longKey.begin(), longKey.end() - 1};
}

bool containsIgnoringCase(std::string_view text, std::string_view words) {
  return FoldedText(text).contains(FoldedText(words));
}

FoldedText::FoldedText(std::string_view text) : folded_(folded(text)) {}

bool FoldedText::contains(const FoldedText& words) const {
  const std::string_view where = folded_;
  const std::string_view what = words.folded_;
  if (what.empty()) return false;
  for (auto hit = where.find(what); hit != std::string_view::npos; hit = where.find(what, hit + 1)) {
    if (endsBefore(where.substr(hit + what.size()))) return true;
  }
  return false;
}

}  // namespace Nimbrel::NameOrder
