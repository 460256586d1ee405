#include "Analysis/CalendarEvent.h"
#include "Analysis/TextTable.h"
#include "Analysis/TranslationService.h"
#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"
#include "Platform/ImageFile.h"
#include "Platform/NewFile.h"
#include "Store/Store.h"

#include <chrono>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

constexpr std::string_view eventPrefix = "Nimbrel Event ";
constexpr std::string_view eventSuffix = ".ics";
constexpr Seconds eventLife = std::chrono::hours(24);

std::string newIdentifier() { return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().toStdString(); }

/// A calendar has read its file within moments, but does not tell.
void discardOldEvents(const std::string& folder, Timestamp now) {
  std::vector<std::string> old;
  FileSystem::forEachEntry(folder, [&](std::string_view name, FileSystem::EntryKind kind) {
    if (kind != FileSystem::EntryKind::File || !name.starts_with(eventPrefix) || !name.ends_with(eventSuffix)) return;
    auto path = FilePath::join(folder, name);
    const auto made = FileSystem::creationDate(path);
    if (made && *made < now - eventLife) old.push_back(std::move(path));
  });
  for (const auto& path : old) NewFile::discard(path);
}

}  // namespace

void Store::open(const Shot& shot) { context_.services.workspace->openFile(shot.path); }

void Store::openURL(const std::string& url) { context_.services.workspace->openURL(url); }

void Store::reveal(const Shot& shot) { context_.services.workspace->reveal(shot.path); }

std::vector<Workspace::Taker> Store::openers(const Shot& shot) const {
  return context_.services.workspace->openersOf(shot.path);
}

void Store::openWith(const Shot& shot, const std::string& opener) {
  context_.services.workspace->openFileWith(shot.path, opener);
}

void Store::mail(const Shot& shot) { context_.services.workspace->composeMail(shot.path); }

std::vector<Workspace::Taker> Store::senders() const { return context_.services.workspace->senders(); }

void Store::send(const Shot& shot, const std::string& sender) {
  context_.services.workspace->sendFile(shot.path, sender);
}

void Store::copyFile(const Shot& shot) {
  context_.services.pasteboard->writeFile(shot.path);
  setStatus("Copied file");
}

void Store::copyImage(const Shot& shot) {
  const auto picture = ImageFile::picture(shot.path);
  if (picture.isNull()) return;
  context_.services.pasteboard->writePicture(picture);
  setStatus("Copied image");
}

void Store::copyText(const Shot& shot) {
  context_.services.pasteboard->writeText(shot.ocr);
  setStatus(shot.ocr.empty() ? "No text recognized" : "Copied text");
}

void Store::copyString(std::string_view text, std::string_view what) {
  context_.services.pasteboard->writeText(text);
  setStatus("Copied " + Text::lowered(what));
}

void Store::copyAsTable(const Shot& shot) {
  const auto rows = TextTable::rowsIn(shot.ocr);
  if (rows.empty()) return setStatus("No table-like rows found");
  copyString(Text::joined(rows, '\n'), "table");
}

void Store::translateText(const Shot& shot) {
  const auto url =
      shot.ocr.empty() ? std::nullopt : TranslationService::translationUrl(TranslationService::baseUrl(), shot.ocr);
  if (!url) return setStatus("No text to translate");
  context_.services.workspace->openURL(*url);
}

void Store::createCalendarEvent(const Shot& shot, Timestamp date) {
  const CalendarEvent event{.title = std::string(shot.titleGuess()),
                            .shotName = shot.name,
                            .identifier = newIdentifier(),
                            .start = date,
                            .made = now()};
  const auto& folder = context_.folders.caches;
  const auto path = FilePath::join(folder, std::string(eventPrefix) + newIdentifier() + std::string(eventSuffix));
  if (FileMove::createFolders(folder) || NewFile::write(path, event.iCalendar())) {
    return setStatus("Could not create calendar event");
  }
  discardOldEvents(folder, now());
  context_.services.workspace->openFile(path);
  setStatus("Opened event in Calendar");
}

}  // namespace Nimbrel
