#include "Linux/Checkup/Findings.h"

#include "Support/EnvironmentVariable.h"

#include <gmock/gmock.h>

namespace Nimbrel::Checkup {
namespace {

using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::HasSubstr;

TEST(Checkup, KnowsTheKindsOfSessions) {
  const EnvironmentVariable none("DISPLAY", std::nullopt);
  EXPECT_EQ(sessionKind(), SessionKind::none);
  EXPECT_FALSE(sessionFinding(SessionKind::none).isPresent);
  const EnvironmentVariable display("DISPLAY", ":4711");
  EXPECT_EQ(sessionKind(), SessionKind::x11);
  EXPECT_THAT(sessionFinding(SessionKind::x11).advice, HasSubstr("X11"));
  const EnvironmentVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(sessionKind(), SessionKind::wayland) << "the X server there only serves older programs";
  EXPECT_THAT(sessionFinding(SessionKind::wayland).advice, HasSubstr("Wayland"));
}

TEST(Checkup, PortalsAreMissedWhereTheyAreNeeded) {
  const BusFindings bus{.hasTrayHost = false, .portals = {"Screenshot"}};
  const auto onWayland = portalFindings(SessionKind::wayland, bus);
  ASSERT_EQ(onWayland.size(), 4U);
  EXPECT_EQ(onWayland[0], (Finding{"portal Screenshot", true, ""}));
  EXPECT_FALSE(onWayland[1].isPresent);
  EXPECT_THAT(onWayland[1].advice, HasSubstr("install"));
  const auto onX11 = portalFindings(SessionKind::x11, bus);
  EXPECT_THAT(onX11[1].advice, HasSubstr("not needed"));
  EXPECT_THAT(onX11[3].advice, HasSubstr("install")) << "the look of the desktop is told by it everywhere";
}

TEST(Checkup, OnWaylandHotkeysTakeAPortal) {
  const auto without = hotkeyFindings(SessionKind::wayland, {}, {});
  ASSERT_EQ(without.size(), 2U);
  EXPECT_EQ(without[0].name, "hotkey ⌃⇧5");
  EXPECT_EQ(without[1].name, "hotkey ⌃⇧Space");
  for (const auto& finding : without) {
    EXPECT_FALSE(finding.isPresent);
    EXPECT_THAT(finding.advice, HasSubstr("launcher"));
  }
  for (const auto& finding : hotkeyFindings(SessionKind::wayland, {.portals = {"GlobalShortcuts"}}, {})) {
    EXPECT_TRUE(finding.isPresent);
  }
}

TEST(Checkup, ALanguageWithoutAModelIsMissedByItsPackage) {
  EXPECT_THAT(readingFindings("/bin/reader", std::vector<std::string>{"eng", "fra"}, {"chi_sim", "eng"}),
              ElementsAre(Finding{"text recognition", true, "reads eng fra"},
                          Finding{"language chi_sim", false, "install tesseract-ocr-chi-sim"},
                          Finding{"language eng", true, ""}));
}

TEST(Checkup, ARecogniserWithoutAModelReadsNothing) {
  const auto findings = readingFindings("/bin/reader", std::vector<std::string>(), {"eng"});
  EXPECT_EQ(findings[0], (Finding{"text recognition", false, "install tesseract-ocr-eng"}));
  EXPECT_FALSE(findings[1].isPresent);
}

TEST(Checkup, ARecogniserThatDoesNotStartIsMissedByItsPlace) {
  const auto findings = readingFindings("/bin/reader", std::nullopt, {"eng"});
  EXPECT_FALSE(findings[0].isPresent);
  EXPECT_THAT(findings[0].advice, HasSubstr("/bin/reader"));
}

TEST(Checkup, FewWatchesAreMissedAndSoAreThoseThatOthersHold) {
  EXPECT_EQ(watchFinding(65'536, true), (Finding{"folder watches", true, "65536 at most"}));
  EXPECT_TRUE(watchFinding(std::nullopt, true).isPresent);
  EXPECT_FALSE(watchFinding(100, true).isPresent);
  EXPECT_THAT(watchFinding(100, true).advice, HasSubstr("fs.inotify.max_user_watches"));
  EXPECT_FALSE(watchFinding(65'536, false).isPresent);
  EXPECT_THAT(watchFinding(65'536, false).advice, HasSubstr("fs.inotify.max_user_instances"));
}

TEST(Checkup, AuthenticationTakesAnAccountAndAService) {
  EXPECT_TRUE(authenticationFinding("mary", "nimbrel").isPresent);
  EXPECT_THAT(authenticationFinding("mary", "login").advice, HasSubstr("\"login\""));
  EXPECT_FALSE(authenticationFinding("", "login").isPresent);
  EXPECT_FALSE(authenticationFinding("mary", "").isPresent);
  EXPECT_THAT(authenticationFinding("mary", "").advice, HasSubstr("/etc/pam.d/nimbrel"));
}

TEST(Checkup, TheEncodersThatTheBuildDependsOnAreThere) {
  const auto findings = encoderFindings();
  ASSERT_EQ(findings.size(), 3U);
  for (const auto& finding : findings) EXPECT_TRUE(finding.isPresent) << finding.name << finding.advice;
}

}  // namespace
}  // namespace Nimbrel::Checkup
