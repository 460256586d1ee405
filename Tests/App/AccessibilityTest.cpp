// The application as a screen reader has it, which is another process.

#include "App/AccessibilityTree.h"
#include "App/MenuBarCompanion.h"
#include "Support/DesktopSession.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::AccessiblePart;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using Testing::waitUntil;

using RoleAndName = std::pair<std::string, std::string>;

/// What the user acts on, or goes to by the keyboard.
bool isControl(const AccessiblePart& part) {
  static const std::set<std::string> roles{
      "push button",     "toggle button", "check box", "radio button", "combo box",     "text",      "entry",
      "slider",          "list",          "list item", "menu bar",     "menu",          "menu item", "scroll bar",
      "spin button",     "link",          "tree",      "table",        "password text", "button",    "popup menu",
      "check menu item", "button menu"};
  // Views have bars that are never needed.
  if (part.role == "scroll bar" && !part.isShowing) return false;
  return roles.contains(part.role) || part.isFocusable;
}

class AccessibilityTest : public ::testing::Test {
 protected:
  AccessibilityTest() {
    Testing::writePicture(home_.desktop("Screenshot 1.png"), 320, 200, 1);
    Testing::writePicture(home_.desktop("Screenshot 2.png"), 320, 200, 2);
    const auto store = home_.open(ProcessRole::tool);
    store->importFiles({home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot 2.png")});
    const auto& first = *Testing::shotNamed(*store, "Screenshot 1.png");
    store->database().setOCR(first.id, "Write to ann@example.com", {});
    store->database().setTags(first.id, {"letters"});
    const auto& second = *Testing::shotNamed(*store, "Screenshot 2.png");
    store->database().setOCR(second.id, "the key is under the mat", {"Password"});
    // There is one already, so that the application starts none that would outlive it.
    companion_ = MenuBarCompanion::announce(home_.folders());
    EXPECT_TRUE(companion_);
    application_.setProcessEnvironment(environment());
    application_.start(Testing::programPath("nimbrel"), QStringList());
    EXPECT_TRUE(application_.waitForStarted());
  }
  ~AccessibilityTest() override {
    application_.terminate();
    EXPECT_TRUE(application_.waitForFinished());
    EXPECT_EQ(application_.exitCode(), 0);
  }

  using Condition = std::function<bool(const AccessiblePart& part)>;
  /// Waits for such a part; fails the test by an exception when it does not come.
  [[nodiscard]] AccessiblePart find(const Condition& isWanted) {
    const auto isThere = [&] {
      parts_ = bus_.parts();
      return std::ranges::any_of(parts_, isWanted);
    };
    if (!waitUntil(isThere)) throw std::runtime_error("it is not among\n" + told());
    return *std::ranges::find_if(parts_, isWanted);
  }
  [[nodiscard]] AccessiblePart part(const std::string& role, const std::string& name) {
    return find([&](const auto& each) { return each.role == role && each.name == name; });
  }
  /// The shot of the gallery whose name begins so.
  [[nodiscard]] AccessiblePart cell(const std::string& name) {
    return find([&](const auto& each) { return each.role == "list item" && each.name.starts_with(name); });
  }
  [[nodiscard]] std::vector<RoleAndName> rolesAndNames() const {
    std::vector<RoleAndName> all;
    for (const auto& each : parts_) all.emplace_back(each.role, each.name);
    return all;
  }
  /// Roles of the controls that a screen reader has no word for.
  [[nodiscard]] std::vector<std::string> nameless() const {
    std::vector<std::string> roles;
    for (const auto& each : parts_) {
      if (isControl(each) && each.name.empty()) roles.push_back(each.role + " " + each.path.toStdString());
    }
    return roles;
  }
  /// Names of what the keyboard reaches and a screen reader does not know the kind of.
  [[nodiscard]] std::vector<std::string> ofNoKind() const {
    static const std::set<std::string> vague{"filler", "panel", "unknown", "invalid", "", "label", "redundant object"};
    std::vector<std::string> names;
    for (const auto& each : parts_) {
      if (each.isFocusable && vague.contains(each.role)) names.push_back(each.role + " " + each.name);
    }
    return names;
  }
  [[nodiscard]] std::string told() const {
    std::string lines;
    for (const auto& each : parts_) {
      lines += each.role + " \"" + each.name + "\"" + (each.isFocusable ? " focusable" : "") +
               (each.isShowing ? " showing" : "") + "\n";
    }
    return lines;
  }
  void expectAllNamed() const {
    EXPECT_THAT(nameless(), IsEmpty()) << told();
    EXPECT_THAT(ofNoKind(), IsEmpty()) << told();
  }

 private:
  [[nodiscard]] QProcessEnvironment environment() const {
    auto environment = Testing::environmentOf(home_.folder().path());
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    return environment;
  }

  Testing::DesktopSession session_;
  Testing::StoreHome home_;
  std::optional<FolderLock> companion_;

 protected:
  Testing::AccessibilityBus bus_;
  std::vector<AccessiblePart> parts_;

 private:
  QProcess application_;
};

TEST_F(AccessibilityTest, EveryControlOfTheMainWindowHasANameAndAKind) {
  static_cast<void>(part("list item", "Inbox, 2"));
  expectAllNamed();
  EXPECT_THAT(rolesAndNames(),
              IsSupersetOf({RoleAndName{"frame", "Nimbrel"}, RoleAndName{"menu bar", "Menus"},
                            RoleAndName{"list", "Sidebar"}, RoleAndName{"list item", "Favorites"},
                            RoleAndName{"list", "Shots"}, RoleAndName{"push button", "Hide Sidebar"},
                            RoleAndName{"text", "Search text in shots"}, RoleAndName{"slider", "Thumbnail Size"}}))
      << told();
}

TEST_F(AccessibilityTest, AShotIsChosenAndItsDetailsAreNamed) {
  EXPECT_TRUE(bus_.act(cell("Screenshot 1.png, ")));
  static_cast<void>(part("push button", "Copy Image"));
  expectAllNamed();
  EXPECT_THAT(rolesAndNames(),
              IsSupersetOf({RoleAndName{"push button", "Copy Recognized Text"},
                            RoleAndName{"push button", "Add to Favorites"}, RoleAndName{"push button", "Share"},
                            RoleAndName{"text", "Name"}, RoleAndName{"text", "Add tag"}, RoleAndName{"text", "Note"}}))
      << told();
}

TEST_F(AccessibilityTest, ALockedShotHasAWayToUnlockIt) {
  EXPECT_TRUE(bus_.act(cell("Sensitive screenshot, Locked")));
  static_cast<void>(part("push button", "Unlock with Touch ID or Password"));
  expectAllNamed();
}

}  // namespace
}  // namespace Nimbrel
