#include "CommandTable.h"
#include "ShotArguments.h"

#include "Foundation/Text.h"

namespace Nimbrel::Ctl {

namespace {

/// Writes to the row of each shot, and takes over what was written.
Outcome edited(Store& store, const ShotList& shots, const std::function<void(Database&, const Shot&)>& write) {
  for (const auto& shot : shots) write(store.database(), *shot);
  store.reload();
  return Outcome::changed(store.status());
}

/// Acts on the one shot that stands before a word of text.
Outcome withShotAndText(const CommandLine& line, Session& session,
                        const std::function<Outcome(Store&, const ShotPtr&, const std::string& text)>& action) {
  const std::span ids(line.arguments.data(), 1);
  return withShots(ids, session, [&](Store& store, const ShotList& shots) {
    return action(store, shots.front(), line.arguments[1]);
  });
}

}  // namespace

Outcome runNote(const CommandLine& line, Session& session) {
  return withShotAndText(line, session, [](Store& store, const ShotPtr& shot, const std::string& text) {
    return edited(store, {shot}, [&](Database& database, const Shot& row) { database.setNote(row.id, text); });
  });
}

Outcome runSource(const CommandLine& line, Session& session) {
  return withShotAndText(line, session, [](Store& store, const ShotPtr& shot, const std::string& text) {
    const auto name = Text::trimmedWithLineBreaks(text);
    if (name.empty()) return Outcome::changed(store.status());
    return edited(store, {shot}, [&](Database& database, const Shot& row) { database.setShownName(row.id, name); });
  });
}

Outcome runFavorite(const CommandLine& line, Session& session) {
  return withShots(line.arguments, session, [&](Store& store, const ShotList& shots) {
    return edited(store, shots,
                  [&](Database& database, const Shot& shot) { database.setFavorite(shot.id, !line.has("--off")); });
  });
}

Outcome runTag(const CommandLine& line, Session& session) {
  const auto tag = line.value("--tag");
  if (!tag) return Outcome::misused("which tag? --tag is missing");
  return withShots(line.arguments, session, [&](Store& store, const ShotList& shots) {
    store.addTag(*tag, shots);
    return Outcome::changed(store.status());
  });
}

Outcome runUntag(const CommandLine& line, Session& session) {
  const auto tag = line.value("--tag");
  if (!tag) return Outcome::misused("which tag? --tag is missing");
  return withShots(line.arguments, session, [&](Store& store, const ShotList& shots) {
    store.removeTag(*tag, shots);
    return Outcome::changed(store.status());
  });
}

Outcome runProject(const CommandLine& line, Session& session) {
  const auto name = line.value("--name");
  if (!name) return Outcome::misused("which project? --name is missing");
  return withShots(line.arguments, session, [&](Store& store, const ShotList& shots) {
    store.assignProject(*name, shots);
    return Outcome::changed(store.status());
  });
}

Outcome runRules(const CommandLine& line, Session& session) {
  if (line.arguments.front() != "apply") return Outcome::misused("rules can be applied, no more");
  return withStore(session, [](Store& store) {
    store.applyAutomationRules(store.shots());
    return Outcome::changed(store.status());
  });
}

Outcome runSearch(const CommandLine& line, Session& session) {
  const auto& verb = line.arguments[0];
  const auto& text = line.arguments[1];
  if (verb != "save" && verb != "remove") return Outcome::misused("a search can be saved or removed");
  return withStore(session, [&](Store& store) {
    if (verb == "remove") {
      store.removeSaved(text);
    } else {
      store.setQuery(text);
      store.saveCurrentSearch();
    }
    return Outcome::changed(store.status());
  });
}

}  // namespace Nimbrel::Ctl
