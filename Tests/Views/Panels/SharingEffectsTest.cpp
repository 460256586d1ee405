#include "Linux/Desktop/DesktopWorkspace.h"
#include "Linux/Desktop/QtPasteboard.h"
#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Pictures.h"
#include "Support/StoreHome.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"
#include "Views/Panels/SharingMenu.h"

#include <gmock/gmock.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

namespace {

using Testing::EnvironmentVariable;
using Testing::StoreHome;
using Testing::TemporaryFolder;
using Testing::waitUntil;

/// A desktop with programs of the test's own, each of which notes down what it was started with. Installed once, since
/// the library may take a while to hear of a change.
class Desktop {
 public:
  Desktop() : applications_(qgetenv("XDG_DATA_HOME").toStdString() + "/applications/") {
    folder_.makeFolder("bin");
    std::filesystem::create_symlink("/bin/mv", folder_.path("bin/mv"));
    addProgram("xdg-email");
    addProgram("blueman-sendto");
    Testing::installDesktopEntry(qgetenv("XDG_DATA_HOME").toStdString(), "org.example.Painting",
                                 "Name=Painting\nMimeType=image/png;\nExec=" + addProgram("painting") + " --edit %f\n");
    // As the desktop gathers it from its entries.
    std::ofstream(applications_ + "mimeinfo.cache") << "[MIME Cache]\nimage/png=org.example.Painting.desktop;\n";
    searchPath_.emplace("PATH", folder_.path("bin"));
  }
  ~Desktop() {
    std::filesystem::remove(applications_ + "org.example.Painting.desktop");
    std::filesystem::remove(applications_ + "mimeinfo.cache");
  }

  [[nodiscard]] std::string noteOf(const std::string& program) const { return folder_.path(program + ".note"); }

 private:
  std::string addProgram(const std::string& name) const {
    const auto note = noteOf(name);
    const auto program = folder_.write("bin/" + name, "#!/bin/sh\nprintf '%s|' \"$@\" > '" + note + ".part' && mv '" +
                                                          note + ".part' '" + note + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return program;
  }

  std::string applications_;
  TemporaryFolder folder_;
  std::optional<EnvironmentVariable> searchPath_;
};

class SharingEffects : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { desktop_.emplace(); }
  static void TearDownTestSuite() { desktop_.reset(); }

  SharingEffects() {
    for (const auto* program : {"xdg-email", "blueman-sendto", "painting"}) {
      std::filesystem::remove(desktop_->noteOf(program));
    }
    Services services;
    services.workspace = makeDesktopWorkspace();
    services.pasteboard = makeQtPasteboard(nullptr);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    Testing::writePicture(path_);
    store_->importFiles({path_});
    window_.show();
    menu_ = new SharingMenu(*store_, Testing::shotNamed(*store_, "Screenshot 1.png"), &window_);
    menu_->popup({});
  }

  /// What the program was started with, once it was.
  [[nodiscard]] static std::string startedWith(const std::string& program) {
    const auto note = desktop_->noteOf(program);
    if (!waitUntil([&] { return std::filesystem::exists(note); })) return "nothing";
    return Testing::contentOf(note);
  }
  void choose(const char* name) const {
    auto* action = menu_->findChild<QAction*>(QString::fromLatin1(name));
    ASSERT_NE(action, nullptr);
    action->trigger();
  }

  static inline std::optional<Desktop> desktop_;
  StoreHome home_;
  std::string path_ = home_.desktop("Screenshot 1.png");
  std::unique_ptr<Store> store_;
  QWidget window_;
  QPointer<SharingMenu> menu_;
};

TEST_F(SharingEffects, CopyFileOffersTheFileOnTheClipboard) {
  choose("share.copyFile");
  const auto* offered = QGuiApplication::clipboard()->mimeData();
  ASSERT_TRUE(offered->hasUrls());
  EXPECT_EQ(offered->urls(), QList<QUrl>{QUrl::fromLocalFile(QString::fromStdString(path_))});
  EXPECT_EQ(store_->status(), "Copied file");
}

TEST_F(SharingEffects, EmailBeginsAMessageWithTheFile) {
  choose("share.mail");
  EXPECT_EQ(startedWith("xdg-email"), "--attach|" + path_ + "|");
}

TEST_F(SharingEffects, OpenWithStartsTheProgramThatWasChosen) {
  auto* openers = menu_->findChild<QMenu*>(QStringLiteral("share.openWith"));
  ASSERT_NE(openers, nullptr);
  Q_EMIT openers->aboutToShow();
  const auto actions = openers->actions();
  const auto chosen =
      std::ranges::find(actions, QStringLiteral("Painting"), [](const QAction* action) { return action->text(); });
  ASSERT_NE(chosen, actions.end());
  (*chosen)->trigger();
  EXPECT_EQ(startedWith("painting"), "--edit|" + path_ + "|");
}

TEST_F(SharingEffects, ASenderIsHandedTheFile) {
  choose("share.send");
  EXPECT_EQ(startedWith("blueman-sendto"), "--|" + path_ + "|");
}

TEST_F(SharingEffects, WhatWasChosenHappensThoughTheMenuIsGone) {
  choose("share.mail");
  menu_->close();
  EXPECT_TRUE(waitUntil([this] { return menu_.isNull(); }));
  EXPECT_EQ(startedWith("xdg-email"), "--attach|" + path_ + "|");
}

}  // namespace

}  // namespace Nimbrel
