#include "CommandTable.h"

#include "Analysis/Detected.h"
#include "Analysis/Sensitive.h"
#include "Foundation/Formats.h"
#include "Foundation/Text.h"

#include <QJsonArray>
#include <QJsonObject>

#include <chrono>
#include <iostream>
#include <iterator>

namespace Nimbrel::Ctl {

namespace {

QJsonObject jsonOf(const DetectedItem& item) {
  return {{QStringLiteral("kind"), jsonString(rawValue(item.kind))},
          {QStringLiteral("text"), jsonString(item.text)},
          {QStringLiteral("url"), item.url ? QJsonValue(jsonString(*item.url)) : QJsonValue()},
          {QStringLiteral("date"), item.date ? QJsonValue(secondsSince1970(*item.date)) : QJsonValue()}};
}

/// One line: the kind, the text and what is understood by it.
std::string lineOf(const DetectedItem& item) {
  auto line = Text::asciiLowered(rawValue(item.kind)) + ": " + printable(item.text);
  if (item.date) line += "  (" + Formats::date(*item.date, u"yyyy-MM-dd HH:mm") + ")";
  if (item.url && *item.url != item.text) line += "  (" + printable(*item.url) + ")";
  return line + "\n";
}

}  // namespace

Outcome runDetect(const CommandLine&, Session&) {
  const std::string input{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  QJsonArray items;
  std::string text;
  for (const auto& item : Detected::items(input, std::chrono::system_clock::now())) {
    items.append(jsonOf(item));
    text += lineOf(item);
  }
  const auto kinds = Sensitive::kindsIn(input);
  const auto matches = Sensitive::matchesIn(input);
  for (const auto& kind : kinds) text += "sensitive: " + kind + "\n";
  for (const auto& match : matches) text += "match: " + printable(match) + "\n";
  return Outcome::done(QJsonObject{{QStringLiteral("items"), items},
                                   {QStringLiteral("sensitive"), jsonList(kinds)},
                                   {QStringLiteral("matches"), jsonList(matches)}},
                       text);
}

}  // namespace Nimbrel::Ctl
