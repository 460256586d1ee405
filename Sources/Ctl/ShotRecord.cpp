#include "ShotRecord.h"

#include "Outcome.h"

#include "Foundation/Formats.h"

#include <QJsonArray>

#include <iomanip>
#include <sstream>

namespace Nimbrel::Ctl {

namespace {

constexpr std::string_view protectedName = "Sensitive screenshot";

QJsonObject protectedRecord(const Shot& shot) {
  return {
      {QStringLiteral("id"), qint64{shot.id}},
      {QStringLiteral("date"), secondsSince1970(shot.date)},
      {QStringLiteral("bytes"), qint64{shot.bytes}},
      {QStringLiteral("filed"), shot.filed},
      {QStringLiteral("favorite"), shot.favorite},
      {QStringLiteral("name"), jsonString(protectedName)},
      {QStringLiteral("derived"), QJsonObject{{QStringLiteral("protected"), true}}},
  };
}

QJsonValue textOrNull(std::optional<std::string_view> text) {
  return text && !text->empty() ? QJsonValue(jsonString(*text)) : QJsonValue(QJsonValue::Null);
}

QJsonArray collectionsOf(const Store& store, const Shot& shot) {
  QJsonArray list;
  for (const auto collection : allSmartCollections) {
    if (store.derived().isIn(collection, shot.id)) list.append(jsonString(rawValue(collection)));
  }
  return list;
}

QJsonObject derivedMembers(const Store& store, const Shot& shot) {
  const auto& derived = store.derived();
  return {
      {QStringLiteral("titleGuess"), jsonString(shot.titleGuess())},
      {QStringLiteral("ocrHeadline"), jsonString(shot.ocrHeadline())},
      {QStringLiteral("pixels"), textOrNull(shot.pixels())},
      {QStringLiteral("captureTypeLabel"), jsonString(shot.captureTypeLabel())},
      {QStringLiteral("symbol"), jsonString(shot.symbol())},
      {QStringLiteral("group"), groupRecord(derived.contentOf(shot.id))},
      {QStringLiteral("smart"), collectionsOf(store, shot)},
      {QStringLiteral("receipt"), derived.isIn(SmartCollection::receipts, shot.id)},
      {QStringLiteral("protected"), false},
      {QStringLiteral("libraryName"), jsonString(store.libraryName(shot))},
      {QStringLiteral("stack"), textOrNull(derived.stackOf(shot.id))},
      {QStringLiteral("snippet"), textOrNull(store.snippet(shot))},
      {QStringLiteral("day"), jsonString(Formats::relativeDay(shot.date, store.now()))},
  };
}

}  // namespace

QJsonObject groupRecord(const ContentGroup& group) {
  return {{QStringLiteral("key"), jsonString(group.key)},
          {QStringLiteral("title"), jsonString(group.title)},
          {QStringLiteral("kind"), jsonString(rawValue(group.kind))},
          {QStringLiteral("bundleID"), jsonString(group.bundleID)}};
}

QJsonObject shotRecord(const Store& store, const Shot& shot) {
  if (store.isProtected(shot)) return protectedRecord(shot);
  return {
      {QStringLiteral("id"), qint64{shot.id}},
      {QStringLiteral("path"), jsonString(shot.path)},
      {QStringLiteral("name"), jsonString(shot.name)},
      {QStringLiteral("date"), secondsSince1970(shot.date)},
      {QStringLiteral("added"), secondsSince1970(shot.added)},
      {QStringLiteral("bytes"), qint64{shot.bytes}},
      {QStringLiteral("width"), shot.width},
      {QStringLiteral("height"), shot.height},
      {QStringLiteral("appName"), jsonString(shot.appName)},
      {QStringLiteral("captureType"), jsonString(shot.captureType)},
      {QStringLiteral("filed"), shot.filed},
      {QStringLiteral("ocr"), jsonString(shot.ocr)},
      {QStringLiteral("ocrDone"), shot.ocrDone},
      {QStringLiteral("note"), jsonString(shot.note)},
      {QStringLiteral("tags"), jsonList(shot.tags)},
      {QStringLiteral("favorite"), shot.favorite},
      {QStringLiteral("sensitive"), jsonList(shot.sensitive)},
      // JSON readers that keep numbers as doubles would lose bits of it.
      {QStringLiteral("phash"), QString::number(shot.phash)},
      {QStringLiteral("barcodes"), jsonList(shot.barcodes)},
      {QStringLiteral("bundleID"), jsonString(shot.bundleID)},
      {QStringLiteral("shownName"), jsonString(shot.shownName)},
      {QStringLiteral("appAttributionTrusted"), shot.appAttributionTrusted},
      {QStringLiteral("derived"), derivedMembers(store, shot)},
  };
}

std::string shotLine(const Store& store, const Shot& shot) {
  std::ostringstream line;
  line << std::setw(6) << shot.id << "  " << Formats::date(shot.date, u"yyyy-MM-dd HH:mm") << "  " << std::setw(8)
       << Formats::byteCount(shot.bytes) << "  " << printable(store.isProtected(shot) ? protectedName : shot.name)
       << '\n';
  return line.str();
}

std::string recordText(const QJsonObject& record) {
  std::string text;
  for (auto member = record.begin(); member != record.end(); ++member) {
    if (member->isObject()) {
      text += recordText(member->toObject());
      continue;
    }
    const bool isLongText = member.key() == QLatin1String("ocr") || member.key() == QLatin1String("note");
    const auto plain = member->isString() ? member->toString().toStdString() : jsonText(*member);
    const auto value = isLongText ? printableLines(plain) : printable(plain);
    text += member.key().toStdString() + ": " + value + "\n";
  }
  return text;
}

}  // namespace Nimbrel::Ctl
