#include "Views/Inspector/LockedPanel.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Buttons.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QLabel>
#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr int lockedSpacing = 10;
constexpr int shieldSize = 40;

QLabel* centred(const QString& text, TextStyle style, Token token) {
  auto* label = new QLabel(text);
  setTextLook(*label, style, token);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setMinimumHeight(lineHeight(style));
  return label;
}

}  // namespace

LockedPanel::LockedPanel(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("inspector.locked"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(Measures::step20, Measures::step20, Measures::step20, Measures::step20);
  column->setSpacing(lockedSpacing);
  column->addStretch();
  column->addWidget(new SymbolView(QStringLiteral("lock.shield"), scaled(shieldSize), Token::Secondary), 0,
                    Qt::AlignHCenter);
  column->addWidget(centred(tr("Sensitive screenshot"), TextStyle::Headline, Token::Text));
  column->addWidget(centred(tr("Authenticate to see its preview and details."), TextStyle::Caption, Token::Secondary));
  auto* unlock = new QPushButton(tr("Unlock with Touch ID or Password"));
  unlock->setObjectName(QStringLiteral("inspector.unlock"));
  setVariant(*unlock, ButtonVariant::Plain);
  connect(unlock, &QPushButton::clicked, this, &LockedPanel::unlockRequested);
  column->addSpacing(Measures::step4);
  column->addWidget(unlock, 0, Qt::AlignHCenter);
  column->addStretch();
}

}  // namespace Nimbrel
