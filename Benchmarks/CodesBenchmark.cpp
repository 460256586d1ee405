// Codes on drawn screenshots: how many of each kind are read, how many are seen where there are none, and CPU time per
// megapixel, beside one bare call of the library for each page. Fails when a target is missed.

#include "CodePages.h"
#include "Reader/CodeFinder.h"

#include <ReadBarcode.h>

#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

using Nimbrel::Benchmarks::CodePage;

constexpr double targetShareOfLinear = .95;
constexpr double targetSecondsPerMegapixel = .03;

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

struct Tally {
  int drawn = 0;
  int read = 0;
};

struct Score {
  std::map<std::string, Tally> kinds;
  Tally all;
  Tally linear;
  Tally qr;
  int wrong = 0;
  double seconds = 0;
  double slowest = 0;  ///< seconds per megapixel of a page
  double megapixels = 0;
};

void count(Tally& tally, bool read) {
  ++tally.drawn;
  tally.read += read ? 1 : 0;
}

void judge(const CodePage& page, std::vector<std::string> payloads, Score& score) {
  for (const auto& code : page.codes) {
    const auto found = std::find(payloads.begin(), payloads.end(), code.payload);
    const bool read = found != payloads.end();
    if (read) payloads.erase(found);
    if (!read) std::printf("  not read: %s, %s\n", code.kind.c_str(), code.manner.c_str());
    count(score.kinds[code.kind], read);
    count(score.all, read);
    if (code.isLinear) count(score.linear, read);
    if (code.kind == "QR Code") count(score.qr, read);
  }
  for (const auto& payload : payloads) std::printf("  seen where there is none: %s\n", payload.c_str());
  score.wrong += static_cast<int>(payloads.size());
}

Score measure(const std::vector<CodePage>& pages) {
  Score score;
  for (const auto& page : pages) {
    const double megapixels = page.picture.width() * 1e-6 * page.picture.height();
    const auto start = threadSeconds();
    const auto codes = Nimbrel::Reader::findCodes(page.picture);
    const auto seconds = threadSeconds() - start;
    score.seconds += seconds;
    score.megapixels += megapixels;
    score.slowest = std::max(score.slowest, seconds / megapixels);
    std::vector<std::string> payloads;
    for (const auto& code : codes) payloads.push_back(code.payload);
    judge(page, std::move(payloads), score);
  }
  return score;
}

/// CPU time per megapixel of one call of the library for each page, all kinds of codes, one polarity.
double bareSeconds(const std::vector<CodePage>& pages) {
  double seconds = 0;
  double megapixels = 0;
  for (const auto& page : pages) {
    const auto grey = page.picture.convertToFormat(QImage::Format_Grayscale8);
    const ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                                static_cast<int>(grey.bytesPerLine()));
    const auto start = threadSeconds();
    static_cast<void>(ZXing::ReadBarcodes(view, ZXing::DecodeHints().setTryDownscale(false)));
    seconds += threadSeconds() - start;
    megapixels += page.picture.width() * 1e-6 * page.picture.height();
  }
  return seconds / megapixels;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const auto pages = Nimbrel::Benchmarks::codePages();
  const auto score = measure(pages);
  std::printf("%zu pages, %.0f megapixels\n", pages.size(), score.megapixels);
  for (const auto& [kind, tally] : score.kinds)
    std::printf("  %-44s %3d of %3d\n", kind.c_str(), tally.read, tally.drawn);
  std::printf("  %-44s %3d of %3d\n", "codes read", score.all.read, score.all.drawn);
  std::printf("  %-44s %3d\n", "seen where there are none", score.wrong);
  const double perMegapixel = score.seconds / score.megapixels;
  std::printf("  %-44s %.4f s, slowest page %.4f s\n", "CPU per megapixel", perMegapixel, score.slowest);
  std::printf("  %-44s %.2f\n", "that, one bare call for each page being 1", perMegapixel / bareSeconds(pages));
  const bool reached = score.qr.read == score.qr.drawn && score.wrong == 0 &&
                       score.linear.read >= targetShareOfLinear * score.linear.drawn &&
                       perMegapixel <= targetSecondsPerMegapixel;
  std::printf("%s\n", reached ? "targets reached" : "MISSED");
  return reached ? 0 : 1;
}
