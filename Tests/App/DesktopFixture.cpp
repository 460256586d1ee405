#include "App/DesktopFixture.h"

#include "Support/Waiting.h"

#include <QApplication>
#include <QCursor>
#include <QProcess>
#include <QTimer>

#include <chrono>

namespace Nimbrel::Testing {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenMoves = 20ms;
constexpr auto longerThanAnyFocusTakes = 500ms;
constexpr QRect asideOfOthers(4, 40, 1000, 600);

QString number(int value) { return QString::number(value); }

}  // namespace

DesktopFixture::DesktopFixture() {
  auto owner = std::make_unique<FakeOwnerAuthentication>();
  owner_ = owner.get();
  services_.ownerAuthentication = std::move(owner);
}

void DesktopFixture::openWindowAside() {
  openWindow();
  window().setGeometry(asideOfOthers);
  ASSERT_TRUE(waitUntil([this] { return window().geometry() == asideOfOthers; }));
}

void DesktopFixture::comeBack() {
  act(QStringLiteral("windowactivate --sync %1").arg(window().winId()));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void DesktopFixture::unlock(const std::string& name) {
  store().withAccess({shot(name)}, [] {});
  ASSERT_TRUE(owner_->isAsked());
  owner_->decide(true);
  ASSERT_TRUE(isUnlocked());
}

bool DesktopFixture::staysUnlocked() const {
  runEventLoopFor(longerThanAnyFocusTakes);
  return isUnlocked();
}

bool DesktopFixture::locks() const {
  return waitUntil([this] { return !isUnlocked(); });
}

void DesktopFixture::act(const QString& words) {
  QProcess tool;
  tool.start(QStringLiteral("xdotool"), words.split(QLatin1Char(' ')));
  EXPECT_TRUE(waitUntil([&] { return tool.state() == QProcess::NotRunning; })) << words.toStdString();
  EXPECT_EQ(tool.exitCode(), 0) << words.toStdString() << tool.readAllStandardError().toStdString();
}

void DesktopFixture::pointTo(QPoint place) {
  act(QStringLiteral("mousemove ") + number(place.x()) + QLatin1Char(' ') + number(place.y()));
  EXPECT_TRUE(waitUntil([&] { return QCursor::pos() == place; })) << "the pointer does not come there";
}

void DesktopFixture::pointAt(const QWidget& widget, const std::function<QPoint()>& place) {
  const auto isThere = [&] {
    const auto* hit = QApplication::widgetAt(QCursor::pos());
    return hit == &widget || (hit != nullptr && widget.isAncestorOf(hit));
  };
  EXPECT_TRUE(waitUntil([&] {
    const auto point = widget.mapToGlobal(place());
    pointTo(point);
    return isThere() && widget.mapToGlobal(place()) == point;
  })) << widget.objectName().toStdString();
}

QPoint DesktopFixture::middleOf(const QString& title) {
  QProcess tool;
  tool.start(QStringLiteral("xdotool"),
             {QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
              QStringLiteral("--name"), title, QStringLiteral("getwindowgeometry"), QStringLiteral("--shell")});
  EXPECT_TRUE(waitUntil([&] { return tool.state() == QProcess::NotRunning; }));
  QMap<QByteArray, int> values;
  for (const auto& line : tool.readAllStandardOutput().split('\n')) {
    const auto parts = line.split('=');
    if (parts.size() == 2) values[parts[0]] = parts[1].toInt();
  }
  EXPECT_TRUE(values.contains("WIDTH")) << title.toStdString();
  return {values["X"] + values["WIDTH"] / 2, values["Y"] + values["HEIGHT"] / 2};
}

void DesktopFixture::carryTo(QPoint place, const std::function<bool()>& isEnough) {
  bool isDone = false;
  int moves = 0;
  QTimer hand;
  // A drag has an event loop of its own, in which the test's does not go on.
  QObject::connect(&hand, &QTimer::timeout, &hand, [&] {
    isDone = isDone || isEnough();
    const auto x = place.x() + ++moves % 3;
    auto words = QStringList{QStringLiteral("mousemove"), number(x), number(place.y())};
    if (isDone) words = {QStringLiteral("mouseup"), QStringLiteral("1")};
    if (isDone) hand.stop();
    QProcess::execute(QStringLiteral("xdotool"), words);
  });
  hand.start(betweenMoves);
  EXPECT_TRUE(waitUntil([&] { return isDone; }));
}

}  // namespace Nimbrel::Testing
