// The beginning of test programs whose desktop has two screens side by side: the right one stands higher, and shows two
// pixels where the left one shows one.

#include "Support/TemporaryFolder.h"
#include "Support/TestEnvironment.h"
#include "Views/Shared/NimbrelStyle.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFont>

int main(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  const Nimbrel::Testing::TemporaryFolder folder;
  const auto screens = folder.write("screens.json", R"({"screens": [
    {"name": "left", "x": 0, "y": 0, "width": 1280, "height": 800, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
    {"name": "right", "x": 1280, "y": -200, "width": 1440, "height": 900, "logicalDpi": 96, "logicalBaseDpi": 96,
     "dpr": 2}]})");
  qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens).c_str());
  QApplication application(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  Nimbrel::installDesign(application);
  return RUN_ALL_TESTS();
}
