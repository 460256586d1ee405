#include "CommandTable.h"

#include "Analysis/Sensitive.h"

#include <QJsonArray>
#include <QJsonObject>

#include <iostream>
#include <iterator>

namespace Nimbrel::Ctl {

Outcome runDetect(const CommandLine&, Session&) {
  const std::string input{std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
  QJsonArray kinds;
  QJsonArray matches;
  std::string text;
  for (const auto& kind : Sensitive::kindsIn(input)) {
    kinds.append(jsonString(kind));
    text += "sensitive: " + kind + "\n";
  }
  for (const auto& match : Sensitive::matchesIn(input)) {
    matches.append(jsonString(match));
    text += "match: " + match + "\n";
  }
  return Outcome::done(QJsonObject{{QStringLiteral("sensitive"), kinds}, {QStringLiteral("matches"), matches}}, text);
}

}  // namespace Nimbrel::Ctl
