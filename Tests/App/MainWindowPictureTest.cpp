#include "App/MainProcess.h"

#include "Support/Pictures.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"
#include "Views/Gallery/Filmstrip.h"
#include "Views/Gallery/GridView.h"
#include "Views/Gallery/MultiSelectionView.h"
#include "Views/Gallery/PageStrip.h"
#include "Views/Inspector/InspectorView.h"
#include "Views/Shared/Theme.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::shotNamed;
using Testing::waitUntil;

constexpr QSize pictureSize(640, 400);
/// From the corner of a cell.
constexpr QPoint insideThePicture(10, 40);
/// In the window at its first size.
constexpr QPoint inspectorPicture(970, 138);
constexpr QPoint largePicture(520, 330);

/// The whole main window over a library with pictures of its own, in both schemes and at both scales.
class MainWindowPicture : public ::testing::TestWithParam<std::tuple<bool, int>> {
 protected:
  MainWindowPicture() {
    Theme::shared().setAppearance({.scheme = isDark() ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    QCoreApplication::sendPostedEvents();
    Services services;
    const WindowServices windowServices(services);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    fillLibrary();
    process_ = std::make_unique<MainProcess>(*store_, windowServices);
    process_->raise();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    // To where nothing is marked for it.
    QTest::mouseMove(window().windowHandle(), {400, 24});
  }
  ~MainWindowPicture() override {
    process_.reset();
    Theme::shared().setAppearance({});
  }

  [[nodiscard]] static bool isDark() { return std::get<0>(GetParam()); }
  [[nodiscard]] static int scale() { return std::get<1>(GetParam()); }
  [[nodiscard]] ContentView& window() { return process_->window(); }

  ShotID add(const std::string& name, double hoursAgo, const std::string& app, const std::string& text,
             const std::vector<std::string>& sensitive = {}) {
    const auto path = home_.path(name);
    Testing::writePicture(path, pictureSize.width(), pictureSize.height(), ++seed_);
    Shot shot;
    shot.path = path;
    shot.name = name;
    shot.date = home_.now - Seconds(3600 * hoursAgo);
    shot.added = shot.date;
    shot.bytes = QFileInfo(QString::fromStdString(path)).size();
    shot.width = pictureSize.width();
    shot.height = pictureSize.height();
    shot.captureType = app.empty() ? "selection" : "window";
    shot.filed = !app.empty();
    const auto id = store_->database().insert(shot);
    if (!app.empty()) store_->database().setApp(id, app, "", Database::Trusted::Yes);
    store_->database().setOCR(id, text, sensitive);
    return id;
  }
  void fillLibrary() {
    const Database::QuickCommits quickly(store_->database());
    auto& settings = store_->settings();
    settings.thumbSize.set(178);
    settings.savedSearches.set({"halden invoice"});
    add("Halden-3 flight telemetry.png", 1, "Firefox", "Halden-3 flight telemetry Altitude 412 km Velocity 7.66 km/s");
    add("Screenshot 2026-03-08 14-05-32.png", 1.2, "", "const halden = openLink(\"halden-3\", {");
    add("Passwords.png", 2, "", "halden password hunter2", {"Password"});
    store_->database().setFavorite(add("Morvanthile perigee table.png", 3, "Morvanthile", "Halden-3 Perigee table"),
                                   true);
    add("Launch day channel.png", 4, "", "halden team launch day");
    add("Export failed.png", 5, "", "The halden mission report could not be exported");
    add("Halden ground site.png", 24, "Firefox", "Halden ground site");
    add("Halden launch board.png", 25, "Firefox", "Halden launch Board Sprint 14");
    store_->database().setFavorite(add("Ground station field pack.png", 26, "Firefox", "halden shop"), true);
    add("Launch day checklist.png", 27, "Text Editor", "halden checklist");
    store_->reload();
    store_->assignProject("Halden Launch", {shotNamed(*store_, "Halden ground site.png")});
    for (const auto* tag : {"bug", "reference"}) store_->addTag(tag, {shotNamed(*store_, "Export failed.png")});
    store_->setStatus("");
    store_->setFilter({Filter::All{}});
  }

  void choose(const std::vector<std::string>& names) {
    ShotIDSet ids;
    for (const auto& name : names) ids.insert(shotNamed(*store_, name)->id);
    store_->setSelection(ids);
  }
  template <class Widget>
  [[nodiscard]] bool isSeen() {
    const auto widgets = window().findChildren<Widget*>();
    return std::ranges::any_of(widgets, &QWidget::isVisible);
  }
  /// Whether there is a picture, and not what stands for one, at that place of the window.
  [[nodiscard]] static bool hasPicture(const QImage& image, QPoint place) {
    const auto color = at(image, place);
    return color != themeColor(Token::Quaternary) && color != themeColor(Token::Base) &&
           color != themeColor(Token::Window);
  }
  template <class View>
  [[nodiscard]] bool cellsHavePictures(const QImage& image, QWidget& (*canvas)(View&)) {
    for (auto* view : window().findChildren<View*>()) {
      for (std::size_t cell = 0; cell < view->cellCount(); ++cell) {
        const auto place = view->cellPlace(cell).topLeft() + insideThePicture;
        if (!canvas(*view).rect().contains(place) || view->cellName(cell).startsWith(QStringLiteral("Sensitive"))) {
          continue;
        }
        if (!hasPicture(image, canvas(*view).mapTo(&window(), place))) return false;
      }
    }
    return true;
  }
  /// What the window looks like with all pictures there, those of the given places of the window among them.
  [[nodiscard]] QImage settled(const std::vector<QPoint>& places = {}) {
    QImage image;
    EXPECT_TRUE(waitUntil([&] {
      image = drawn();
      return cellsHavePictures<GridView>(image, [](GridView& view) -> QWidget& { return *view.viewport(); }) &&
             cellsHavePictures<Filmstrip>(image, [](Filmstrip& view) -> QWidget& { return view; }) &&
             std::ranges::all_of(places, [&image](QPoint place) { return hasPicture(image, place); });
    }));
    return image;
  }
  [[nodiscard]] QImage drawn() {
    QImage image(window().size() * scale(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale());
    image.fill(Qt::transparent);
    window().render(&image);
    return image;
  }
  static void keep(const QImage& image, const QString& what) {
    const QDir folder(QStringLiteral(NIMBREL_PICTURES));
    folder.mkpath(QStringLiteral("."));
    const auto look = isDark() ? QStringLiteral("dark") : QStringLiteral("light");
    EXPECT_TRUE(image.save(folder.filePath(QStringLiteral("main-window-%1-%2-%3x.png").arg(what, look).arg(scale()))));
  }
  [[nodiscard]] static QColor at(const QImage& image, QPoint place) { return image.pixelColor(place * scale()); }

  Testing::StoreHome home_;
  std::unique_ptr<Store> store_;
  std::unique_ptr<MainProcess> process_;
  int seed_ = 0;
};

TEST_P(MainWindowPicture, OfASearchWithOneShotSelected) {
  store_->setQuery("halden");
  store_->runSearch();
  choose({"Halden-3 flight telemetry.png"});
  const auto image = settled({inspectorPicture});
  keep(image, QStringLiteral("grid"));
  EXPECT_EQ(window().size(), QSize(1120, 720));
  EXPECT_TRUE(isSeen<InspectorView>());
  EXPECT_TRUE(isSeen<GridView>());
  EXPECT_EQ(at(image, {2, 700}), themeColor(Token::Sidebar));
  EXPECT_EQ(at(image, {230, 100}), themeColor(Token::Base)) << "above the first day";
  EXPECT_EQ(at(image, {230, 112}), themeColor(Token::Bar)) << "the title of the first day";
  EXPECT_EQ(at(image, {238, 204}), themeColor(Token::Accent)) << "the stroke of the selected cell";
  EXPECT_EQ(at(image, {819, 400}), themeColor(Token::Separator));
}

TEST_P(MainWindowPicture, OfTheGallery) {
  choose({"Morvanthile perigee table.png"});
  store_->settings().galleryLayout.set(GalleryLayout::gallery);
  const auto image = settled({inspectorPicture, largePicture});
  keep(image, QStringLiteral("gallery"));
  EXPECT_TRUE(isSeen<InspectorView>());
  EXPECT_TRUE(isSeen<PageStrip>());
  EXPECT_EQ(at(image, {520, 607}), themeColor(Token::Separator)) << "the rule above the filmstrip";
  EXPECT_EQ(at(image, {224, 612}), themeColor(Token::Bar));
}

TEST_P(MainWindowPicture, OfSeveralSelectedShots) {
  choose({"Halden-3 flight telemetry.png", "Launch day channel.png", "Export failed.png"});
  const auto image = settled();
  keep(image, QStringLiteral("several"));
  EXPECT_TRUE(isSeen<MultiSelectionView>());
  EXPECT_EQ(at(image, {840, 70}), themeColor(Token::Group));
}

TEST_P(MainWindowPicture, OfTheSmallestWindow) {
  window().resize(window().minimumSize());
  choose({"Passwords.png"});
  keep(settled(), QStringLiteral("smallest"));
  EXPECT_EQ(window().size(), QSize(1000, 600));
}

INSTANTIATE_TEST_SUITE_P(Looks, MainWindowPicture, ::testing::Combine(::testing::Bool(), ::testing::Values(1, 2)));

}  // namespace
}  // namespace Nimbrel
