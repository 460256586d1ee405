// Another program of the desktop that the user works in. Says "ready" once its window is seen, "key X" for each letter
// that is typed into it, and "pasted 320x200" when a picture of that size is pasted there. Stays until killed.

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace {

constexpr QRect place(20, 40, 240, 160);

void say(const QString& line) {
  std::puts(line.toUtf8().constData());
  std::fflush(stdout);
}

class Window final : public QWidget {
 public:
  Window() {
    setGeometry(place);
    setWindowTitle(QStringLiteral("Letter"));
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter(this).fillRect(rect(), Qt::white);
    if (std::exchange(isNew_, false)) say(QStringLiteral("ready"));
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->matches(QKeySequence::Paste)) {
      const auto picture = QGuiApplication::clipboard()->image();
      say(QStringLiteral("pasted %1x%2").arg(picture.width()).arg(picture.height()));
    } else if (event->key() == Qt::Key_Escape) {
      say(QStringLiteral("key Escape"));
    } else {
      say(QStringLiteral("key ") + event->text());
    }
  }

 private:
  bool isNew_ = true;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QGuiApplication::setDesktopFileName(QStringLiteral("letter"));
  Window window;
  window.show();
  return QApplication::exec();
}
