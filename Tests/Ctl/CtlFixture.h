#pragma once

#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// nimbrelctl in a home of its own.
class CtlFixture : public ::testing::Test {
 protected:
  [[nodiscard]] ProgramOutput ctl(const std::vector<std::string>& words, const std::string& input = {}) const {
    QStringList arguments;
    for (const auto& word : words) arguments << QString::fromStdString(word);
    return runProgram("nimbrelctl", arguments, home_.folder().path(), QByteArray::fromStdString(input));
  }

  /// What it prints with --json; fails the test when it fails.
  [[nodiscard]] QJsonDocument json(std::vector<std::string> words, const std::string& input = {}) const {
    words.emplace_back("--json");
    const auto output = ctl(words, input);
    EXPECT_EQ(output.status, 0) << output.errors;
    return QJsonDocument::fromJson(QByteArray::fromStdString(output.output));
  }

  /// The status of a command that changes something.
  [[nodiscard]] std::string statusOf(const std::vector<std::string>& words) const {
    return json(words).object().value(QStringLiteral("status")).toString().toStdString();
  }

  /// Adds a picture to the catalogue, taken so many seconds after an arbitrary moment.
  ShotID importPicture(const std::string& name, int secondsLater = 0) {
    writePicture(home_.path(name), 120, 80, static_cast<int>(name.size()));
    setModificationTime(home_.path(name), 1'700'000'000 + secondsLater);
    const auto store = home_.open(ProcessRole::tool);
    store->importFiles({home_.path(name)});
    return shotNamed(*store, name)->id;
  }

  /// The row as another process reads it now.
  [[nodiscard]] std::optional<Shot> row(ShotID id) { return home_.open(ProcessRole::tool)->database().shot(id); }

  StoreHome home_;
};

/// The numbers of a JSON list.
[[nodiscard]] inline std::vector<ShotID> idsIn(const QJsonArray& list) {
  std::vector<ShotID> ids;
  for (const auto& id : list) ids.push_back(id.toInteger());
  return ids;
}

}  // namespace Nimbrel::Testing
