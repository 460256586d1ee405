// nimbrel-sample-window FILE draws the main window of the home that it is started in into a PNG, as it is once all that
// is on the screen has come in. Needs no display.

#include "App/MainProcess.h"
#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Store/Store.h"
#include "Views/Shared/NimbrelStyle.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::chrono::milliseconds betweenLooks{200};
constexpr int looksAlike = 5;  ///< after so many the window is taken for finished
constexpr int mostLooks = 150;

/// Looks at a window until nothing in it changes any more, and ends the event loop then.
class Painter final : public QObject {
 public:
  explicit Painter(QWidget& window) : window_(window) {
    connect(&looking_, &QTimer::timeout, this, &Painter::look);
    looking_.start(betweenLooks);
  }

  [[nodiscard]] const QImage& picture() const { return picture_; }

 private:
  void look() {
    const auto picture = window_.grab().toImage();
    alike_ = picture == picture_ ? alike_ + 1 : 0;
    picture_ = picture;
    if (alike_ >= looksAlike || ++looks_ >= mostLooks) QCoreApplication::exit();
  }

  QWidget& window_;
  QTimer looking_;
  QImage picture_;
  int alike_ = 0;
  int looks_ = 0;
};

int fail(const std::string& message) {
  std::fprintf(stderr, "nimbrel-sample-window: %s\n", message.c_str());
  return EXIT_FAILURE;
}

int draw(const QString& file) {
  auto services = makeServices(AppIdentity::bundleIdentifier());
  const WindowServices windowServices(services);
  const auto store = Store::openForCurrentUser(ProcessRole::mainApplication, std::move(services));
  if (!store) return fail(store.error().message);
  store.value()->setFilter({Filter::All{}});
  if (const auto shots = store.value()->ordered(); !shots.empty()) store.value()->setSelection({shots.front()->id});
  MainProcess process(*store.value(), windowServices);
  process.raise();
  const Painter painter(process.window());
  QCoreApplication::exec();
  QDir().mkpath(QFileInfo(file).path());
  return painter.picture().save(file, "PNG") ? EXIT_SUCCESS : fail("cannot write " + file.toStdString());
}

}  // namespace

}  // namespace Nimbrel

int main(int argc, char** argv) {
  if (argc != 2) return Nimbrel::fail("usage: nimbrel-sample-window FILE");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // Our argument is not the toolkit's.
  std::array<char*, 2> own{argv[0], nullptr};
  int count = 1;
  QApplication application(count, own.data());
  Nimbrel::installDesign(application);
  return Nimbrel::draw(QString::fromLocal8Bit(argv[1]));
}
