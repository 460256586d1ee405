#include "Linux/Reading/AttemptJournal.h"

#include "Foundation/FilePath.h"
#include "Linux/Files/FileDescriptor.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace Nimbrel {

namespace {

/// No machine brings that many pictures that cannot be read; the oldest go first.
constexpr std::size_t mostEntries = 100;
constexpr qint64 mostBytes = 1 << 20;

}  // namespace

int AttemptJournal::attempts(const std::string& picture) const {
  const auto entry = entryFor(picture);
  if (!entry) return 0;
  auto entries = read();
  const auto known = find(entries, *entry);
  return known == entries.end() ? 0 : known->attempts;
}

void AttemptJournal::begin(const std::string& picture) {
  auto entry = entryFor(picture);
  if (!entry) return;
  change([&](Entries& entries) {
    const auto known = find(entries, *entry);
    entry->attempts = known == entries.end() ? 1 : known->attempts + 1;
    std::erase_if(entries, [&](const Entry& other) { return other.path == picture; });
    if (entries.size() >= mostEntries) entries.erase(entries.begin());
    entries.push_back(*entry);
  });
}

void AttemptJournal::finish(const std::string& picture) {
  change([&](Entries& entries) { std::erase_if(entries, [&](const Entry& entry) { return entry.path == picture; }); });
}

void AttemptJournal::takeBack(const std::string& picture) {
  change([&](Entries& entries) {
    for (auto& entry : entries) entry.attempts -= entry.path == picture ? 1 : 0;
    std::erase_if(entries, [](const Entry& entry) { return entry.attempts < 1; });
  });
}

std::optional<AttemptJournal::Entry> AttemptJournal::entryFor(const std::string& picture) {
  struct stat status {};
  if (::stat(picture.c_str(), &status) != 0) return std::nullopt;
  constexpr std::int64_t nanoseconds = 1'000'000'000;
  return Entry{picture, status.st_size, status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec, 0};
}

AttemptJournal::Entries::iterator AttemptJournal::find(Entries& entries, const Entry& picture) {
  return std::ranges::find_if(entries, [&](const Entry& entry) {
    return entry.path == picture.path && entry.size == picture.size && entry.modified == picture.modified;
  });
}

AttemptJournal::Entries AttemptJournal::read() const {
  QFile file(QFile::decodeName(file_.c_str()));
  if (!file.open(QIODevice::ReadOnly)) return {};
  const auto rows = QJsonDocument::fromJson(file.read(mostBytes)).array();
  Entries entries;
  for (const auto& row : rows) {
    const auto fields = row.toArray();
    Entry entry{QByteArray::fromBase64(fields.at(0).toString().toLatin1()).toStdString(),
                fields.at(1).toString().toLongLong(), fields.at(2).toString().toLongLong(), fields.at(3).toInt()};
    if (!entry.path.empty() && entry.attempts > 0) entries.push_back(std::move(entry));
  }
  return entries;
}

void AttemptJournal::write(const Entries& entries) const {
  QJsonArray rows;
  for (const auto& entry : entries) {
    rows.append(QJsonArray{QString::fromLatin1(QByteArray::fromStdString(entry.path).toBase64()),
                           QString::number(entry.size), QString::number(entry.modified), entry.attempts});
  }
  // Not flushed to the disk: what is to be survived is the end of a process, not of the machine.
  const auto fresh = file_ + ".new";
  QFile file(QFile::decodeName(fresh.c_str()));
  const auto bytes = QJsonDocument(rows).toJson(QJsonDocument::Compact);
  if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush()) return;
  file.close();
  std::rename(fresh.c_str(), file_.c_str());
}

void AttemptJournal::change(const std::function<void(Entries&)>& edit) const {
  QDir().mkpath(QFile::decodeName(std::string(FilePath::folder(file_)).c_str()));
  const FileDescriptor lock(::open((file_ + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.isOpen() || ::flock(lock.number(), LOCK_EX) != 0) return;
  auto entries = read();
  edit(entries);
  write(entries);
}

}  // namespace Nimbrel
