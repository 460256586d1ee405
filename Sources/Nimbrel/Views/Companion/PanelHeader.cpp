#include "Views/Companion/PanelHeader.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QHBoxLayout>
#include <QLocale>
#include <QVBoxLayout>

namespace Nimbrel {

namespace {

constexpr int topPadding = 10;
constexpr int lineSpacing = 1;
constexpr int warningSymbol = 15;

}  // namespace

PanelHeader::PanelHeader(const Store& store, QWidget* parent)
    : QWidget(parent), store_(store), inbox_(new QLabel), sensitive_(new QWidget), sensitiveCount_(new QLabel) {
  auto* title = new QLabel(tr("Nimbrel"));
  setTextLook(*title, TextStyle::Headline);
  setTextLook(*inbox_, TextStyle::Caption, Token::Secondary);
  title->setMinimumHeight(lineHeight(TextStyle::Headline));
  inbox_->setMinimumHeight(lineHeight(TextStyle::Caption));
  setTextLook(*sensitiveCount_, TextStyle::Caption, Token::Secondary);
  inbox_->setObjectName(QStringLiteral("panel.inbox"));
  sensitive_->setObjectName(QStringLiteral("panel.sensitive"));
  auto* words = new QVBoxLayout;
  words->setSpacing(lineSpacing);
  words->addWidget(title);
  words->addWidget(inbox_);
  auto* warning = new QHBoxLayout(sensitive_);
  warning->setContentsMargins(0, 0, 0, 0);
  warning->setSpacing(Measures::step4);
  warning->addWidget(new SymbolView(QStringLiteral("exclamationmark.shield"), warningSymbol, Token::Secondary));
  warning->addWidget(sensitiveCount_);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(Measures::rowPadding, topPadding, Measures::rowPadding, Measures::step8);
  row->addLayout(words);
  row->addStretch();
  row->addWidget(sensitive_);
  connect(&store, &Store::shotsChanged, this, &PanelHeader::refresh);
  connect(&store, &Store::derivedChanged, this, &PanelHeader::refresh);
  refresh();
}

void PanelHeader::refresh() {
  const auto number = [](std::size_t count) { return QLocale().toString(static_cast<qulonglong>(count)); };
  inbox_->setText(tr("Running in menu bar · %1 in Inbox").arg(number(store_.inboxCount())));
  const auto sensitive = store_.sensitiveCount();
  const auto help = tr("%1 shots may contain secrets").arg(number(sensitive));
  sensitiveCount_->setText(number(sensitive));
  sensitiveCount_->setAccessibleName(help);
  sensitive_->setToolTip(help);
  sensitive_->setVisible(sensitive > 0);
}

}  // namespace Nimbrel
