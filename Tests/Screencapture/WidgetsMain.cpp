// The beginning of test programs with windows.

#include "Support/TestEnvironment.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QFont>

int main(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  const QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
  return RUN_ALL_TESTS();
}
