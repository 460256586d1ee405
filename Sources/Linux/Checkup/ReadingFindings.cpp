#include "Linux/Checkup/Findings.h"
#include "Linux/Desktop/ProgramFile.h"
#include "Linux/Reading/ReadingLanguages.h"

#include <QFile>
#include <QProcess>
#include <QStringList>

#include <algorithm>

namespace Nimbrel::Checkup {

namespace {

constexpr int longestStartMilliseconds = 20'000;

/// What the program says of its models; absent where it cannot.
std::optional<std::vector<std::string>> modelsOf(const std::string& program) {
  QProcess reader;
  reader.start(QFile::decodeName(program.c_str()), {QStringLiteral("--languages")});
  const bool isDone = reader.waitForFinished(longestStartMilliseconds);
  if (!isDone || reader.exitStatus() != QProcess::NormalExit || reader.exitCode() != 0) return std::nullopt;
  std::vector<std::string> models;
  for (const auto& line : reader.readAllStandardOutput().split('\n')) {
    if (!line.isEmpty()) models.push_back(line.toStdString());
  }
  return models;
}

/// The package that has the model of a language.
std::string packageOf(std::string language) {
  std::ranges::replace(language, '_', '-');
  return "tesseract-ocr-" + language;
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const auto& name : names) text += (text.empty() ? "" : " ") + name;
  return text;
}

}  // namespace

std::vector<Finding> readingFindings() {
  const auto program = helperProgram("nimbrel-reader");
  return readingFindings(program, modelsOf(program), readingLanguages());
}

std::vector<Finding> readingFindings(const std::string& program, const std::optional<std::vector<std::string>>& models,
                                     const std::vector<std::string>& languages) {
  Finding recogniser{"text recognition", models && !models->empty(), ""};
  if (!models) {
    recogniser.advice = "install Nimbrel anew: " + program + " does not start";
  } else {
    recogniser.advice = models->empty() ? "install " + packageOf("eng") : "reads " + joined(*models);
  }
  std::vector<Finding> findings{recogniser};
  for (const auto& language : languages) {
    const bool isThere = models && std::ranges::find(*models, language) != models->end();
    findings.push_back({"language " + language, isThere, isThere ? "" : "install " + packageOf(language)});
  }
  return findings;
}

}  // namespace Nimbrel::Checkup
