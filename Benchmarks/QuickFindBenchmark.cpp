// From a key press in quick find to its painted results, and from the command to the panel on the screen, at 50,000
// shots. A child process does that, on a display with a window manager.

#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "Linux/X11/X11WindowActivation.h"
#include "Linux/X11/X11WindowFocus.h"
#include "Linux/X11/X11WindowStacking.h"
#include "MarkedScreen.h"
#include "Measure.h"
#include "Views/QuickFind/QuickFindPanel.h"
#include "Views/Shared/NimbrelStyle.h"
#include "Views/Shared/Theme.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int shotCount = 50'000;
constexpr std::size_t mostHits = 2'000;  ///< for which a frame is enough
constexpr double frame = 0.016;
constexpr double openingLimit = 0.06;
constexpr int rounds = 15;
constexpr double patience = 20;  ///< seconds
constexpr std::string_view childArgument = "--quick-find";

double secondsOf(const QElapsedTimer& timer) { return static_cast<double>(timer.nsecsElapsed()) * 1e-9; }

double median(std::vector<double> times) {
  std::ranges::sort(times);
  return times[times.size() / 2];
}

/// A user with so many shots, and quick find over them.
class Scene {
 public:
  Scene() {
    const auto home = folder_.path().toStdString();
    const auto data = FilePath::join(home, "data");
    makeCatalogue(data, FilePath::join(home, "library"), shotCount);
    store_ = Store::open(
                 {.role = ProcessRole::tool,
                  .folders = {.home = home, .applicationSupport = data, .preferences = FilePath::join(home, "config")},
                  .clock = [] { return timestamp(1'760'000'000); },
                  .services = Services(),
                  .defaults = std::make_unique<Defaults>(FilePath::join(home, "config"), "suite")})
                 .value();
    panel_ = std::make_unique<QuickFindPanel>(*store_, thumbs_, previews_,
                                              DesktopWindows{*stacking_, *focus_, *activation_});
  }

  /// Seconds from the command until the panel is on the screen.
  double open() {
    QElapsedTimer timer;
    timer.start();
    panel_->open();
    waitUntilSeen(true);
    return secondsOf(timer);
  }
  void close() {
    panel_->close();
    waitUntilSeen(false);
  }
  /// Seconds from the last key of a text until what it found is painted.
  double type(const std::string& text) {
    auto* field = panel_->window()->findChild<QLineEdit*>(QStringLiteral("quickFind.field"));
    field->setText(QString::fromStdString(text.substr(0, text.size() - 1)));
    QCoreApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    field->insert(QString::fromStdString(text.substr(text.size() - 1)));
    panel_->window()->repaint();
    return secondsOf(timer);
  }
  [[nodiscard]] std::size_t hitsOf(const std::string& text) const { return store_->matching(text).size(); }

 private:
  void waitUntilSeen(bool isSeen) const {
    const auto* window = panel_->window();
    const auto place = window->geometry().topLeft() + QPoint(0, window->height() / 2);
    QElapsedTimer timer;
    timer.start();
    while (secondsOf(timer) < patience) {
      QCoreApplication::processEvents();
      const auto pixel = QGuiApplication::primaryScreen()->grabWindow(0, place.x(), place.y(), 1, 1).toImage();
      if ((pixel.pixelColor(0, 0) == themeColor(Token::PopoverBorder)) == isSeen) return;
    }
    fail(isSeen ? "quick find is not seen" : "quick find stays");
  }

  QTemporaryDir folder_;
  std::unique_ptr<Store> store_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  std::shared_ptr<XcbConnection> connection_ = std::make_shared<XcbConnection>();
  std::unique_ptr<WindowStacking> stacking_ = makeX11WindowStacking(connection_);
  std::unique_ptr<WindowFocus> focus_ = makeX11WindowFocus(connection_);
  std::unique_ptr<WindowActivation> activation_ = makeX11WindowActivation(connection_);
  std::unique_ptr<QuickFindPanel> panel_;
};

int measureQuickFind() {
  Scene scene;
  std::vector<Comparison> table{{"the first opening of a process", scene.open(), openingLimit, 1.0}};
  std::vector<double> openings;
  for (int round = 0; round < rounds; ++round) {
    scene.close();
    openings.push_back(scene.open());
  }
  table.push_back({"another opening, median", median(openings), openingLimit, 1.0});
  table.push_back({"the same, the slowest of 15", std::ranges::max(openings), openingLimit, 1.0});
  for (const std::string text : {"moliver", "moli wy", "sanver kor", "ta re"}) {
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) times.push_back(scene.type(text));
    const auto hits = scene.hitsOf(text);
    const auto name = "the last key of a text with " + std::to_string(hits) + " hits";
    // More take longer to be found by the database alone.
    const auto frames = hits <= mostHits ? 1.0 : 1.0 + static_cast<double>(hits) / mostHits;
    table.push_back({name, median(times), frame, frames});
  }
  return printTable(table, "seconds until it is painted");
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  using namespace Nimbrel::Benchmarks;
  if (argc > 1 && argv[1] == childArgument) {
    QApplication application(argc, argv);
    Nimbrel::installDesign(application);
    return measureQuickFind();
  }
  const QCoreApplication application(argc, argv);
  return runAgainOnScreen(childArgument);
}
