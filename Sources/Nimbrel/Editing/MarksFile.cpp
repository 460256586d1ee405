#include "Editing/MarksFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <limits>
#include <string>
#include <utility>

namespace Nimbrel {

namespace {

/// An error is to fit into a line of a terminal, however long a wrong text is.
constexpr qsizetype mostQuoted = 40;

Error wrong(const QString& member, std::string_view demand) {
  return Error{"\"" + member.toStdString() + "\" " + std::string(demand)};
}

Result<Annotation::Kind> kindIn(const QJsonObject& object) {
  const auto member = QStringLiteral("kind");
  if (!object.value(member).isString()) return wrong(member, "must be the name of a kind");
  const auto name = object.value(member).toString();
  const auto kind = annotationKind(name.toStdString());
  if (!kind) return wrong(member, "is unknown: " + name.left(mostQuoted).toStdString());
  return *kind;
}

Result<QPointF> pointIn(const QJsonObject& object, const QString& member) {
  const auto list = object.value(member).toArray();
  if (list.size() != 2 || !list.at(0).isDouble() || !list.at(1).isDouble()) {
    return wrong(member, "must be a list of two numbers");
  }
  // Finite: the parser refuses what no double can hold.
  return QPointF(list.at(0).toDouble(), list.at(1).toDouble());
}

Result<int> numberIn(const QJsonObject& object, const QString& member) {
  if (!object.contains(member)) return 0;
  const auto value = object.value(member);
  if (!value.isDouble() || std::trunc(value.toDouble()) != value.toDouble()) {
    return wrong(member, "must be a whole number");
  }
  const double number = value.toDouble();
  if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
    return wrong(member, "is out of range");
  }
  return static_cast<int>(number);
}

Result<std::string> textIn(const QJsonObject& object, const QString& member) {
  if (!object.contains(member)) return std::string();
  if (!object.value(member).isString()) return wrong(member, "must be a text");
  return object.value(member).toString().toStdString();
}

Result<QPointF> endIn(const QJsonObject& object, Annotation::Kind kind, QPointF start) {
  const auto member = QStringLiteral("end");
  if (!object.contains(member) && liesAtOnePoint(kind)) return start;
  return pointIn(object, member);
}

Result<Annotation> markFrom(const QJsonValue& value) {
  if (!value.isObject()) return Error{"must be an object"};
  const auto object = value.toObject();
  const auto kind = kindIn(object);
  if (!kind) return kind.error();
  const auto start = pointIn(object, QStringLiteral("start"));
  if (!start) return start.error();
  const auto end = endIn(object, kind.value(), start.value());
  if (!end) return end.error();
  const auto colorIndex = numberIn(object, QStringLiteral("colorIndex"));
  if (!colorIndex) return colorIndex.error();
  const auto number = numberIn(object, QStringLiteral("number"));
  if (!number) return number.error();
  auto text = textIn(object, QStringLiteral("text"));
  if (!text) return text.error();
  return Annotation{.kind = kind.value(),
                    .start = start.value(),
                    .end = end.value(),
                    .colorIndex = colorIndex.value(),
                    .number = number.value(),
                    .text = std::move(text).value()};
}

}  // namespace

Result<std::vector<Annotation>> marksFromJSON(std::string_view json) {
  QJsonParseError failure;
  const auto document =
      QJsonDocument::fromJson(QByteArray::fromRawData(json.data(), static_cast<qsizetype>(json.size())), &failure);
  if (failure.error != QJsonParseError::NoError) {
    return Error{"the marks are no JSON: " + failure.errorString().toStdString() + " at byte " +
                 std::to_string(failure.offset)};
  }
  if (!document.isArray()) return Error{"the marks must be a list"};
  std::vector<Annotation> marks;
  for (const auto& value : document.array()) {
    auto mark = markFrom(value);
    if (!mark) return Error{"marks[" + std::to_string(marks.size()) + "]: " + mark.error().message};
    marks.push_back(std::move(mark).value());
  }
  return marks;
}

}  // namespace Nimbrel
