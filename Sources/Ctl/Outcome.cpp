#include "Outcome.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace Nimbrel::Ctl {

Outcome Outcome::done(QJsonValue json, std::string text) { return {Done, std::move(json), std::move(text), {}}; }

Outcome Outcome::failed(std::string reason) { return {Failed, QJsonValue::Undefined, {}, std::move(reason)}; }

Outcome Outcome::misused(std::string reason) { return {Misused, QJsonValue::Undefined, {}, std::move(reason)}; }

Outcome Outcome::changed(const std::string& status) {
  return done(QJsonObject{{QStringLiteral("status"), jsonString(status)}}, status.empty() ? status : status + "\n");
}

std::string jsonText(const QJsonValue& value) {
  // A document is an object or a list; a bare value is what stands between the brackets of a list.
  if (value.isObject()) return QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact).toStdString();
  const auto list = value.isArray() ? value.toArray() : QJsonArray{value};
  const auto text = QJsonDocument(list).toJson(QJsonDocument::Compact).toStdString();
  return value.isArray() ? text : text.substr(1, text.size() - 2);
}

QString jsonString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string printable(std::string_view text) {
  auto line = printableLines(text);
  std::ranges::replace(line, '\n', ' ');
  return line;
}

std::string printableLines(std::string_view text) {
  std::string lines(text);
  std::ranges::replace_if(
      lines, [](unsigned char c) { return (c < ' ' && c != '\n') || c == 0x7F; }, ' ');
  return lines;
}

QJsonArray jsonList(const std::vector<std::string>& texts) {
  QJsonArray list;
  for (const auto& text : texts) list.append(jsonString(text));
  return list;
}

}  // namespace Nimbrel::Ctl
