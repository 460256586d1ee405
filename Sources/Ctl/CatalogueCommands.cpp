#include "CommandTable.h"
#include "ShotRecord.h"

#include "Analysis/Perceptual.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace Nimbrel::Ctl {

namespace {

constexpr int usualTolerance = 6;

std::string lineOf(std::string_view title, const std::vector<std::string>& texts) {
  std::string line = std::string(title) + ":";
  for (const auto& text : texts) line += (&text == &texts.front() ? " " : ", ") + text;
  return line + "\n";
}

/// The shots with the given row ids, in that order.
Result<ShotList> shotsWithIDs(const Store& store, const std::vector<ShotID>& ids) {
  ShotList shots;
  for (const auto id : ids) {
    const auto shot = std::ranges::find(store.shots(), id, [](const ShotPtr& candidate) { return candidate->id; });
    if (shot == store.shots().end()) return Error{"no shot has the id " + std::to_string(id)};
    shots.push_back(*shot);
  }
  return shots;
}

}  // namespace

Outcome runList(const CommandLine&, Session& session) {
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  QJsonArray list;
  std::string text;
  for (const auto& shot : store.value()->shots()) {
    list.append(shotRecord(*store.value(), *shot));
    text += shotLine(*store.value(), *shot);
  }
  return Outcome::done(list, text);
}

Outcome runShow(const CommandLine& line, Session& session) {
  std::vector<ShotID> ids;
  for (const auto& argument : line.arguments) {
    const auto id = decimal(argument);
    if (!id) return Outcome::misused("not a row id: " + argument);
    ids.push_back(*id);
  }
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  auto shots = shotsWithIDs(*store.value(), ids);
  if (shots && line.has("--reveal")) {
    if (const auto refused = session.unlock(shots.value())) return Outcome::failed(refused->message);
    // Another process may have changed them in the meantime.
    shots = shotsWithIDs(*store.value(), ids);
  }
  if (!shots) return Outcome::failed(shots.error().message);
  QJsonArray list;
  std::string text;
  for (const auto& shot : shots.value()) {
    const auto record = shotRecord(*store.value(), *shot);
    if (!list.isEmpty()) text += "\n";
    list.append(record);
    text += recordText(record);
  }
  return Outcome::done(list, text);
}

Outcome runOverview(const CommandLine&, Session& session) {
  const auto opened = session.store();
  if (!opened) return Outcome::failed(opened.error().message);
  const Store& store = *opened.value();
  const auto shots = store.shots().size();
  const QJsonObject overview{
      {QStringLiteral("shots"), static_cast<qint64>(shots)},
      {QStringLiteral("inboxCount"), static_cast<qint64>(store.inboxCount())},
      {QStringLiteral("sensitiveCount"), static_cast<qint64>(store.sensitiveCount())},
      {QStringLiteral("tags"), jsonList(store.tags())},
      {QStringLiteral("projects"), jsonList(store.settings().projects())},
      {QStringLiteral("savedSearches"), jsonList(store.settings().savedSearches())},
  };
  return Outcome::done(overview, "Shots: " + std::to_string(shots) + "\nInbox: " + std::to_string(store.inboxCount()) +
                                     "\nSensitive: " + std::to_string(store.sensitiveCount()) + "\n" +
                                     lineOf("Tags", store.tags()) + lineOf("Projects", store.settings().projects()) +
                                     lineOf("Saved searches", store.settings().savedSearches()));
}

Outcome runDuplicates(const CommandLine& line, Session& session) {
  const auto tolerance = decimal(line.value("--tolerance").value_or(std::to_string(usualTolerance)));
  if (!tolerance || *tolerance < 0 || *tolerance > 64) return Outcome::misused("--tolerance takes a number of bits");
  const auto store = session.store();
  if (!store) return Outcome::failed(store.error().message);
  QJsonArray groups;
  std::string text;
  for (const auto& group : Perceptual::groups(store.value()->shots(), static_cast<int>(*tolerance))) {
    QJsonArray ids;
    if (!groups.isEmpty()) text += "\n";
    for (const auto& shot : group) {
      ids.append(qint64{shot->id});
      text += shotLine(*store.value(), *shot);
    }
    groups.append(ids);
  }
  return Outcome::done(groups, text);
}

}  // namespace Nimbrel::Ctl
