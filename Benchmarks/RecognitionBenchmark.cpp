// The text recognition beside the tesseract command with one thread over the same pages in the same run: how much of
// their text is found, and what that costs. With a folder as the argument, the pages and what was missed on them are
// left there.

#include "RecognitionCorpus.h"
#include "RecognitionScore.h"

#include "Reader/TextReader.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>

namespace {

using namespace Nimbrel;
using namespace Nimbrel::Benchmarks;

struct Cost {
  double cpu = 0;
  double wall = 0;
};

double cpuSeconds(int who) {
  rusage usage{};
  getrusage(who, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// Adds what the work costs this process or its children.
template <typename Work>
auto measured(Cost& cost, int who, const Work& work) {
  const auto cpu = cpuSeconds(who);
  const auto start = std::chrono::steady_clock::now();
  auto result = work();
  cost.wall += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  cost.cpu += cpuSeconds(who) - cpu;
  return result;
}

QString readByCommand(const QString& file) {
  QProcess process;
  process.setProcessChannelMode(QProcess::SeparateChannels);
  process.start(QStringLiteral("tesseract"), {file, QStringLiteral("-"), QStringLiteral("-l"), QStringLiteral("eng")});
  process.waitForFinished(-1);
  return QString::fromUtf8(process.readAllStandardOutput());
}

QString readByUs(Reader::TextReader& reader, const QString& file) {
  const auto picture = QImage(file).convertToFormat(QImage::Format_RGB32);
  auto blocks = reader.read(picture, {});
  std::ranges::stable_sort(blocks, {}, [](const TextBlock& block) { return block.rect.center().y(); });
  QStringList lines;
  for (const auto& block : blocks) lines << QString::fromStdString(block.text);
  return lines.join(u'\n');
}

void leaveMisses(const QDir& folder, const Page& page, const QString& read) {
  const auto misses = missesOf(page, read);
  QFile file(folder.filePath(page.name + QStringLiteral(".txt")));
  if (!file.open(QIODevice::WriteOnly)) return;
  file.write(QStringLiteral("missed: %1\ninvented: %2\n\n%3\n")
                 .arg(misses.missed.join(u" | "), misses.invented.join(u" | "), read)
                 .toUtf8());
}

struct Row {
  const char* name;
  double ours;
  double command;
  double target;
  bool more;  ///< better when it is more
};

int printTable(const std::vector<Row>& table) {
  std::printf("%-44s %9s %9s %9s\n", "", "ours", "command", "target");
  bool reached = true;
  for (const auto& row : table) {
    const bool good = row.more ? row.ours >= row.target : row.ours <= row.target;
    std::printf("%-44s %9.3f %9.3f %9.3f%s\n", row.name, row.ours, row.command, row.target, good ? "" : "  MISSED");
    reached = reached && good;
  }
  return reached ? 0 : 1;
}

void printKinds(const std::map<QString, Score>& kinds) {
  std::printf("\n%-16s %7s %7s %7s %7s %7s\n", "ours by kind", "W rec", "W prec", "S rec", "S prec", "CER");
  for (const auto& [kind, score] : kinds) {
    std::printf("%-16s %7.3f %7.3f %7.3f %7.3f %7.3f\n", qPrintable(kind), score.words.recall(),
                score.words.precision(), score.tokens.recall(), score.tokens.precision(), score.characterErrors());
  }
}

}  // namespace

int main(int argc, char** argv) {
  // The models' own threads would hide what the work costs; they are off in the product as well.
  // They ask the environment before main does.
  if (qgetenv("OMP_THREAD_LIMIT") != "1") {
    qputenv("OMP_THREAD_LIMIT", "1");
    execv("/proc/self/exe", argv);
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const QTemporaryDir temporary;
  const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : temporary.path());
  folder.mkpath(QStringLiteral("."));
  Reader::TextReader reader("eng");
  Score ours;
  Score command;
  Cost ourCost;
  Cost commandCost;
  std::map<QString, Score> kinds;
  double megapixels = 0;
  for (const auto& page : recognitionCorpus()) {
    const auto file = folder.filePath(page.name + QStringLiteral(".png"));
    if (!page.picture.save(file)) return 2;
    megapixels += page.picture.width() * 1e-6 * page.picture.height();
    const auto read = measured(ourCost, RUSAGE_SELF, [&] { return readByUs(reader, file); });
    const auto score = scoreOf(page, read);
    ours += score;
    kinds[page.name.section(u'-', 0, 0)] += score;
    if (argc > 1) leaveMisses(folder, page, read);
    command += scoreOf(page, measured(commandCost, RUSAGE_CHILDREN, [&] { return readByCommand(file); }));
  }
  std::printf("%d words, %.1f megapixels\n", ours.words.wanted, megapixels);
  const int result = printTable({
      {"exact words, recall", ours.words.recall(), command.words.recall(), 0.95, true},
      {"exact words, precision", ours.words.precision(), command.words.precision(), 0.93, true},
      {"search tokens, recall", ours.tokens.recall(), command.tokens.recall(), 0.97, true},
      {"search tokens, precision", ours.tokens.precision(), command.tokens.precision(), 0.97, true},
      {"character errors", ours.characterErrors(), command.characterErrors(), 0.025, false},
      {"words of 11 pixels and less, recall", ours.smallWords.recall(), command.smallWords.recall(), 0.95, true},
      {"words of more than 20 characters, recall", ours.longWords.recall(), command.longWords.recall(), 0.78, true},
      {"CPU seconds a megapixel", ourCost.cpu / megapixels, commandCost.cpu / megapixels,
       1.1 * commandCost.cpu / megapixels, false},
      {"CPU beside the command", ourCost.cpu / std::max(0.001, commandCost.cpu), 1, 1.1, false},
      {"wall time beside the command", ourCost.wall / std::max(0.001, commandCost.wall), 1, 0.7, false},
  });
  printKinds(kinds);
  return result;
}
