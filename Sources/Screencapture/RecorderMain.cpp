// nimbrel-screenrecord: what nimbrel-screencapture becomes for a movie; the same arguments.

#include "Screencapture/CaptureProgram.h"
#include "Screencapture/Interrupts.h"
#include "Screencapture/PortalRecording.h"
#include "Screencapture/X11Display.h"
#include "Screencapture/X11Movie.h"

#include <QApplication>

namespace {

using namespace Nimbrel::Screencapture;

constexpr Ways waysToMovie{.onX11 = recordMovieOnX11, .onWayland = recordPortalScreenCast};

/// On Wayland the stop control has a place of its own only through X11. Where no window can be shown at all, the
/// desktop's own way to stop remains.
void chooseWindows() {
  if (!isWaylandSession() || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) return;
  qputenv("QT_QPA_PLATFORM", "xcb;wayland;offscreen");
}

bool hasX11Display() {
  const auto display = X11Display::open();
  if (!display) complain(display.error().message);
  return static_cast<bool>(display);
}

}  // namespace

int main(int argc, char** argv) {
  const auto request = requestOf(argc, argv);
  if (!request) return Misused;
  // The windows' library would abort.
  if (!isWaylandSession() && !hasX11Display()) return Refused;
  holdInterrupts();
  chooseWindows();
  QApplication application(argc, argv);
  // Its only window goes while the movie is still being finished.
  QApplication::setQuitOnLastWindowClosed(false);
  return carryOut(application, *request, waysToMovie);
}
