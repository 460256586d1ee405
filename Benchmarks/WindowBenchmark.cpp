// How long the main window keeps its thread at 100,000 shots: in one piece while it takes in what another process has
// changed, and in all for a key in the search field.

#include "App/MainProcess.h"
#include "Catalogue/SearchQuery.h"
#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "Measure.h"
#include "Views/Shared/NimbrelStyle.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int shotCount = 100'000;
constexpr double frame = 0.016;
constexpr int rounds = 7;

double secondsOf(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) * 1e-9; }

double medianOf(std::vector<double> times) {
  std::ranges::sort(times);
  return times[times.size() / 2];
}

/// Remembers the longest event: what runs in one stretch, with nothing else in between.
class MeasuredApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_ > 0) return QApplication::notify(receiver, event);
    ++depth_;
    QElapsedTimer timer;
    timer.start();
    const std::string name = receiver->metaObject()->className();
    const auto type = event->type();
    const bool result = QApplication::notify(receiver, event);
    const auto took = secondsOf(timer);
    if (took > longest) {
      longest = took;
      longestName = name + ", event " + std::to_string(type);
    }
    --depth_;
    return result;
  }

  double longest = 0;
  std::string longestName;

 private:
  int depth_ = 0;
};

/// A user with a catalogue whose files do not exist, and the main window over it.
class Scene {
 public:
  Scene()
      : folders_{.home = folder_.path().toStdString(),
                 .applicationSupport = FilePath::join(folder_.path().toStdString(), "data"),
                 .preferences = FilePath::join(folder_.path().toStdString(), "config")} {
    makeCatalogue(folders_.applicationSupport, FilePath::join(folders_.home, "library"), shotCount);
    Services services;
    const WindowServices windowServices(services);
    store_ = Store::open({.role = ProcessRole::mainApplication,
                          .folders = folders_,
                          .clock = [] { return timestamp(1'760'000'000); },
                          .services = std::move(services),
                          .defaults = std::make_unique<Defaults>(folders_.preferences, "suite")})
                 .value();
    store_->setFilter({Filter::All{}});
    process_ = std::make_unique<MainProcess>(*store_, windowServices);
    process_->raise();
    const auto file = FilePath::join(folders_.applicationSupport, "nimbrel.sqlite");
    sqlite3_open(file.c_str(), &other_);
  }
  ~Scene() { sqlite3_close(other_); }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  [[nodiscard]] Store& store() { return *store_; }
  [[nodiscard]] QWidget& window() { return process_->window(); }
  /// As another process does.
  void writeElsewhere(const std::string& statement) {
    sqlite3_exec(other_, statement.c_str(), nullptr, nullptr, nullptr);
  }
  [[nodiscard]] std::size_t hitsOf(const std::string& expression) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(other_, "SELECT rowid FROM shots_fts WHERE shots_fts MATCH ?", -1, &statement, nullptr);
    sqlite3_bind_text(statement, 1, expression.c_str(), -1, SQLITE_TRANSIENT);
    std::size_t hits = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) ++hits;
    sqlite3_finalize(statement);
    return hits;
  }

 private:
  QTemporaryDir folder_;
  UserFolders folders_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<MainProcess> process_;
  sqlite3* other_ = nullptr;
};

/// From the change of another process until the window shows it.
Comparison reloaded(MeasuredApplication& application, Scene& scene, const std::string& name,
                    const std::function<std::string(int round)>& change) {
  std::vector<double> longest;
  for (int round = 0; round < rounds; ++round) {
    scene.writeElsewhere(change(round));
    bool isTold = false;
    const auto told = QObject::connect(&scene.store(), &Store::shotsChanged, [&] { isTold = true; });
    application.longest = 0;
    QElapsedTimer timer;
    timer.start();
    QTimer::singleShot(0, &scene.store(), &Store::poll);
    while (!isTold) QCoreApplication::processEvents();
    const auto seen = secondsOf(timer);
    for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
    QObject::disconnect(told);
    longest.push_back(application.longest);
    std::printf("%-40s %6.1f ms until it is told, longest piece %6.1f ms (%s)\n", name.c_str(), seen * 1000,
                application.longest * 1000, application.longestName.c_str());
  }
  return {name, medianOf(longest), frame, 1.0};
}

/// From the last key of a word in the search field until its hits are painted.
Comparison searched(Scene& scene, const std::string& word) {
  auto* field = scene.window().findChild<QLineEdit*>(QStringLiteral("searchField"));
  std::vector<double> ours;
  std::vector<double> bare;
  const auto expression = matchExpression(word);
  std::size_t hits = 0;
  for (int round = 0; round < rounds; ++round) {
    field->setText(QString::fromStdString(word.substr(0, word.size() - 1)));
    for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    hits = scene.hitsOf(expression);
    bare.push_back(secondsOf(timer));
    timer.start();
    QTest::keyClick(field, word.back());
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
    ours.push_back(secondsOf(timer));
  }
  const auto limit = hits <= 2000 ? frame : 1.2 * medianOf(bare) + frame;
  std::printf("%-40s %zu hits, %6.1f ms; the statement %6.1f ms\n", word.c_str(), hits, medianOf(ours) * 1000,
              medianOf(bare) * 1000);
  return {"the last key of \"" + word + "\", " + std::to_string(hits) + " hits", medianOf(ours), limit, 1.0};
}

int runAll(MeasuredApplication& application) {
  Scene scene;
  for (int turn = 0; turn < 50; ++turn) QCoreApplication::processEvents();
  std::vector<Comparison> rows;
  rows.push_back(reloaded(application, scene, "one row becomes a favourite", [](int round) {
    return "UPDATE shots SET favorite = 1 - favorite WHERE id = " + std::to_string(50 + round);
  }));
  rows.push_back(reloaded(application, scene, "a row comes", [](int round) {
    return "INSERT INTO shots (path, name, date, added, ocr) VALUES ('/x/" + std::to_string(round) + ".png', '" +
           std::to_string(round) + ".png', " + std::to_string(1'760'000'000 + round) + ", 1760000000, 'new')";
  }));
  rows.push_back(reloaded(application, scene, "a thousand rows change", [](int round) {
    return "UPDATE shots SET note = 'x" + std::to_string(round) + "' WHERE id <= 1000";
  }));
  for (const auto* word : {"invoice", "the", "halden"}) rows.push_back(searched(scene, word));
  return printTable(rows, "seconds of the main thread");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  Nimbrel::Benchmarks::MeasuredApplication application(argc, argv);
  Nimbrel::installDesign(application);
  return Nimbrel::Benchmarks::runAll(application);
}
