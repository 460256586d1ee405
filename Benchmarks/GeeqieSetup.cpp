#include "GeeqieSetup.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QThread>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace Nimbrel::Benchmarks {

namespace {

[[noreturn]] void fail(const char* message) {
  std::fprintf(stderr, "%s\n", message);
  std::exit(EXIT_FAILURE);
}

void runOnce(const QProcessEnvironment& environment, const QString& folder) {
  QProcess viewer;
  viewer.setProcessEnvironment(environment);
  viewer.setStandardErrorFile(QProcess::nullDevice());
  viewer.start(QStringLiteral("geeqie"), {folder});
  QThread::sleep(4);
  QProcess quit;
  quit.setProcessEnvironment(environment);
  quit.setStandardErrorFile(QProcess::nullDevice());
  quit.start(QStringLiteral("geeqie"), {QStringLiteral("--remote"), QStringLiteral("--quit")});
  quit.waitForFinished();
  if (!viewer.waitForFinished()) fail("geeqie does not quit");
}

}  // namespace

void letGeeqieShowThumbnails(const QProcessEnvironment& environment, const QString& folder) {
  runOnce(environment, folder);
  QFile file(environment.value(QStringLiteral("XDG_CONFIG_HOME")) + QStringLiteral("/geeqie/geeqierc.xml"));
  if (!file.open(QIODevice::ReadWrite)) fail("geeqie has written no settings");
  auto settings = QString::fromUtf8(file.readAll());
  for (const auto& [key, value] :
       {std::pair("show_thumbnails", "true"), std::pair("file_view_type", "1"), std::pair("main_window.w", "1200"),
        std::pair("main_window.h", "760"), std::pair("main_window.hdivider_pos", "860")}) {
    const auto name = QString::fromLatin1(key);
    const QRegularExpression entry(QRegularExpression::escape(name) + QStringLiteral(" = \"[^\"]*\""));
    if (!settings.contains(entry)) fail("geeqie's settings lack what shows thumbnails");
    settings.replace(entry, name + QStringLiteral(" = \"") + QLatin1String(value) + QLatin1Char('"'));
  }
  file.resize(0);
  file.write(settings.toUtf8());
}

}  // namespace Nimbrel::Benchmarks
