#include "Reader/Protocol.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <utility>

namespace Nimbrel::Reader {

namespace {

using Wanted = PictureReader::Wanted;

struct WantedName {
  Wanted wanted;
  const char16_t* name;
};

constexpr std::array wantedNames{
    WantedName{Wanted::Text, u"text"},
    WantedName{Wanted::Codes, u"codes"},
    WantedName{Wanted::TextAndCodes, u"both"},
};

QString nameOf(Wanted wanted) {
  for (const auto& entry : wantedNames) {
    if (entry.wanted == wanted) return QString::fromUtf16(entry.name);
  }
  return {};
}

std::optional<Wanted> wantedNamed(const QString& name) {
  for (const auto& entry : wantedNames) {
    if (name == QStringView(entry.name)) return entry.wanted;
  }
  return std::nullopt;
}

QJsonArray texts(const std::vector<std::string>& list) {
  QJsonArray array;
  for (const auto& text : list) array.append(QString::fromStdString(text));
  return array;
}

std::vector<std::string> texts(const QJsonValue& value) {
  std::vector<std::string> list;
  const auto array = value.toArray();
  for (const auto& text : array) list.push_back(text.toString().toStdString());
  return list;
}

QJsonArray encodedBlock(const TextBlock& block) {
  return {QString::fromStdString(block.text), block.rect.x(), block.rect.y(), block.rect.width(), block.rect.height()};
}

TextBlock decodedBlock(const QJsonArray& block) {
  return {
      .text = block.at(0).toString().toStdString(),
      .rect = QRectF(block.at(1).toDouble(), block.at(2).toDouble(), block.at(3).toDouble(), block.at(4).toDouble())};
}

std::string lineOf(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

QJsonObject objectIn(std::string_view line) {
  return QJsonDocument::fromJson(QByteArray(line.data(), static_cast<qsizetype>(line.size()))).object();
}

const auto pathKey = QStringLiteral("path");
const auto wantedKey = QStringLiteral("wanted");
const auto languagesKey = QStringLiteral("languages");
const auto blocksKey = QStringLiteral("blocks");
const auto unableKey = QStringLiteral("unable");
const auto codesKey = QStringLiteral("codes");

}  // namespace

std::string encoded(const Request& request) {
  const auto path = QByteArray::fromStdString(request.path).toBase64();
  return lineOf({{pathKey, QString::fromLatin1(path)},
                 {wantedKey, nameOf(request.wanted)},
                 {languagesKey, texts(request.languages)}});
}

std::string encoded(const Answer& answer) {
  if (!answer.reading) return lineOf({{unableKey, true}});
  QJsonArray blocks;
  for (const auto& block : answer.reading->blocks) blocks.append(encodedBlock(block));
  return lineOf({{blocksKey, blocks}, {codesKey, texts(answer.reading->codes)}});
}

std::optional<Request> decodedRequest(std::string_view line) {
  const auto object = objectIn(line);
  const auto wanted = wantedNamed(object[wantedKey].toString());
  const auto path =
      QByteArray::fromBase64Encoding(object[pathKey].toString().toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
  if (!wanted || !path || (*path).isEmpty()) return std::nullopt;
  return Request{(*path).toStdString(), *wanted, texts(object[languagesKey])};
}

std::optional<Answer> decodedAnswer(std::string_view line) {
  const auto object = objectIn(line);
  if (object.contains(unableKey)) return Answer();
  if (!object[blocksKey].isArray() || !object[codesKey].isArray()) return std::nullopt;
  PictureReading reading{{}, texts(object[codesKey])};
  const auto blocks = object[blocksKey].toArray();
  for (const auto& block : blocks) reading.blocks.push_back(decodedBlock(block.toArray()));
  return Answer{std::move(reading)};
}

}  // namespace Nimbrel::Reader
