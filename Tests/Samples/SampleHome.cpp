#include "Samples/SampleHome.h"

#include "Support/ProgramRun.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>

#include <sys/stat.h>

#include <algorithm>

namespace Nimbrel::Testing {

namespace fs = std::filesystem;

SampleRun runSample(const QStringList& arguments, const std::string& workingFolder) {
  auto environment = QProcessEnvironment::systemEnvironment();
  for (const auto& name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR"}) {
    environment.remove(QLatin1String(name));
  }
  environment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(QString::fromStdString(workingFolder));
  process.start(programPath("nimbrel-sample"), arguments);
  EXPECT_TRUE(process.waitForFinished(100'000)) << process.errorString().toStdString();
  EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
  return {process.exitCode(), process.readAllStandardOutput().toStdString(),
          process.readAllStandardError().toStdString()};
}

void SampleHome::make(qint64 now) const {
  const auto run = runSample({QStringLiteral("--now"), QString::number(now), QString::fromStdString(path())});
  ASSERT_EQ(run.status, 0) << run.errors;
}

std::vector<fs::path> SampleHome::pictures() const {
  auto files = waiting();
  std::ranges::copy(filed(), std::back_inserter(files));
  return files;
}

std::vector<fs::path> SampleHome::filesBelow(std::string_view name) const {
  std::vector<fs::path> files;
  for (const auto& entry : fs::recursive_directory_iterator(path(name))) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::ranges::sort(files);
  return files;
}

QDateTime modified(const fs::path& file) {
  struct stat facts {};
  EXPECT_EQ(::stat(file.c_str(), &facts), 0) << file;
  return QDateTime::fromSecsSinceEpoch(facts.st_mtim.tv_sec, Qt::UTC);
}

}  // namespace Nimbrel::Testing
