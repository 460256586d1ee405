// What stands in a vault file once it is opened. What our reader takes, another reader of JSON must understand alike.

#include "Platform/Base64.h"
#include "Sync/ConfinedFolder.h"
#include "Sync/SyncEnvelope.h"

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

void demand(bool condition) {
  if (!condition) std::abort();
}

void compare(const SyncEnvelope& envelope, const QByteArray& payload) {
  const auto object = QJsonDocument::fromJson(payload).object();
  // Numbers that no double can hold stop the other reader wherever they stand.
  if (object.isEmpty()) return;
  demand(object.value(QStringLiteral("relativePath")).toString().toStdString() == envelope.relativePath);
  demand(object.value(QStringLiteral("modified")).toDouble() == envelope.modified.count());
  demand(object.value(QStringLiteral("data")).toString().toStdString() == envelope.data);
}

void decode(std::string_view base64) {
  std::string room(base64.size() + 1, '\0');
  const auto length = Base64::decode(base64, room);
  const auto expected = QByteArray::fromBase64(QByteArray(base64.data(), static_cast<qsizetype>(base64.size())));
  demand(length.has_value() && room.substr(0, *length) == expected.toStdString());
}

void locate(std::string_view relativePath) {
  // One for a run remembers what it has seen.
  ConfinedFolder folder("/proc/self/fdinfo");
  const auto found = folder.location(relativePath);
  if (!found || !found.value()) return;
  const auto& place = *found.value();
  demand(place.starts_with(folder.path() + "/") && place.find("/../") == std::string::npos);
  demand(!place.ends_with("/..") && place.find('\0') == std::string::npos);
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  const QByteArray untouched(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  // In memory of exactly this size, so that a step beyond it is noticed.
  std::vector<char> payload(untouched.begin(), untouched.end());
  const auto envelope = readEnvelope(payload);
  if (!envelope) return 0;
  compare(*envelope, untouched);
  decode(envelope->data);
  locate(envelope->relativePath);
  auto written = envelopeStart(envelope->relativePath, envelope->modified) + std::string(envelope->data) +
                 std::string(envelopeEnd);
  const auto again = readEnvelope(written);
  demand(again && again->relativePath == envelope->relativePath && again->modified == envelope->modified &&
         again->data == envelope->data);
  return 0;
}
