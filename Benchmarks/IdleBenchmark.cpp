// What a worker with nothing to do costs: processor time and memory over ten minutes, or as many seconds as are given,
// with a catalogue of 50,000 shots.

#include "CatalogueMaker.h"
#include "RunningProgram.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

namespace Nimbrel::Benchmarks {
namespace {

using namespace std::chrono_literals;

constexpr int shots = 50'000;
constexpr double largestShare = 0.002;
constexpr double largestGrowth = 2e6;

QProcessEnvironment environmentIn(const QString& home) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("HOME"), home);
  environment.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/.local/share"));
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
  environment.insert(QStringLiteral("XDG_CACHE_HOME"), home + QStringLiteral("/.cache"));
  return environment;
}

int measure(const QString& program, std::chrono::seconds time) {
  const QTemporaryDir home;
  const auto folder = home.path().toStdString();
  makeCatalogue(folder + "/.local/share/Nimbrel", folder + "/Pictures/Nimbrel", shots);
  makeLibraryFiles(folder + "/Pictures/Nimbrel", shots);
  QProcess worker;
  worker.setProcessEnvironment(environmentIn(home.path()));
  worker.start(program, QStringList());
  if (!worker.waitForStarted()) return EXIT_FAILURE;
  waitUntilQuiet(worker.processId(), 5s);
  const auto before = runningUsage(worker.processId());
  std::this_thread::sleep_for(time);
  const auto after = runningUsage(worker.processId());
  worker.terminate();
  worker.waitForFinished();

  const double share = (after.processor - before.processor) / static_cast<double>(time.count());
  std::printf("a worker with %d shots, %lld s at rest: %.2f s of processor time, %.3f %% of a core (target %.1f %%)\n",
              shots, static_cast<long long>(time.count()), after.processor - before.processor, share * 100,
              largestShare * 100);
  std::printf("resident memory: %.1f MB at the start, %.1f MB at the end\n", before.resident / 1e6,
              after.resident / 1e6);
  return share < largestShare && after.resident - before.resident < largestGrowth ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto worker = QCoreApplication::applicationDirPath() + QStringLiteral("/nimbrel-menubar");
  return Nimbrel::Benchmarks::measure(worker, std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 600));
}
