#include "Views/Inspector/FindBar.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/TextStyles.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QSignalBlocker>

namespace Nimbrel {

namespace {

constexpr int barSpacing = 5;
constexpr int barPadding = 7;

}  // namespace

FindBar::FindBar(QWidget* parent)
    : QWidget(parent),
      field_(new QLineEdit),
      clear_(new GlyphButton(QStringLiteral("xmark.circle.fill"), tr("Clear text search"))) {
  field_->setObjectName(QStringLiteral("inspector.find"));
  field_->setAccessibleName(tr("Find in recognized text"));
  field_->setPlaceholderText(tr("Find in text"));
  field_->setFrame(false);
  field_->setFixedHeight(lineHeight(TextStyle::Body));
  field_->installEventFilter(this);
  clear_->setObjectName(QStringLiteral("inspector.findClear"));
  clear_->setFixedSize(scaled(Measures::textSymbol), scaled(Measures::textSymbol));
  clear_->hide();
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(barPadding, barPadding, barPadding, barPadding);
  row->setSpacing(barSpacing);
  row->addWidget(new SymbolView(QStringLiteral("magnifyingglass"), scaled(Measures::textSymbol), Token::Secondary));
  row->addWidget(field_, 1);
  row->addWidget(clear_);
  connect(field_, &QLineEdit::textChanged, this, [this](const QString& query) {
    clear_->setHidden(query.isEmpty());
    Q_EMIT queryChanged(query);
  });
  connect(clear_, &QAbstractButton::clicked, this, [this] {
    field_->clear();
    field_->setFocus();
  });
}

void FindBar::setQuery(const QString& query) {
  if (field_->text() == query) return;
  const QSignalBlocker quiet(field_);
  field_->setText(query);
  clear_->setHidden(query.isEmpty());
}

void FindBar::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const auto fill = themeColor(Token::Quaternary);
  const auto outline = field_->hasFocus() ? themeColor(Token::Accent) : fill;
  Painting::fillOutlined(painter, rect(), Measures::controlRadius, fill, outline);
}

bool FindBar::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  return QWidget::eventFilter(object, event);
}

}  // namespace Nimbrel
