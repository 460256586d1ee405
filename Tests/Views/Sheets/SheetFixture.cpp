#include "Views/Sheets/SheetFixture.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Shared/Placeholder.h"
#include "Views/Shared/Theme.h"

#include <QApplication>
#include <QDir>
#include <QStackedWidget>
#include <QTableView>

#include <filesystem>

namespace Nimbrel::Testing {

namespace {

constexpr double secondsPerDay = 86'400;

template <class Fake, class Service>
Fake* replace(std::unique_ptr<Service>& service) {
  auto fake = std::make_unique<Fake>();
  auto* borrowed = fake.get();
  service = std::move(fake);
  return borrowed;
}

/// The application hands the colours on to its windows in later turns of the event loop.
void awaitColors(const QWidget& window) {
  EXPECT_TRUE(waitUntil([&] { return window.palette().color(QPalette::Window) == themeColor(Token::Window); }));
}

}  // namespace

SheetFixture::SheetFixture() {
  Services services;
  trash_ = replace<FakeTrash>(services.trash);
  owner_ = replace<FakeOwnerAuthentication>(services.ownerAuthentication);
  workspace_ = replace<FakeWorkspace>(services.workspace);
  pasteboard_ = replace<FakePasteboard>(services.pasteboard);
  store_ = home_.open(ProcessRole::tool, std::move(services));
  window_.resize(1120, 720);
  window_.show();
}

SheetFixture::~SheetFixture() = default;

ShotPtr SheetFixture::add(const NewShot& given) {
  Shot shot;
  shot.path = home_.desktop(given.name);
  shot.name = given.name;
  shot.date = home_.now - Seconds(given.daysAgo * secondsPerDay);
  shot.added = home_.now;
  shot.bytes = given.bytes;
  shot.filed = given.filed;
  auto& database = store_->database();
  const auto id = database.insert(shot);
  if (given.favorite) database.setFavorite(id, true);
  if (given.hash != 0) database.setHash(id, given.hash);
  if (given.text) database.setOCR(id, *given.text, given.sensitive);
  store_->reload();
  return shotNamed(*store_, given.name);
}

void SheetFixture::addFile(const std::string& name, int seed) const {
  writePicture(home_.desktop(name), 240, 160, seed);
}

std::string SheetFixture::footerOf(const QWidget& sheet) {
  return in<QLabel>(sheet, "footerText")->text().toStdString();
}

std::vector<std::string> SheetFixture::columnOf(const QWidget& sheet, int column) {
  const auto* model = in<QTableView>(sheet, "shotTable")->model();
  std::vector<std::string> texts;
  for (int row = 0; row < model->rowCount(); ++row) {
    texts.push_back(model->index(row, column).data().toString().toStdString());
  }
  return texts;
}

std::string SheetFixture::placeholderOf(const QWidget& sheet) {
  const auto* placeholder = sheet.findChild<Placeholder*>();
  if (placeholder == nullptr || !placeholder->isVisibleTo(&sheet)) return {};
  return (placeholder->accessibleName() + QLatin1String(": ") + placeholder->accessibleDescription()).toStdString();
}

std::vector<std::string> SheetFixture::trashed() const {
  std::vector<std::string> names;
  if (trash_->asked.empty()) return names;
  for (const auto& path : trash_->asked.back()) names.push_back(std::filesystem::path(path).filename());
  return names;
}

void SheetFixture::keepPictures(QWidget& window, const QString& what) {
  const QDir folder(QStringLiteral(NIMBREL_PICTURES));
  folder.mkpath(QStringLiteral("."));
  for (const bool isDark : {false, true}) {
    Theme::shared().setAppearance({.scheme = isDark ? Appearance::Scheme::Dark : Appearance::Scheme::Light,
                                   .accent = {},
                                   .hasHighContrast = false});
    awaitColors(window);
    for (const int scale : {1, 2}) {
      QImage image(window.size() * scale, QImage::Format_ARGB32_Premultiplied);
      image.setDevicePixelRatio(scale);
      image.fill(Qt::transparent);
      window.render(&image);
      const auto name = QStringLiteral("%1-%2-%3x.png")
                            .arg(what, isDark ? QStringLiteral("dark") : QStringLiteral("light"))
                            .arg(scale);
      EXPECT_TRUE(image.save(folder.filePath(name)));
    }
  }
  Theme::shared().setAppearance({});
  awaitColors(window);
}

}  // namespace Nimbrel::Testing
