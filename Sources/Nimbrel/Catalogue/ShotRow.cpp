#include "Catalogue/ShotRow.h"

#include "Catalogue/Statement.h"
#include "Foundation/Text.h"

namespace Nimbrel {

namespace {

/// The numbers of the columns in `shotColumns`.
enum Column {
  idColumn,
  pathColumn,
  nameColumn,
  dateColumn,
  addedColumn,
  bytesColumn,
  widthColumn,
  heightColumn,
  appNameColumn,
  captureTypeColumn,
  filedColumn,
  ocrColumn,
  ocrDoneColumn,
  noteColumn,
  tagsColumn,
  favoriteColumn,
  sensitiveColumn,
  phashColumn,
  barcodesColumn,
  bundleIDColumn,
  shownNameColumn,
  appAttributionTrustedColumn,
};

std::string textOf(const Statement& row, Column column) { return std::string(row.text(column)); }

bool flagOf(const Statement& row, Column column) { return row.integer(column) == 1; }

int intOf(const Statement& row, Column column) { return static_cast<int>(row.integer(column)); }

std::vector<std::string> wordsOf(const Statement& row, Column column) {
  return Text::split(row.text(column), tagSeparator, Text::EmptyPieces::Drop);
}

std::vector<std::string> codesOf(const Statement& row) {
  const auto text = row.text(barcodesColumn);
  return text.empty() ? std::vector<std::string>() : Text::split(text, codeSeparator, Text::EmptyPieces::Keep);
}

bool wordsReadAs(const Statement& row, Column column, const std::vector<std::string>& words) {
  return Text::isJoined(row.text(column), words, tagSeparator) || wordsOf(row, column) == words;
}

bool numbersReadAs(const Statement& row, const Shot& shot) {
  return row.integer(idColumn) == shot.id && row.real(dateColumn) == secondsSince1970(shot.date) &&
         row.real(addedColumn) == secondsSince1970(shot.added) && row.integer(bytesColumn) == shot.bytes &&
         intOf(row, widthColumn) == shot.width && intOf(row, heightColumn) == shot.height &&
         flagOf(row, filedColumn) == shot.filed && flagOf(row, ocrDoneColumn) == shot.ocrDone &&
         flagOf(row, favoriteColumn) == shot.favorite && row.integer(phashColumn) == shot.phash &&
         flagOf(row, appAttributionTrustedColumn) == shot.appAttributionTrusted;
}

bool textsReadAs(const Statement& row, const Shot& shot) {
  return row.text(pathColumn) == shot.path && row.text(nameColumn) == shot.name &&
         row.text(appNameColumn) == shot.appName && row.text(captureTypeColumn) == shot.captureType &&
         row.text(ocrColumn) == shot.ocr && row.text(noteColumn) == shot.note &&
         row.text(bundleIDColumn) == shot.bundleID && row.text(shownNameColumn) == shot.shownName;
}

bool listsReadAs(const Statement& row, const Shot& shot) {
  return wordsReadAs(row, tagsColumn, shot.tags) && wordsReadAs(row, sensitiveColumn, shot.sensitive) &&
         Text::isJoined(row.text(barcodesColumn), shot.barcodes, codeSeparator);
}

}  // namespace

Shot shotFromRow(const Statement& row) {
  return Shot{
      .id = row.integer(idColumn),
      .path = textOf(row, pathColumn),
      .name = textOf(row, nameColumn),
      .date = timestamp(row.real(dateColumn)),
      .added = timestamp(row.real(addedColumn)),
      .bytes = row.integer(bytesColumn),
      .width = intOf(row, widthColumn),
      .height = intOf(row, heightColumn),
      .appName = textOf(row, appNameColumn),
      .captureType = textOf(row, captureTypeColumn),
      .filed = flagOf(row, filedColumn),
      .ocr = textOf(row, ocrColumn),
      .ocrDone = flagOf(row, ocrDoneColumn),
      .note = textOf(row, noteColumn),
      .tags = wordsOf(row, tagsColumn),
      .favorite = flagOf(row, favoriteColumn),
      .sensitive = wordsOf(row, sensitiveColumn),
      .phash = row.integer(phashColumn),
      .barcodes = codesOf(row),
      .bundleID = textOf(row, bundleIDColumn),
      .shownName = textOf(row, shownNameColumn),
      .appAttributionTrusted = flagOf(row, appAttributionTrustedColumn),
  };
}

bool rowReadsAs(const Statement& row, const Shot& shot) {
  return numbersReadAs(row, shot) && textsReadAs(row, shot) && listsReadAs(row, shot);
}

ShotID idOfRow(const Statement& row) { return row.integer(idColumn); }

Timestamp dateOfRow(const Statement& row) { return timestamp(row.real(dateColumn)); }

}  // namespace Nimbrel
