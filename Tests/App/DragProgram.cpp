// Another program of the desktop with which files are exchanged by the pointer. "drag FILE…" offers these files to
// whoever the pointer carries them to, "drop" takes what comes and says what that is. Both say "ready" once their
// window is seen, and stay until killed.

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>
#include <QWidget>

#include <cstdio>
#include <utility>

namespace {

constexpr QRect place(1040, 200, 200, 200);  // beside a main window of the least width

void say(const QString& line) {
  std::puts(line.toUtf8().constData());
  std::fflush(stdout);
}

class Window : public QWidget {
 public:
  Window() {
    setGeometry(place);
    setAcceptDrops(false);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter(this).fillRect(rect(), Qt::white);
    if (std::exchange(isNew_, false)) say(QStringLiteral("ready"));
  }

 private:
  bool isNew_ = true;
};

class Source final : public Window {
 public:
  explicit Source(const QStringList& files) {
    for (const auto& file : files) urls_ << QUrl::fromLocalFile(file);
    setWindowTitle(QStringLiteral("Source of files"));
  }

 protected:
  void mouseMoveEvent(QMouseEvent* event) override {
    if (!event->buttons().testFlag(Qt::LeftButton) || isDragging_) return;
    isDragging_ = true;
    auto* drag = new QDrag(this);
    auto* mime = new QMimeData;
    mime->setUrls(urls_);
    drag->setMimeData(mime);
    connect(drag, &QDrag::actionChanged, this, [](Qt::DropAction action) {
      if (action == Qt::CopyAction) say(QStringLiteral("welcome"));
    });
    const auto action = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    isDragging_ = false;
    say(action == Qt::CopyAction ? QStringLiteral("copied") : QStringLiteral("not copied"));
  }

 private:
  QList<QUrl> urls_;
  bool isDragging_ = false;
};

class Target final : public Window {
 public:
  Target() {
    setWindowTitle(QStringLiteral("Target of files"));
    setAcceptDrops(true);
  }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override {
    event->acceptProposedAction();
    say(QStringLiteral("entered"));
  }
  void dropEvent(QDropEvent* event) override {
    event->acceptProposedAction();
    const auto* mime = event->mimeData();
    for (const auto& url : mime->urls()) say(QStringLiteral("file ") + url.toString(QUrl::FullyEncoded));
    const auto picture = qvariant_cast<QImage>(mime->imageData());
    say(QStringLiteral("picture %1x%2").arg(picture.width()).arg(picture.height()));
    say(QStringLiteral("done"));
  }
};

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  const auto arguments = QCoreApplication::arguments();
  Source source(arguments.mid(2));
  Target target;
  (arguments.value(1) == QLatin1String("drag") ? static_cast<Window&>(source) : target).show();
  return QApplication::exec();
}
