#include "CommandTable.h"
#include "ShotArguments.h"
#include "ShotRecord.h"

#include <QJsonArray>

namespace Nimbrel::Ctl {

Outcome runShow(const CommandLine& line, Session& session) {
  return withShots(line.arguments, session, [&](Store& store, const ShotList& shots) {
    if (line.has("--reveal")) {
      if (const auto refused = session.unlock(shots)) return Outcome::failed(refused->message);
    }
    QJsonArray list;
    std::string text;
    for (const auto& shot : shots) {
      const auto record = shotRecord(store, *shot);
      if (!list.isEmpty()) text += "\n";
      list.append(record);
      text += recordText(record);
    }
    return Outcome::done(list, text);
  });
}

}  // namespace Nimbrel::Ctl
