// From the start of the program to the pictures on the screen, and the memory it then has, beside the picture viewers
// that people have: a folder of 2,000 pictures of one size, on a display of its own, everything in the cache of files.
// The pictures have a colour that no program's own parts have, so that what counts is seen on the screen itself.

#include "Catalogue/Database.h"
#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "GeeqieSetup.h"
#include "MarkedScreen.h"
#include "Measure.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "ScreenScene.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int pictures = 2'000;
constexpr int distinctPictures = 12;
constexpr int rounds = 5;
constexpr std::size_t few = 40;  ///< marked pixels that were looked at, less than any picture shows
constexpr double settled = 1.5;  ///< seconds without a change that end the wait
constexpr double patience = 20;  ///< seconds
constexpr int notches = 1'300;   ///< of the wheel, through all pictures
constexpr int notchPause = 25;   ///< milliseconds

/// A home with the pictures, and what Nimbrel knows of them.
class Home {
 public:
  explicit Home(int olderRows) {
    if (olderRows > 0) {
      makeCatalogue(data(), path("Pictures/Nimbrel"), olderRows);
      makeLibraryFiles(path("Pictures/Nimbrel"), olderRows);
    }
    QDir().mkpath(QString::fromStdString(pictureFolder()));
    makePictures();
    fillCatalogue();
  }

  [[nodiscard]] std::string pictureFolder() const { return path("Desktop"); }
  [[nodiscard]] QProcessEnvironment environment(const QString& display) const {
    auto environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&](const char* name, const std::string& value) {
      environment.insert(QString::fromLatin1(name), QString::fromStdString(value));
    };
    set("HOME", path(""));
    set("XDG_DATA_HOME", path(".local/share"));
    set("XDG_CONFIG_HOME", path(".config"));
    set("XDG_CACHE_HOME", path(".cache"));
    set("XDG_RUNTIME_DIR", path(""));
    environment.insert(QStringLiteral("DISPLAY"), display);
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    return environment;
  }

 private:
  [[nodiscard]] std::string path(const std::string& name) const {
    return FilePath::join(folder_.path().toStdString(), name);
  }
  [[nodiscard]] std::string data() const { return path(".local/share/Nimbrel"); }
  [[nodiscard]] std::string picture(int number) const {
    return FilePath::join(pictureFolder(), "Screenshot " + std::to_string(10'000 + number) + ".png");
  }

  void makePictures() const {
    const ScreenScene scene;
    for (int number = 0; number < pictures; ++number) {
      if (number >= distinctPictures) {
        if (::link(picture(number % distinctPictures).c_str(), picture(number).c_str()) != 0) fail("cannot link");
        continue;
      }
      auto image = scene.frame(number * 10);
      QPainter(&image).fillRect(image.rect().adjusted(300, 200, -300, -200), MarkedScreen::mark);
      image.save(QString::fromStdString(picture(number)));
    }
  }
  /// As if all had been read.
  void fillCatalogue() const {
    const auto database = Database::open(FilePath::join(data(), "nimbrel.sqlite")).value();
    const Database::QuickCommits quickly(*database);
    for (int number = 0; number < pictures; ++number) {
      Shot shot;
      shot.path = picture(number);
      shot.name = std::string(FilePath::lastComponent(shot.path));
      shot.date = shot.added = timestamp(1'790'000'000 + number);
      shot.width = ScreenScene::size.width();
      shot.height = ScreenScene::size.height();
      const auto id = database->insert(shot);
      database->setOCR(id, "some words of text " + std::to_string(number), {});
      database->setCodes(id, {});
      database->setHash(id, number + 1);
    }
  }

  QTemporaryDir folder_;
};

/// What is seen of a start.
struct Start {
  double first = patience;  ///< seconds to the first picture
  double last = patience;   ///< seconds to the last one of the first screen
  double memory = 0;        ///< bytes, proportional
};

double proportionalMemory(qint64 process) {
  QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(process));
  if (!file.open(QIODevice::ReadOnly)) return 0;
  for (const auto& line : file.readAll().split('\n')) {
    if (line.startsWith("Pss:")) return line.mid(4).chopped(2).trimmed().toDouble() * 1024;
  }
  return 0;
}

Start started(const MarkedScreen& screen, const Home& home, const QString& program, const QStringList& arguments,
              const std::function<void(const QProcess& process)>& then = {}) {
  QProcess process;
  process.setProcessEnvironment(home.environment(screen.name()));
  process.setStandardErrorFile(QProcess::nullDevice());
  process.setStandardOutputFile(QProcess::nullDevice());
  QElapsedTimer clock;
  const auto seconds = [&clock] { return static_cast<double>(clock.nsecsElapsed()) * 1e-9; };
  clock.start();
  process.start(program, arguments);
  Start start;
  std::size_t seen = 0;
  while (seconds() < patience && (seen <= few || seconds() - start.last < settled)) {
    const auto marked = screen.marked();
    if (marked != seen && marked > few) start.last = seconds();
    if (marked > few && seen <= few) start.first = seconds();
    seen = marked;
    QThread::usleep(1000);
  }
  start.memory = proportionalMemory(process.processId());
  if (then) then(process);
  process.terminate();
  if (!process.waitForFinished()) process.kill();
  process.waitForFinished();
  while (screen.marked() > few) QThread::usleep(1000);
  return start;
}

/// What we have once the wheel has gone through all pictures.
double memoryAfterScrolling(const MarkedScreen& screen, const Home& home, const QString& program) {
  double memory = 0;
  (void)started(screen, home, program, {}, [&](const QProcess& process) {
    QProcess wheel;
    wheel.setProcessEnvironment(home.environment(screen.name()));
    wheel.start(QStringLiteral("xdotool"),
                {QStringLiteral("mousemove"), QStringLiteral("600"), QStringLiteral("500"), QStringLiteral("click"),
                 QStringLiteral("--repeat"), QString::number(notches), QStringLiteral("--delay"),
                 QString::number(notchPause), QStringLiteral("5")});
    if (!wheel.waitForFinished(-1) || wheel.exitCode() != 0) fail("xdotool does not scroll");
    QThread::sleep(3);
    memory = proportionalMemory(process.processId());
  });
  return memory;
}

/// The median of the rounds, after one that warms everything.
std::vector<Start> medians(const MarkedScreen& screen, const std::vector<std::pair<const Home*, QString>>& programs) {
  std::vector<std::vector<Start>> starts(programs.size());
  for (int round = 0; round <= rounds; ++round) {
    for (std::size_t i = 0; i < programs.size(); ++i) {
      const auto& [home, program] = programs[i];
      const bool isOurs = program.contains(QLatin1String("nimbrel"));
      const auto folder = QString::fromStdString(home->pictureFolder());
      const auto start = started(screen, *home, program, isOurs ? QStringList() : QStringList{folder});
      if (round > 0) starts[i].push_back(start);
    }
  }
  std::vector<Start> result;
  for (auto& each : starts) {
    const auto median = [&each](double Start::*value) {
      std::ranges::sort(each, {}, value);
      return each[each.size() / 2].*value;
    };
    result.push_back({median(&Start::first), median(&Start::last), median(&Start::memory)});
  }
  return result;
}

/// As it runs from the login on.
class Companion {
 public:
  Companion(const MarkedScreen& screen, const Home& home, const QString& program) {
    process_.setProcessEnvironment(home.environment(screen.name()));
    process_.start(program, QStringList());
    process_.waitForStarted();
    QThread::sleep(3);
  }
  ~Companion() {
    process_.terminate();
    process_.waitForFinished();
  }
  Companion(const Companion&) = delete;
  Companion& operator=(const Companion&) = delete;

 private:
  QProcess process_;
};

int runAll() {
  const QTemporaryDir folder;
  const MarkedScreen screen(folder.path());
  const Home home(0);
  const Home large(98'000);
  const auto program = QCoreApplication::applicationDirPath() + QStringLiteral("/nimbrel");
  const Companion companion(screen, home, program + QStringLiteral("-menubar"));
  const Companion other(screen, large, program + QStringLiteral("-menubar"));
  const std::vector<std::pair<const Home*, QString>> programs{{&home, program},
                                                              {&large, program},
                                                              {&home, QStringLiteral("geeqie")},
                                                              {&home, QStringLiteral("gwenview")},
                                                              {&home, QStringLiteral("gthumb")}};
  letGeeqieShowThumbnails(home.environment(screen.name()), QString::fromStdString(home.pictureFolder()));
  const auto starts = medians(screen, programs);
  for (std::size_t i = 0; i < programs.size(); ++i) {
    std::printf("%-12s%s first picture %6.3f s, last %6.3f s, %6.1f MB\n",
                programs[i].second.section(QLatin1Char('/'), -1).toStdString().c_str(), i == 1 ? " (100,000)" : "",
                starts[i].first, starts[i].last, starts[i].memory / 1e6);
  }
  const int seconds = printTable({{"first pictures beside geeqie", starts[0].first, starts[2].first, 0.5},
                                  {"all visible pictures beside geeqie", starts[0].last, starts[2].last, 0.4},
                                  {"first pictures of 100,000 beside 2,000", starts[1].first, starts[0].first, 1.3},
                                  {"all visible of 100,000 beside 2,000", starts[1].last, starts[0].last, 1.3}},
                                 "seconds");
  const auto scrolled = memoryAfterScrolling(screen, home, program);
  const int bytes = printTable({{"first screen beside gwenview", starts[0].memory, starts[3].memory, 0.8},
                                {"after scrolling through all beside that", scrolled, starts[3].memory, 2.0}},
                               "bytes");
  return seconds | bytes;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  qunsetenv("QT_QPA_PLATFORM");
  return Nimbrel::Benchmarks::runAll();
}
