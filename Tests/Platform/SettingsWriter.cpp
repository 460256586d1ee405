#include "Platform/Defaults.h"

#include <QCoreApplication>

#include <string>

/// Sets many keys of one suite, one after the other: the second process of a test.
/// Arguments: folder, suite, prefix of the keys, how many.
int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 5) return 2;
  Nimbrel::Defaults defaults(argv[1], argv[2]);
  const int count = std::stoi(argv[4]);
  for (int i = 0; i < count; ++i) defaults.set(QString::fromUtf8(argv[3]) + QString::number(i), i);
  return 0;
}
