// nimbrel-screenrecord: what nimbrel-screencapture becomes for a movie; the same arguments.

#include "Screencapture/CaptureProgram.h"
#include "Screencapture/Interrupts.h"

#include <QGuiApplication>

namespace {

using namespace Nimbrel::Screencapture;

constexpr Ways waysToMovie{};

}  // namespace

int main(int argc, char** argv) {
  const auto request = requestOf(argc, argv);
  if (!request) return Misused;
  holdInterrupts();
  QGuiApplication application(argc, argv);
  return carryOut(application, *request, waysToMovie);
}
