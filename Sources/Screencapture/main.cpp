// nimbrel-screencapture: takes one picture or movie of the screen into a file, as its arguments tell.

#include "Screencapture/CaptureProgram.h"
#include "Screencapture/Interrupts.h"
#include "Screencapture/PortalScreenshot.h"
#include "Screencapture/X11Capture.h"

#include <QGuiApplication>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace {

using namespace Nimbrel::Screencapture;

constexpr Ways waysToPicture{.onX11 = takePictureOnX11, .onWayland = takePortalScreenshot};

/// Movies are another program's work, which becomes this process: it takes longer to load than a picture to be taken.
int becomeRecorder(char** argv) {
  std::error_code error;
  const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
  ::execv((folder / "nimbrel-screenrecord").c_str(), argv);
  complain("nimbrel-screenrecord cannot be started");
  return Failed;
}

/// Of windows and fonts the overlay needs the fonts alone, and those come the quicker without a desktop's theme.
void doWithoutTheme() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

}  // namespace

int main(int argc, char** argv) {
  const auto request = requestOf(argc, argv);
  if (!request) return Misused;
  holdInterrupts();
  if (request->kind == CaptureRequest::Kind::movie) return becomeRecorder(argv);
  if (request->subject == CaptureRequest::Subject::mainScreen) {
    QCoreApplication application(argc, argv);
    return carryOut(application, *request, waysToPicture);
  }
  doWithoutTheme();
  QGuiApplication application(argc, argv);
  return carryOut(application, *request, waysToPicture);
}
