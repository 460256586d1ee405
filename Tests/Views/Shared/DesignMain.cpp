// The beginning of test programs whose windows look as Nimbrel's do.

#include "Support/TestEnvironment.h"
#include "Views/Shared/NimbrelStyle.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFont>

int main(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  Nimbrel::installDesign(application);
  return RUN_ALL_TESTS();
}
