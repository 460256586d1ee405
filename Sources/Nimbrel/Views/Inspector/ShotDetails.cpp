#include "Views/Inspector/ShotDetails.h"

#include "Foundation/Formats.h"
#include "Foundation/Text.h"

#include <QString>
#include <QUrl>

namespace Nimbrel {

namespace {

constexpr std::size_t mostItems = 8;

}  // namespace

std::string sensitiveWarning(const Shot& shot) {
  std::string labels;
  for (const auto& label : shot.sensitive) labels += (labels.empty() ? "" : ", ") + label;
  return "Looks like it contains " + Text::lowered(labels);
}

std::string sourceTitle(const ContentGroup& group) {
  return group.kind == ContentGroup::Kind::app ? group.title : "Unrecognized application";
}

std::string sizeText(const Shot& shot) {
  auto text = shot.pixels().value_or("");
  if (shot.bytes > 0) text += (text.empty() ? "" : " · ") + Formats::byteCount(shot.bytes);
  return text;
}

std::string_view placeText(const Shot& shot) { return shot.filed ? "Library" : "Inbox"; }

std::vector<DetectedItem> foundItems(std::string_view text, Timestamp now) {
  auto items = Detected::items(text, now);
  if (items.size() > mostItems) items.resize(mostItems);
  return items;
}

std::string_view symbol(DetectedItem::Kind kind) {
  switch (kind) {
    case DetectedItem::Kind::link:
      return "link";
    case DetectedItem::Kind::email:
      return "envelope";
    case DetectedItem::Kind::phone:
      return "phone";
    case DetectedItem::Kind::address:
      return "map";
    case DetectedItem::Kind::date:
      return "calendar";
  }
  return {};
}

std::optional<std::string> addressIn(const std::string& code) {
  const QUrl address(QString::fromStdString(code), QUrl::StrictMode);
  return address.isValid() && !address.scheme().isEmpty() ? std::optional(code) : std::nullopt;
}

}  // namespace Nimbrel
