#include "Support/TestEnvironment.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

int main(int argc, char** argv) {
  const Nimbrel::Testing::TestEnvironment environment;
  ::testing::InitGoogleMock(&argc, argv);
  const QGuiApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
