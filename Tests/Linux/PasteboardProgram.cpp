// A program with a clipboard, as the tests of it need one in a process of its own: copies what its arguments tell,
// "picture FILE", "text TEXT" or "file PATH", says "copied", and ends through its pasteboard once its input has.
// "watch" copies nothing.

#include "Linux/Factory.h"

#include <QGuiApplication>
#include <QImage>
#include <QSocketNotifier>

#include <unistd.h>

#include <cstdio>
#include <string_view>

namespace {

void copy(Nimbrel::Pasteboard& pasteboard, std::string_view kind, const char* argument) {
  if (kind == "picture") pasteboard.writePicture(QImage(QString::fromLocal8Bit(argument)));
  if (kind == "text") pasteboard.writeText(argument);
  if (kind == "file") pasteboard.writeFile(argument);
}

void say(const char* line) {
  std::puts(line);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  const QGuiApplication application(argc, argv);
  const auto services = Nimbrel::makeServices("org.example.own");
  copy(*services.pasteboard, argc > 1 ? argv[1] : "", argc > 2 ? argv[2] : "");
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, &input, [&] {
    input.setEnabled(false);
    services.pasteboard->handOver(&input, [] { QCoreApplication::exit(0); });
    say("asked");
  });
  QMetaObject::invokeMethod(
      &input, [] { say("copied"); }, Qt::QueuedConnection);
  return QGuiApplication::exec();
}
