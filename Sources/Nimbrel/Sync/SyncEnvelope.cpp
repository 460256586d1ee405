#include "Sync/SyncEnvelope.h"

#include "Sync/Base64Text.h"
#include "Sync/PayloadReader.h"

#include <array>
#include <charconv>
#include <cstdio>

namespace Nimbrel {

namespace {

constexpr Seconds referenceDate{978'307'200};

constexpr std::string_view pathKey = "relativePath";
constexpr std::string_view modifiedKey = "modified";
constexpr std::string_view dataKey = "data";

std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '"' || c == '\\') result += '\\';
    if (static_cast<unsigned char>(c) >= 0x20) {
      result += c;
      continue;
    }
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\u%04x", static_cast<unsigned>(c));
    result += code.data();
  }
  return result;
}

/// The shortest decimal that reads as the same number again.
std::string decimal(double number) {
  std::array<char, 400> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
  return {text.data(), end};
}

/// Whether there is a text; `data` is absent when that is no base64.
bool takeData(PayloadReader& reader, std::optional<std::string_view>& data) {
  data = reader.plainBase64();
  if (data) return true;
  const auto text = reader.string();
  if (text && isBase64(*text)) data = text;
  return text.has_value();
}

}  // namespace

Seconds sinceReferenceDate(Timestamp moment) { return moment.time_since_epoch() - referenceDate; }

Timestamp momentAfterReferenceDate(Seconds seconds) { return Timestamp(seconds + referenceDate); }

std::optional<SyncEnvelope> readEnvelope(std::span<char> payload) {
  std::optional<std::string_view> path;
  std::optional<double> modified;
  std::optional<std::string_view> data;
  PayloadReader reader(payload);
  const bool isObject = reader.object([&](std::string_view key) {
    if (key == pathKey) return (path = reader.string()).has_value();
    if (key == modifiedKey) return (modified = reader.number()).has_value();
    if (key == dataKey) return takeData(reader, data);
    return reader.skip();
  });
  if (!isObject || !reader.isAtEnd() || !path || !modified || !data) return std::nullopt;
  return SyncEnvelope{*path, Seconds(*modified), *data};
}

std::string envelopeStart(std::string_view relativePath, Seconds modified) {
  const auto key = [](std::string_view name) { return "\"" + std::string(name) + "\":"; };
  return "{" + key(pathKey) + "\"" + escaped(relativePath) + "\"," + key(modifiedKey) + decimal(modified.count()) +
         "," + key(dataKey) + "\"";
}

}  // namespace Nimbrel
