// What a worker with nothing to do costs: processor time and memory over ten minutes, or as many seconds as are given,
// with a catalogue of 50,000 shots.

#include "CatalogueMaker.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace Nimbrel::Benchmarks {
namespace {

using namespace std::chrono_literals;

constexpr int shots = 50'000;
constexpr double largestShare = 0.002;
constexpr double largestGrowth = 2e6;

/// What the kernel counts for a process: the processor time that it has used, in seconds, and its memory in bytes.
struct Usage {
  double processor = 0;
  double resident = 0;
};

Usage usageOf(qint64 process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(file, line);
  // The name of the program stands in brackets and may hold blanks.
  std::istringstream fields(line.substr(line.rfind(')') + 1));
  constexpr int userTicks = 12;
  constexpr int pages = 22;
  std::string field;
  Usage usage;
  for (int number = 1; fields >> field; ++number) {
    if (number == userTicks || number == userTicks + 1) {
      usage.processor += std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    if (number == pages) usage.resident = std::stod(field) * static_cast<double>(sysconf(_SC_PAGESIZE));
  }
  return usage;
}

/// Waits until the process has used no processor time for so long.
void waitUntilQuiet(qint64 process, std::chrono::seconds quiet) {
  auto since = std::chrono::steady_clock::now();
  for (double used = -1; std::chrono::steady_clock::now() - since < quiet; std::this_thread::sleep_for(100ms)) {
    const auto now = usageOf(process).processor;
    if (now - used < 0.02) continue;
    used = now;
    since = std::chrono::steady_clock::now();
  }
}

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
  const auto before = usageOf(worker.processId());
  std::this_thread::sleep_for(time);
  const auto after = usageOf(worker.processId());
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
