#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QTemporaryDir>

namespace {

/// The same world for every test, whoever runs it: no locale, no time zone, no display and no home of the user's.
void setEnvironment(const QString& home) {
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("TZ", "UTC");
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const auto folder = home.toLocal8Bit();
  qputenv("HOME", folder);
  qputenv("XDG_DATA_HOME", folder + "/.local/share");
  qputenv("XDG_CONFIG_HOME", folder + "/.config");
  qputenv("XDG_CACHE_HOME", folder + "/.cache");
  qputenv("XDG_RUNTIME_DIR", folder);
  qunsetenv("XDG_CURRENT_DESKTOP");
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir home;
  setEnvironment(home.path());
  ::testing::InitGoogleMock(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
