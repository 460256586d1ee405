// The beginning of test programs that show Nimbrel's windows on a display of their own, with a window manager.

#include "Support/DesktopSession.h"
#include "Support/TestEnvironment.h"
#include "Views/Shared/NimbrelStyle.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFont>

int main(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  if (GTEST_FLAG_GET(list_tests)) return RUN_ALL_TESTS();
  const Nimbrel::Testing::DesktopSession session;
  qputenv("QT_QPA_PLATFORM", "xcb");
  QApplication application(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  Nimbrel::installDesign(application);
  return RUN_ALL_TESTS();
}
