// Several processes of one kind, with a session bus and without.

#include "Support/EnvironmentVariable.h"
#include "Support/SessionBus.h"
#include "Support/TemporaryFolder.h"
#include "Support/UnixSocket.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <QUuid>

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::waitUntil;

const std::string identifier = "com.example.single-one";

/// A process that wants the place.
class Claimant {
 public:
  Claimant(const std::string& name, const std::string& catalogue, const QStringList& request = {}) {
    auto arguments = QStringList{QString::fromStdString(name), QString::fromStdString(catalogue)} + request;
    process_.start(QStringLiteral(NIMBREL_INSTANCE_PROGRAM), arguments);
    EXPECT_TRUE(process_.waitForStarted());
  }
  ~Claimant() { kill(); }
  Claimant(const Claimant&) = delete;
  Claimant& operator=(const Claimant&) = delete;

  /// What it has said, once that are so many lines.
  std::vector<std::string> says(std::size_t count) {
    EXPECT_TRUE(waitUntil([&] {
      for (const auto& line : process_.readAllStandardOutput().split('\n')) {
        if (!line.isEmpty()) lines_.push_back(line.toStdString());
      }
      return lines_.size() >= count;
    }));
    return lines_;
  }
  void kill() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
  std::vector<std::string> lines_;
};

class SingleInstanceTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<Claimant> claim(const QStringList& request = {}) const {
    return std::make_unique<Claimant>(identifier, catalogue_, request);
  }

  Testing::TemporaryFolder folder_;
  std::string catalogue_ = folder_.makeFolder("catalogue");
  Testing::EnvironmentVariable runtime_{"XDG_RUNTIME_DIR", folder_.makeFolder("run")};
};

class OnABus : public SingleInstanceTest {
 protected:
  Testing::SessionBus bus_;
};

class WithoutABus : public SingleInstanceTest {};

void expectHandOver(const std::function<std::unique_ptr<Claimant>(const QStringList&)>& claim) {
  const auto first = claim({});
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  EXPECT_THAT(claim({})->says(1), ElementsAre("handed over"));
  EXPECT_THAT(claim({QStringLiteral("open"), QStringLiteral("/tmp/a b.png")})->says(1), ElementsAre("handed over"));
  EXPECT_THAT(claim({QStringLiteral("action"), QStringLiteral("screen")})->says(1), ElementsAre("handed over"));
  EXPECT_THAT(first->says(4), ElementsAre("first", "activate token_TIME5", "open /tmp/a b.png", "action screen"));
}

TEST_F(OnABus, ASecondStartIsHandedOver) {
  expectHandOver([this](const QStringList& request) { return claim(request); });
}

TEST_F(WithoutABus, ASecondStartIsHandedOver) {
  expectHandOver([this](const QStringList& request) { return claim(request); });
}

void expectOneOfMany(const std::function<std::unique_ptr<Claimant>(const QStringList&)>& claim) {
  std::vector<std::unique_ptr<Claimant>> claimants;
  for (int i = 0; i < 6; ++i) claimants.push_back(claim({}));
  std::vector<std::string> outcomes;
  for (const auto& claimant : claimants) outcomes.push_back(claimant->says(1).front());
  EXPECT_EQ(std::ranges::count(outcomes, "first"), 1);
  EXPECT_EQ(std::ranges::count(outcomes, "handed over"), 5);
}

TEST_F(OnABus, OneOfManyThatStartTogetherIsTheFirst) {
  expectOneOfMany([this](const QStringList& request) { return claim(request); });
}

TEST_F(WithoutABus, OneOfManyThatStartTogetherIsTheFirst) {
  expectOneOfMany([this](const QStringList& request) { return claim(request); });
}

TEST_F(OnABus, AKilledOneLeavesThePlace) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  first->kill();
  EXPECT_THAT(claim()->says(1), ElementsAre("first"));
}

TEST_F(WithoutABus, AKilledOneLeavesThePlace) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  first->kill();
  const auto second = claim();
  ASSERT_THAT(second->says(1), ElementsAre("first"));
  EXPECT_THAT(claim()->says(1), ElementsAre("handed over")) << "the socket that was left behind is no hindrance";
}

TEST_F(OnABus, EachKindAndEachCatalogueHasAPlaceOfItsOwn) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  Claimant companion(identifier + ".menubar", catalogue_);
  EXPECT_THAT(companion.says(1), ElementsAre("first"));
  Claimant other(identifier, folder_.makeFolder("other"));
  EXPECT_THAT(other.says(1), ElementsAre("first"));
  Claimant otherAgain(identifier, folder_.path("other"));
  EXPECT_THAT(otherAgain.says(1), ElementsAre("handed over"));
}

TEST_F(WithoutABus, EachKindAndEachCatalogueHasAPlaceOfItsOwn) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  Claimant companion(identifier + ".menubar", catalogue_);
  EXPECT_THAT(companion.says(1), ElementsAre("first"));
  Claimant other(identifier, folder_.makeFolder("other"));
  EXPECT_THAT(other.says(1), ElementsAre("first"));
}

TEST_F(OnABus, TheDesktopReachesItByTheStandardInterface) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  const auto name = QUuid::createUuid().toString();
  const auto call = [&](const char* method) {
    return QDBusMessage::createMethodCall(QString::fromStdString(identifier), QStringLiteral("/com/example/single_one"),
                                          QStringLiteral("org.freedesktop.Application"), QLatin1String(method));
  };
  {
    auto connection = QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), name);
    const QVariantMap data{{QStringLiteral("desktop-startup-id"), QStringLiteral("panel_TIME9")}};
    EXPECT_EQ(connection.call(call("Activate") << data).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(connection.call(call("Open") << QStringList{QStringLiteral("file:///tmp/b.png")} << data).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(connection.call(call("ActivateAction") << QStringLiteral("find") << QVariantList() << data).type(),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(connection.call(call("Activate") << 7).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(connection.call(call("Explode")).type(), QDBusMessage::ErrorMessage);
  }
  QDBusConnection::disconnectFromBus(name);
  EXPECT_THAT(first->says(4), ElementsAre("first", "activate panel_TIME9", "open /tmp/b.png", "action find"));
}

TEST_F(WithoutABus, WithoutARuntimeFolderTheSocketIsTheCatalogues) {
  const Testing::EnvironmentVariable none("XDG_RUNTIME_DIR", std::nullopt);
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  EXPECT_THAT(claim()->says(1), ElementsAre("handed over"));
  EXPECT_FALSE(std::filesystem::is_empty(catalogue_));
}

TEST_F(WithoutABus, AFolderWithALongPathIsNoHindrance) {
  const Testing::EnvironmentVariable deep("XDG_RUNTIME_DIR", folder_.makeFolder(std::string(150, 'x')));
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  EXPECT_THAT(claim()->says(1), ElementsAre("handed over"));
}

/// The socket that the first one listens at.
std::string socketIn(const std::string& folder) {
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_socket()) return entry.path().string();
  }
  ADD_FAILURE() << "no socket in " << folder;
  return {};
}

/// Somebody who speaks to it without being one of ours.
class Stranger {
 public:
  explicit Stranger(const std::string& socket) : socket_(Testing::connectedSocket(socket)) { EXPECT_GE(socket_, 0); }
  ~Stranger() { ::close(socket_); }
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;

  void say(const std::string& text) const {
    EXPECT_EQ(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
  }

 private:
  int socket_;
};

TEST_F(WithoutABus, StrangersWhoSayNothingOrNonsenseAreNoHindrance) {
  const auto first = claim();
  ASSERT_THAT(first->says(1), ElementsAre("first"));
  const auto socket = socketIn(folder_.path("run"));
  const Stranger silent(socket);
  const Stranger half(socket);
  half.say("{\"kind\": \"act");
  { Stranger(socket).say("nonsense"); }
  EXPECT_THAT(claim()->says(1), ElementsAre("handed over"));
  EXPECT_THAT(first->says(2), ElementsAre("first", "activate token_TIME5"));
}

}  // namespace
}  // namespace Nimbrel
