#include "Views/Inspector/SourceEditor.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int popoverWidth = 340;
constexpr int popoverPadding = 16;
constexpr int popoverSpacing = 12;
constexpr int gapToControl = 4;

QPushButton* smallButton(const QString& title, ButtonVariant variant, const QString& name) {
  auto* button = new QPushButton(title);
  button->setObjectName(QStringLiteral("inspector.source.") + name);
  setVariant(*button, variant);
  setButtonSize(*button, ButtonSize::Small);
  return button;
}

}  // namespace

SourceEditor::SourceEditor(const QString& draft, QWidget* parent)
    : QWidget(parent, Qt::Popup | Qt::FramelessWindowHint), field_(new QLineEdit(draft)) {
  setObjectName(QStringLiteral("inspector.sourceEditor"));
  setAccessibleName(tr("Correct Recognition"));
  setAttribute(Qt::WA_DeleteOnClose);
  setAttribute(Qt::WA_TranslucentBackground);
  setFixedWidth(scaled(popoverWidth));
  auto* heading = new QLabel(tr("Correct Recognition"));
  setTextLook(*heading, TextStyle::Headline);
  auto* advice = new QLabel(tr("Enter the application visible in this screenshot."));
  setTextLook(*advice, TextStyle::Caption, Token::Secondary);
  advice->setWordWrap(true);
  field_->setObjectName(QStringLiteral("inspector.source.field"));
  field_->setPlaceholderText(tr("Application"));
  field_->setAccessibleName(tr("Application"));

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(popoverPadding, popoverPadding, popoverPadding, popoverPadding);
  column->setSpacing(popoverSpacing);
  auto* words = new QVBoxLayout;
  words->setSpacing(Measures::step6);
  words->addWidget(heading);
  words->addWidget(advice);
  column->addLayout(words);
  column->addWidget(field_);
  column->addWidget(buttonRow());
  const auto judge = [this] { save_->setDisabled(field_->text().trimmed().isEmpty()); };
  judge();
  connect(field_, &QLineEdit::textChanged, this, judge);
  connect(field_, &QLineEdit::returnPressed, this, &SourceEditor::save);
}

QWidget* SourceEditor::buttonRow() {
  auto* automatic = smallButton(tr("Use Automatic Detection"), ButtonVariant::Plain, QStringLiteral("automatic"));
  auto* cancel = smallButton(tr("Cancel"), ButtonVariant::Plain, QStringLiteral("cancel"));
  save_ = smallButton(tr("Save"), ButtonVariant::Default, QStringLiteral("save"));
  connect(automatic, &QPushButton::clicked, this, &SourceEditor::clear);
  connect(cancel, &QPushButton::clicked, this, &SourceEditor::close);
  connect(save_, &QPushButton::clicked, this, &SourceEditor::save);
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(Measures::buttonGap);
  line->addWidget(automatic);
  line->addStretch();
  line->addWidget(cancel);
  line->addWidget(save_);
  return row;
}

void SourceEditor::openBelow(const QWidget& control) {
  adjustSize();
  const auto end = control.mapToGlobal(QPoint(control.width(), control.height() + gapToControl));
  const bool isLeftToRight = control.layoutDirection() == Qt::LeftToRight;
  QPoint corner(isLeftToRight ? end.x() - width() : end.x() - control.width(), end.y());
  // Not past an edge of the screen, where it could not be reached.
  const auto screen = control.screen()->availableGeometry();
  corner.setX(std::clamp(corner.x(), screen.left(), std::max(screen.left(), screen.right() + 1 - width())));
  corner.setY(std::clamp(corner.y(), screen.top(), std::max(screen.top(), screen.bottom() + 1 - height())));
  move(corner);
  show();
  field_->setFocus(Qt::PopupFocusReason);
  field_->selectAll();
}

void SourceEditor::save() {
  const auto name = field_->text().trimmed();
  if (name.isEmpty()) return;
  Q_EMIT saved(name);
  close();
}

void SourceEditor::clear() {
  field_->clear();
  Q_EMIT cleared();
  close();
}

void SourceEditor::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  Painting::fillOutlined(painter, rect(), Measures::popoverRadius, themeColor(Token::Popover),
                         themeColor(Token::PopoverBorder));
}

void SourceEditor::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  // Where no compositor makes the corners transparent.
  QPainterPath outline;
  outline.addRoundedRect(rect(), Measures::popoverRadius, Measures::popoverRadius);
  setMask(QRegion(outline.toFillPolygon().toPolygon()));
}

}  // namespace Nimbrel
