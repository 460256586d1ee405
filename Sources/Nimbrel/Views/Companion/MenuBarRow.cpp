#include "Views/Companion/MenuBarRow.h"

#include "Foundation/Formats.h"
#include "Views/Companion/MenuBarRowMenu.h"
#include "Views/Gallery/CellPainter.h"
#include "Views/Gallery/ShotDrag.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/ShotWords.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainterPath>
#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr int horizontalPadding = 7;
constexpr int wordSpacing = 3;
constexpr int thumbRadius = 7;
constexpr int lockSymbol = 18;
constexpr int warningSymbol = 17;

}  // namespace

class MenuBarRow::Thumb final : public QWidget {
 public:
  explicit Thumb(MenuBarRow* row) : QWidget(row), row_(*row) {
    setFixedSize(thumbSize);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    Painting::fillRounded(painter, rect(), thumbRadius, themeColor(Token::Quaternary));
    if (row_.shot_ == nullptr) return;
    if (row_.isProtected_) return CellPainter::paintLock(painter, rect(), lockSymbol);
    const auto* picture = row_.thumbs_.picture(row_.shot_->path);
    if (picture == nullptr) return CellPainter::paintMissing(painter, rect());
    QPainterPath corners;
    corners.addRoundedRect(rect(), thumbRadius, thumbRadius);
    painter.setClipPath(corners);
    QRectF place(QPointF(), picture->deviceIndependentSize());
    place.moveCenter(QRectF(rect()).center());
    painter.drawPixmap(Painting::onGrid(painter, place).topLeft(), *picture);
  }

 private:
  const MenuBarRow& row_;
};

MenuBarRow::MenuBarRow(Store& store, GalleryActions& actions, const VisibleThumbs& thumbs, QWidget* parent)
    : QAbstractButton(parent),
      store_(store),
      actions_(actions),
      thumbs_(thumbs),
      thumb_(new Thumb(this)),
      source_(new ElidedLabel(TextStyle::Subheadline)),
      name_(new ElidedLabel(TextStyle::Caption, Token::Secondary, Qt::ElideMiddle)),
      time_(new ElidedLabel(TextStyle::Caption2, Token::Secondary)),
      warning_(new SymbolView(QStringLiteral("exclamationmark.shield"), warningSymbol, Token::Secondary)) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  arrange();
  connect(this, &QAbstractButton::clicked, this, [this] { actions_.open(shot_); });
}

void MenuBarRow::arrange() {
  source_->setObjectName(QStringLiteral("recent.source"));
  name_->setObjectName(QStringLiteral("recent.name"));
  time_->setObjectName(QStringLiteral("recent.time"));
  warning_->setObjectName(QStringLiteral("recent.warning"));
  auto* words = new QVBoxLayout;
  words->setSpacing(wordSpacing);
  words->addStretch();
  for (auto* label : {source_, name_, time_}) {
    // Within a button they would have the colour of its own words.
    label->setForegroundRole(QPalette::WindowText);
    // What the pointer does is the row's affair.
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    words->addWidget(label);
  }
  words->addStretch();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(horizontalPadding, Measures::step6, horizontalPadding + wordSpacing, Measures::step6);
  row->setSpacing(Measures::step12);
  row->addWidget(thumb_);
  row->addLayout(words, 1);
  row->addWidget(warning_);
}

void MenuBarRow::setShot(const ShotPtr& shot) {
  shot_ = shot;
  isProtected_ = store_.isProtected(*shot);
  showWords();
  warning_->setVisible(!shot->sensitive.empty());
  thumb_->update();
}

void MenuBarRow::updateThumb() { thumb_->update(); }

void MenuBarRow::showWords() {
  source_->setFullText(isProtected_ ? tr("Sensitive screenshot")
                                    : shownText(store_.derived().contentOf(shot_->id).title));
  name_->setFullText(isProtected_ ? tr("Preview locked") : shownText(shot_->name));
  const auto time = shownText(Formats::shortTime(shot_->date));
  time_->setFullText(shot_->filed ? time : time + tr(" · Inbox"));
  setAccessibleName(QStringList{source_->fullText(), name_->fullText(), time_->fullText()}.join(QLatin1String(", ")));
}

void MenuBarRow::paintEvent(QPaintEvent* /*event*/) {
  if (!underMouse()) return;
  QPainter painter(this);
  Painting::fillRounded(painter, rect(), Measures::groupRadius, themeColor(Token::Quaternary));
}

void MenuBarRow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
  QAbstractButton::keyPressEvent(event);
}

void MenuBarRow::mousePressEvent(QMouseEvent* event) {
  pressed_ = event->position().toPoint();
  QAbstractButton::mousePressEvent(event);
}

void MenuBarRow::mouseMoveEvent(QMouseEvent* event) {
  const auto distance = (event->position().toPoint() - pressed_).manhattanLength();
  const bool isDragged = isDown() && event->buttons().testFlag(Qt::LeftButton);
  if (!isDragged || distance < QApplication::startDragDistance()) return QAbstractButton::mouseMoveEvent(event);
  setDown(false);
  drag();
}

void MenuBarRow::drag() {
  auto dragged = dragData(store_, *shot_);
  if (!dragged) return;
  auto* drag = new QDrag(this);
  drag->setMimeData(dragged.release());
  drag->setPixmap(dragPreview(thumbs_.picture(shot_->path), devicePixelRatioF()));
  drag->exec(Qt::CopyAction);
}

void MenuBarRow::contextMenuEvent(QContextMenuEvent* event) {
  showMenuBarRowMenu(shot_, store_, actions_, *this, event->globalPos());
}

}  // namespace Nimbrel
