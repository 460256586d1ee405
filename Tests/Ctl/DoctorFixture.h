#pragma once

#include "CtlFixture.h"

#include "Support/Waiting.h"

#include <map>
#include <string>

namespace Nimbrel::Testing {

/// nimbrelctl doctor in a home of its own, asked while the event loop of the test runs, so that doubles can answer.
class DoctorFixture : public CtlFixture {
 protected:
  struct Finding {
    bool isPresent = false;
    std::string advice;
  };

  /// What it finds, by name; fails the test unless it ends well.
  [[nodiscard]] std::map<std::string, Finding> findings() const {
    std::map<std::string, Finding> all;
    const auto list = QJsonDocument::fromJson(QByteArray::fromStdString(output({QStringLiteral("--json")}))).array();
    for (const auto& entry : list) {
      const auto object = entry.toObject();
      EXPECT_EQ(object.size(), 3);
      all[object.value(QStringLiteral("name")).toString().toStdString()] = {
          object.value(QStringLiteral("present")).toBool(),
          object.value(QStringLiteral("advice")).toString().toStdString()};
    }
    return all;
  }
  [[nodiscard]] std::string output(const QStringList& options = {}) const {
    const auto doctor =
        startProgram("nimbrelctl", QStringList{QStringLiteral("doctor")} + options, home_.folder().path());
    EXPECT_TRUE(waitUntil([&] { return doctor->state() == QProcess::NotRunning; }));
    EXPECT_EQ(doctor->exitCode(), 0) << doctor->readAllStandardError().toStdString();
    return doctor->readAllStandardOutput().toStdString();
  }
};

}  // namespace Nimbrel::Testing
