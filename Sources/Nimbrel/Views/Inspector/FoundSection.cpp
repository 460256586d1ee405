#include "Views/Inspector/FoundSection.h"

#include "Views/Inspector/ItemRow.h"
#include "Views/Inspector/ShotDetails.h"

namespace Nimbrel {

FoundSection::FoundSection(const InspectorContext& context)
    : ShotSection(context, tr("Found in Text")),
      finder_([](const std::string& text, Timestamp now) { return foundItems(text, now); }) {
  setObjectName(QStringLiteral("inspector.found"));
  hide();
  connect(&finder_, &ItemFinder::found, this, &FoundSection::showItems);
}

void FoundSection::fill(const Shot& shot) { finder_.show(shot.ocr, store().now()); }

void FoundSection::showItems(const std::vector<DetectedItem>& items) {
  clear();
  int number = 0;
  for (const auto& item : items) addBareRow(row(item, QStringLiteral("inspector.found.%1").arg(number++)));
  setHidden(items.empty());
}

QWidget* FoundSection::row(const DetectedItem& item, const QString& name) {
  const auto kind = symbol(item.kind);
  auto* row =
      new ItemRow(QString::fromLatin1(kind.data(), static_cast<qsizetype>(kind.size())), item.text, Qt::ElideRight);
  row->setObjectName(name);
  if (item.url) {
    connect(row->addLink(tr("Open"), QStringLiteral(".open")), &QPushButton::clicked, this,
            [this, url = *item.url] { handOut([url](Store& store, const Shot&) { store.openURL(url); }); });
  }
  if (item.date) {
    auto* add = row->addLink(tr("Add"), QStringLiteral(".add"));
    add->setToolTip(tr("Add to Calendar"));
    connect(add, &QPushButton::clicked, this, [this, date = *item.date] {
      handOut([date](Store& store, const Shot& shot) { store.createCalendarEvent(shot, date); });
    });
  }
  connect(row->addLink(tr("Copy"), QStringLiteral(".copy")), &QPushButton::clicked, this, [this, item] {
    handOut([item](Store& store, const Shot&) { store.copyString(item.text, rawValue(item.kind)); });
  });
  return row;
}

}  // namespace Nimbrel
