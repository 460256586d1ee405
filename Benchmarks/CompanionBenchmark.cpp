// The companion with 10,000 shots, as its user meets it: what it costs at rest, how soon quick find is on the screen
// after its keys are pressed, and how soon a new screenshot is seen in the open window. Real programs on a display of
// their own; what counts is what lies on the screen.

#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "MarkedScreen.h"
#include "Measure.h"
#include "RunningProgram.h"
#include "ScreenScene.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int shotCount = 10'000;
constexpr int rounds = 15;
constexpr int restSeconds = 60;
constexpr double patience = 20;  ///< seconds
constexpr double memoryLimit = 60e6;
constexpr double restLimit = 0.002;  ///< of a core
constexpr double openingLimit = 0.06;
/// What a change of a folder waits for, how often the window looks for what another process did, and what the rest may
/// take.
constexpr double arrivalLimit = 0.9 + 2.0 + 0.3;
constexpr QPoint insideQuickFind{640, 200};
constexpr std::size_t few = 10;  ///< marked pixels that were looked at, less than any picture shows

double secondsOf(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) * 1e-9; }

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

template <class Condition>
double secondsUntil(const QElapsedTimer& timer, const Condition& isSo, const char* otherwise) {
  while (!isSo()) {
    if (secondsOf(timer) > patience) fail(otherwise);
    QThread::usleep(500);
  }
  return secondsOf(timer);
}

/// A user with so many shots, and the programs of that user.
class User {
 public:
  explicit User(const MarkedScreen& screen) : screen_(screen), environment_(environment()) {
    makeCatalogue(path(".local/share/Nimbrel"), path("Pictures/Nimbrel"), shotCount);
    makeLibraryFiles(path("Pictures/Nimbrel"), shotCount);
    QDir().mkpath(QString::fromStdString(path("Desktop")));
    QProcess settings;
    settings.setProcessEnvironment(environment_);
    settings.start(program("nimbrelctl"),
                   {QStringLiteral("settings"), QStringLiteral("quickFindHotkey"), QStringLiteral("true")});
    if (!settings.waitForFinished() || settings.exitCode() != 0) fail("the hotkey is not switched on");
  }

  void start(QProcess& process, const char* name) const {
    process.setProcessEnvironment(environment_);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program(name), QStringList());
    if (!process.waitForStarted()) fail("a program does not start");
  }
  /// Presses keys as a hand does.
  void press(const QString& keys) const {
    QProcess tool;
    tool.setProcessEnvironment(environment_);
    tool.start(QStringLiteral("xdotool"), {QStringLiteral("key"), keys});
    if (!tool.waitForFinished() || tool.exitCode() != 0) fail("xdotool presses no keys");
  }
  /// Has the screen capture of another program land in the folder.
  void addPicture(int number) const {
    QImage image(ScreenScene::size, QImage::Format_RGB32);
    image.fill(MarkedScreen::mark);
    QPainter(&image).fillRect(0, 0, number, 1, Qt::black);
    const auto made = QString::fromStdString(path("made.png"));
    image.save(made);
    const auto name = "Desktop/Screenshot " + std::to_string(number) + ".png";
    QFile::rename(made, QString::fromStdString(path(name)));
  }

 private:
  [[nodiscard]] std::string path(const std::string& name) const {
    return FilePath::join(folder_.path().toStdString(), name);
  }
  [[nodiscard]] static QString program(const char* name) {
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + QLatin1String(name);
  }
  [[nodiscard]] QProcessEnvironment environment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&](const char* name, const std::string& value) {
      environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
    };
    set("HOME", path(""));
    set("XDG_DATA_HOME", path(".local/share"));
    set("XDG_CONFIG_HOME", path(".config"));
    set("XDG_CACHE_HOME", path(".cache"));
    set("XDG_RUNTIME_DIR", path(""));
    set("DISPLAY", screen_.name().toStdString());
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    return environment;
  }

  const MarkedScreen& screen_;
  QTemporaryDir folder_;
  QProcessEnvironment environment_;
};

void end(QProcess& process) {
  process.terminate();
  if (!process.waitForFinished()) process.kill();
  process.waitForFinished();
}

int measureRest(const QProcess& companion) {
  waitUntilQuiet(companion.processId(), std::chrono::seconds(5));
  const auto before = runningUsage(companion.processId());
  QThread::sleep(restSeconds);
  const auto after = runningUsage(companion.processId());
  const auto share = (after.processor - before.processor) / restSeconds;
  const int bytes = printTable({{"the companion at rest", after.resident, memoryLimit, 1.0}}, "bytes resident");
  return bytes | printTable({{"the companion at rest", share, restLimit, 1.0}}, "of a core");
}

int measureQuickFind(const MarkedScreen& screen, const User& user) {
  const auto before = screen.pixel(insideQuickFind);
  const auto isThere = [&] { return screen.pixel(insideQuickFind) != before; };
  std::vector<double> times;
  for (int round = 0; round <= rounds; ++round) {
    QElapsedTimer timer;
    timer.start();
    user.press(QStringLiteral("ctrl+shift+space"));
    times.push_back(secondsUntil(timer, isThere, "quick find is not seen"));
    QThread::msleep(200);
    user.press(QStringLiteral("Escape"));
    (void)secondsUntil(
        timer, [&] { return !isThere(); }, "quick find stays");
    QThread::msleep(200);
  }
  const auto first = times.front();
  times.erase(times.begin());
  return printTable({{"quick find by its keys, the first time", first, openingLimit, 1.0},
                     {"again, median", median(times), openingLimit, 1.0},
                     {"again, the slowest of 15", std::ranges::max(times), openingLimit, 1.0}},
                    "seconds from before the program that presses the keys is started");
}

int measureArrival(const MarkedScreen& screen, const User& user) {
  constexpr std::size_t besideShelf = 880;
  QProcess window;
  user.start(window, "nimbrel");
  QThread::sleep(3);
  std::vector<double> times;
  for (int round = 1; round <= 5; ++round) {
    const auto before = screen.marked(besideShelf);
    QElapsedTimer timer;
    timer.start();
    user.addPicture(round);
    times.push_back(secondsUntil(
        timer, [&] { return screen.marked(besideShelf) > before + few; }, "a new screenshot is not seen"));
    QThread::sleep(2);
  }
  end(window);
  return printTable({{"a new screenshot in the window, median", median(times), arrivalLimit, 1.0},
                     {"the same, the slowest of 5", std::ranges::max(times), arrivalLimit, 1.0}},
                    "seconds from before the file is written");
}

int runAll() {
  const QTemporaryDir folder;
  const MarkedScreen screen(folder.path());
  const User user(screen);
  QProcess companion;
  user.start(companion, "nimbrel-menubar");
  const int result = measureRest(companion) | measureQuickFind(screen, user) | measureArrival(screen, user);
  end(companion);
  return result;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  qunsetenv("QT_QPA_PLATFORM");
  return Nimbrel::Benchmarks::runAll();
}
