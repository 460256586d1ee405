#include "Linux/Desktop/DesktopEntries.h"

#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Nimbrel {

namespace {

using Testing::EnvironmentVariable;
using ::testing::Optional;
using Testing::waitUntil;

class DesktopEntriesTest : public ::testing::Test {
 protected:
  ~DesktopEntriesTest() override {
    for (const auto& id : installed_) {
      std::filesystem::remove(qgetenv("XDG_DATA_HOME").toStdString() + "/applications/" + id + ".desktop");
    }
  }

  /// Entries whose program is not installed do not count.
  void install(const std::string& id, const std::string& lines) {
    installed_.push_back(id);
    Testing::installDesktopEntry(qgetenv("XDG_DATA_HOME").toStdString(), id, "Exec=true\n" + lines);
    // The library hears of it in a thread of its own.
    EXPECT_TRUE(waitUntil([&] { return DesktopEntries().iconOfIdentifier(id).has_value(); }));
  }

  DesktopEntries entries_;

 private:
  std::vector<std::string> installed_;
};

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByItsIdentifier) {
  install("org.example.Painter", "Name=Paint Box\nIcon=paint-box\n");
  EXPECT_THAT(entries_.iconOfIdentifier("org.example.Painter"), Optional(std::string("paint-box")));
  EXPECT_EQ(entries_.iconOfIdentifier("org.example"), std::nullopt);
  EXPECT_EQ(entries_.iconOfIdentifier("Paint Box"), std::nullopt);
}

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByTheNameThatTheUserSees) {
  const EnvironmentVariable language("LANGUAGE", "xx");
  install("org.example.Painter", "Name=Paint Box\nName[xx]=Malkasten\nIcon=paint-box\n");
  EXPECT_THAT(entries_.iconOfName("Malkasten"), Optional(std::string("paint-box")));
}

TEST_F(DesktopEntriesTest, AnApplicationIsFoundByTheNameOfItsEntryInNoLanguage) {
  const EnvironmentVariable language("LANGUAGE", "xx");
  install("org.example.Painter", "Name=Paint Box\nName[xx]=Malkasten\nIcon=paint-box\n");
  EXPECT_THAT(entries_.iconOfName("Paint Box"), Optional(std::string("paint-box")));
  EXPECT_THAT(entries_.iconOfName("org.example.Painter"), Optional(std::string("paint-box")));
  EXPECT_EQ(entries_.iconOfName("Paint"), std::nullopt);
}

TEST_F(DesktopEntriesTest, TheApplicationThatIsShownComesFirst) {
  install("a.example.Hidden", "Name=Paint Box\nIcon=hidden\nNoDisplay=true\n");
  install("z.example.Shown", "Name=Paint Box\nIcon=shown\n");
  EXPECT_THAT(entries_.iconOfName("Paint Box"), Optional(std::string("shown")));
}

TEST_F(DesktopEntriesTest, AnIconMayBeAPictureOrNone) {
  install("org.example.A", "Name=A\nIcon=/somewhere/a.png\n");
  install("org.example.B", "Name=B\nIcon=b.png\n");
  install("org.example.C", "Name=C\n");
  EXPECT_THAT(entries_.iconOfIdentifier("org.example.A"), Optional(std::string("/somewhere/a.png")));
  EXPECT_THAT(entries_.iconOfIdentifier("org.example.B"), Optional(std::string("b")));
  EXPECT_THAT(entries_.iconOfIdentifier("org.example.C"), Optional(std::string()));
}

TEST_F(DesktopEntriesTest, AnApplicationThatIsInstalledLaterIsFound) {
  EXPECT_EQ(entries_.iconOfName("Later on"), std::nullopt);
  install("org.example.Later", "Name=Later on\nIcon=later\n");
  EXPECT_TRUE(waitUntil([&] { return entries_.iconOfName("Later on") == "later"; }));
}

}  // namespace

}  // namespace Nimbrel
