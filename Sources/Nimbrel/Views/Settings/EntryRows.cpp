#include "Views/Settings/EntryRows.h"

#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/LeadingText.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"

#include <QHBoxLayout>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int removeSymbol = 17;
constexpr int gap = 10;

}  // namespace

EntryRows::EntryRows(FormSection& section, Look look) : QObject(&section), section_(section), look_(std::move(look)) {}

void EntryRows::setEntries(const std::vector<std::string>& entries) {
  if (entries == entries_) return;
  const auto focused = std::ranges::find_if(buttons_, &QWidget::hasFocus) - buttons_.begin();
  const bool hadFocus = focused < std::ssize(buttons_);
  removeRows();
  entries_ = entries;
  for (std::size_t i = 0; i < entries_.size(); ++i) addRow(i);
  Q_EMIT changed();
  if (hadFocus && !buttons_.empty()) {
    auto* button = buttons_[static_cast<std::size_t>(std::min(focused, std::ssize(buttons_) - 1))];
    // A later turn, in which the new row is seen.
    QMetaObject::invokeMethod(
        button, [button] { button->setFocus(Qt::TabFocusReason); }, Qt::QueuedConnection);
  }
}

void EntryRows::removeRows() {
  for (auto i = static_cast<int>(buttons_.size()); i > 0; --i) section_.removeRow(i - 1);
  buttons_.clear();
}

void EntryRows::addRow(std::size_t index) {
  const auto text = shownText(entries_[index]);
  auto* words = new ElidedLabel(TextStyle::Body, Token::Text, look_.elide);
  words->setObjectName(section_.objectName() + QStringLiteral(".entry"));
  words->setFullText(text);
  alignToLayout(*words);
  auto* remove = new SymbolButton(QStringLiteral("minus.circle"), removeSymbol);
  remove->setObjectName(section_.objectName() + QStringLiteral(".remove"));
  remove->setTitle(tr("Remove %1").arg(text));
  connect(remove, &QAbstractButton::clicked, this, [this, index] { Q_EMIT removeClicked(index); });
  auto* row = new QWidget;
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(gap);
  line->addWidget(new SymbolView(look_.symbol, scaled(Measures::textSymbol), Token::Secondary));
  line->addWidget(words, 1);
  line->addWidget(remove);
  buttons_.push_back(remove);
  section_.insertWidgetRow(static_cast<int>(index), row);
}

}  // namespace Nimbrel
