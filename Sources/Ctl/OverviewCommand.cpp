#include "CommandTable.h"
#include "ShotArguments.h"
#include "ShotRecord.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <sstream>

namespace Nimbrel::Ctl {

namespace {

qint64 number(std::size_t count) { return static_cast<qint64>(count); }

QJsonArray groupList(const DerivedState& derived) {
  QJsonArray list;
  for (const auto& [group, count] : derived.contentGroups()) {
    auto entry = groupRecord(group);
    entry.insert(QStringLiteral("count"), number(count));
    list.append(entry);
  }
  return list;
}

QJsonObject smartObject(const DerivedState& derived) {
  QJsonObject counts;
  for (const auto& [collection, count] : derived.smartCounts()) {
    counts.insert(jsonString(rawValue(collection)), number(count));
  }
  return counts;
}

QJsonArray idList(const std::unordered_set<ShotID>& ids) {
  std::vector<ShotID> ascending(ids.begin(), ids.end());
  std::ranges::sort(ascending);
  QJsonArray list;
  for (const auto id : ascending) list.append(qint64{id});
  return list;
}

QJsonArray stackList(const DerivedState& derived) {
  QJsonArray list;
  for (const auto& stack : derived.shotStacks()) {
    list.append(QJsonObject{{QStringLiteral("id"), jsonString(stack.id)},
                            {QStringLiteral("title"), jsonString(stack.title)},
                            {QStringLiteral("symbol"), jsonString(stack.symbol)},
                            {QStringLiteral("bundleID"), jsonString(stack.bundleID)},
                            {QStringLiteral("shotIDs"), idList(stack.shotIDs)},
                            {QStringLiteral("newest"), secondsSince1970(stack.newest)}});
  }
  return list;
}

void printNames(std::ostream& text, std::string_view title, const std::vector<std::string>& names) {
  text << title << ':';
  for (const auto& name : names) text << (&name == &names.front() ? " " : ", ") << printable(name);
  text << '\n';
}

std::string forPeople(const Store& store) {
  std::ostringstream text;
  text << "Shots: " << store.shots().size() << "\nInbox: " << store.inboxCount()
       << "\nSensitive: " << store.sensitiveCount() << '\n';
  printNames(text, "Tags", store.tags());
  printNames(text, "Projects", store.settings().projects());
  printNames(text, "Saved searches", store.settings().savedSearches());
  text << "Sources:\n";
  for (const auto& [group, count] : store.derived().contentGroups()) {
    text << "  " << printable(group.title) << ": " << count << '\n';
  }
  text << "Collections:\n";
  for (const auto& [collection, count] : store.derived().smartCounts()) {
    text << "  " << title(collection) << ": " << count << '\n';
  }
  text << "Stacks:\n";
  for (const auto& stack : store.derived().shotStacks()) {
    text << "  " << printable(stack.title) << ": " << stack.shotIDs.size() << '\n';
  }
  return text.str();
}

}  // namespace

Outcome runOverview(const CommandLine&, Session& session) {
  return withStore(session, [](Store& store) {
    const QJsonObject overview{
        {QStringLiteral("shots"), number(store.shots().size())},
        {QStringLiteral("inboxCount"), number(store.inboxCount())},
        {QStringLiteral("sensitiveCount"), number(store.sensitiveCount())},
        {QStringLiteral("tags"), jsonList(store.tags())},
        {QStringLiteral("contentGroups"), groupList(store.derived())},
        {QStringLiteral("smartCounts"), smartObject(store.derived())},
        {QStringLiteral("shotStacks"), stackList(store.derived())},
        {QStringLiteral("projects"), jsonList(store.settings().projects())},
        {QStringLiteral("savedSearches"), jsonList(store.settings().savedSearches())},
    };
    return Outcome::done(overview, forPeople(store));
  });
}

}  // namespace Nimbrel::Ctl
