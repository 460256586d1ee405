#include "App/UpdateController.h"

#include "Linux/Network/QtHttpsFetcher.h"
#include "Support/Ed25519Key.h"
#include "Support/EnvironmentVariable.h"
#include "Support/FakeWorkspace.h"
#include "Support/HttpsServer.h"
#include "Support/StoreHome.h"
#include "Support/UpdateFeed.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QTcpServer>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::HttpsServer;
using ::testing::IsEmpty;

const std::string download(200'000, 'n');

/// The whole way from the command to what comes of it, with a server that has an authority of the test's own.
class UpdateOverHttpsTest : public ::testing::Test {
 protected:
  UpdateOverHttpsTest() {
    server_.answers["/nimbrel_1.3.deb"] = {.body = download};
    offer(key_.signatureText(download));
    // So that it only looks when it is told to.
    home_.suiteOfOtherProcess()->set(QStringLiteral("lastUpdateCheck"), secondsSince1970(home_.now));
  }

  void offer(const std::string& signature) {
    server_.answers["/feed.xml"] = {
        .body = Testing::feedOf("1.3", server_.url("/nimbrel_1.3.deb"), download.size(), signature)};
  }
  /// What the status says when the look has come to its end.
  std::string check() {
    const auto authority = authority_.certificate();
    UpdateController controller({.feedURL = server_.url("/feed.xml"), .publicKey = key_.publicKeyText()}, *store_,
                                workspace_,
                                {.makeFetcher = [authority] { return makeQtHttpsFetcher(authority); },
                                 .openDefaults = [this] { return home_.suiteOfOtherProcess(); },
                                 .version = "1.2",
                                 .downloads = home_.path("Downloads")});
    QObject::connect(&controller, &UpdateController::updateFound, &controller,
                     [this](const VerifiedUpdate& update) { found_.push_back(update.offer.version); });
    controller.checkForUpdates();
    const auto isOver = [this] { return store_->status() != "Checking for updates…"; };
    EXPECT_TRUE(Testing::waitUntil(isOver));
    return store_->status();
  }

  Testing::EnvironmentVariable noProxy_{"no_proxy", "127.0.0.1"};
  Testing::StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
  Testing::FakeWorkspace workspace_;
  Testing::Ed25519Key key_;
  Testing::TestAuthority authority_;
  HttpsServer server_{authority_.issue("IP:127.0.0.1")};
  std::vector<std::string> found_;
};

TEST_F(UpdateOverHttpsTest, ARightSignatureIsOffered) {
  EXPECT_EQ(check(), "Nimbrel 1.3 is available");
  EXPECT_THAT(found_, ElementsAre("1.3"));
  EXPECT_THAT(server_.paths, ElementsAre("/feed.xml", "/nimbrel_1.3.deb"));
}

TEST_F(UpdateOverHttpsTest, AWrongSignatureIsNot) {
  offer(Testing::Ed25519Key().signatureText(download));
  EXPECT_EQ(check(), "Update check failed: the signature of version 1.3 is wrong");
  EXPECT_THAT(found_, IsEmpty());
}

TEST_F(UpdateOverHttpsTest, AMissingSignatureIsNot) {
  offer("");
  EXPECT_EQ(check(), "Update check failed: version 1.3 is not signed");
  EXPECT_THAT(server_.paths, ElementsAre("/feed.xml"));
}

TEST_F(UpdateOverHttpsTest, AFeedThatLeadsToHttpIsNotFollowed) {
  QTcpServer plain;
  ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
  const auto elsewhere = "http://127.0.0.1:" + std::to_string(plain.serverPort());
  server_.answers["/feed.xml"] = {.status = 302, .location = elsewhere + "/feed.xml"};
  EXPECT_EQ(check(), "Update check failed: the server leads to an address that is not https");
  EXPECT_FALSE(plain.hasPendingConnections() || plain.waitForNewConnection(0));
}

TEST_F(UpdateOverHttpsTest, ADownloadThatLeadsToHttpIsNotFollowed) {
  QTcpServer plain;
  ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
  const auto elsewhere = "http://127.0.0.1:" + std::to_string(plain.serverPort());
  server_.answers["/nimbrel_1.3.deb"] = {.status = 307, .location = elsewhere + "/nimbrel_1.3.deb"};
  EXPECT_EQ(check(), "Update check failed: the server leads to an address that is not https");
  EXPECT_FALSE(plain.hasPendingConnections() || plain.waitForNewConnection(0));
  EXPECT_THAT(found_, IsEmpty());
}

TEST_F(UpdateOverHttpsTest, AFeedOfAGigabyteIsNotReceived) {
  server_.answers["/feed.xml"] = {.body = std::string(1 << 16, ' '), .isEndless = true, .claimsLength = 1 << 30};
  EXPECT_EQ(check(), "Update check failed: the answer is larger than it may be");
  EXPECT_TRUE(Testing::waitUntil([this] { return server_.open == 0; })) << "the connection is given up";
  EXPECT_LT(server_.bytesSent, 64 << 20);
}

TEST_F(UpdateOverHttpsTest, AFeedWithoutAnEndIsGivenUp) {
  server_.answers["/feed.xml"] = {.body = std::string(1 << 16, ' '), .saysLength = false, .isEndless = true};
  EXPECT_EQ(check(), "Update check failed: the answer is larger than it may be");
  EXPECT_TRUE(Testing::waitUntil([this] { return server_.open == 0; }));
}

TEST_F(UpdateOverHttpsTest, AFeedThatIsNoXmlIsToldOf) {
  server_.answers["/feed.xml"] = {.body = "404 page not found"};
  EXPECT_EQ(check(), "Update check failed: the feed is no XML");
}

TEST_F(UpdateOverHttpsTest, AServerOfAnotherAuthorityIsNotAsked) {
  const Testing::TestAuthority other;
  HttpsServer stranger(other.issue("IP:127.0.0.1"));
  server_.answers["/feed.xml"] = {.status = 302, .location = stranger.url("/feed.xml")};
  EXPECT_EQ(check(), "Update check failed: the server cannot prove who it is");
  EXPECT_THAT(stranger.paths, IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
