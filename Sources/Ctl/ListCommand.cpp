#include "CommandTable.h"
#include "FilterArgument.h"
#include "ShotArguments.h"
#include "ShotRecord.h"

#include "Store/Gallery.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace Nimbrel::Ctl {

namespace {

enum class Form { Records, Table };

std::optional<GallerySort> parseSort(std::string_view text) {
  const auto named = std::ranges::find(allCases<GallerySort>, text, [](GallerySort sort) { return rawValue(sort); });
  return named == allCases<GallerySort>.end() ? std::nullopt : std::optional(*named);
}

/// Chooses filter and search as a hand in the window would.
void choose(Store& store, const Filter& filter, std::optional<std::string_view> query) {
  store.setFilter(filter);
  if (const auto* saved = std::get_if<Filter::Saved>(&filter.choice)) store.setQuery(saved->text);
  if (query) store.setQuery(std::string(*query));
  store.runSearch();
}

/// Where the search hit, for people: the hits in brackets. Nothing where it did not, or where it must not show.
std::string hitLine(const Store& store, const Shot& shot) {
  constexpr char hitBegins = '\x02';
  constexpr char hitEnds = '\x03';
  auto snippet = store.isProtected(shot) ? std::nullopt : store.snippet(shot);
  if (!snippet) return {};
  std::ranges::replace(*snippet, hitBegins, '[');
  std::ranges::replace(*snippet, hitEnds, ']');
  return "        " + printable(*snippet) + "\n";
}

Outcome asSections(const Store& store, const std::vector<GallerySection>& sections) {
  QJsonArray list;
  std::string text;
  for (const auto& section : sections) {
    QJsonArray ids;
    if (!text.empty()) text += "\n";
    if (!section.title.empty()) text += section.title + "\n";
    for (const auto& shot : section.shots) {
      ids.append(qint64{shot->id});
      text += shotLine(store, *shot);
    }
    list.append(QJsonObject{{QStringLiteral("title"), jsonString(section.title)}, {QStringLiteral("shots"), ids}});
  }
  return Outcome::done(list, text);
}

/// In one form alone: the records of a large catalogue take ten times the time and the memory of its table.
Outcome asShots(const Store& store, const std::vector<GallerySection>& sections, Form form) {
  QJsonArray list;
  std::string text;
  for (const auto& section : sections) {
    for (const auto& shot : section.shots) {
      if (form == Form::Records) {
        list.append(shotRecord(store, *shot));
      } else {
        text += shotLine(store, *shot) + hitLine(store, *shot);
      }
    }
  }
  return Outcome::done(list, text);
}

}  // namespace

Outcome runList(const CommandLine& line, Session& session) {
  return withStore(session, [&](Store& store) {
    const auto filter = parseFilter(line.value("--filter").value_or("all"), store.derived());
    if (!filter) return Outcome::misused("unknown filter " + std::string(*line.value("--filter")));
    const auto sortWord = line.value("--sort");
    const auto sort = sortWord ? parseSort(*sortWord) : store.settings().gallerySort();
    if (!sort) return Outcome::misused("unknown sort " + std::string(*sortWord));
    choose(store, *filter, line.value("--query"));
    if (line.has("--reveal")) {
      if (const auto refused = session.unlock(store.visible())) return Outcome::failed(refused->message);
    }
    const auto grouping = store.settings().groupByDay() ? Gallery::Grouping::ByDay : Gallery::Grouping::None;
    NameKeys keys;
    const auto sections = Gallery::sections(store.visible(), {*sort, grouping}, store.now(), keys);
    if (line.has("--sections")) return asSections(store, sections);
    return asShots(store, sections, line.has("--json") ? Form::Records : Form::Table);
  });
}

}  // namespace Nimbrel::Ctl
