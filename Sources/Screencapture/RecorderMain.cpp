// nimbrel-screenrecord: what nimbrel-screencapture becomes for a movie; the same arguments.

#include "Screencapture/CaptureProgram.h"
#include "Screencapture/Interrupts.h"
#include "Screencapture/PortalRecording.h"
#include "Screencapture/X11Movie.h"

#include <QApplication>

namespace {

using namespace Nimbrel::Screencapture;

constexpr Ways waysToMovie{.onX11 = recordMovieOnX11, .onWayland = recordPortalScreenCast};

}  // namespace

int main(int argc, char** argv) {
  const auto request = requestOf(argc, argv);
  if (!request) return Misused;
  holdInterrupts();
  QApplication application(argc, argv);
  // Its only window goes while the movie is still being finished.
  QApplication::setQuitOnLastWindowClosed(false);
  return carryOut(application, *request, waysToMovie);
}
