#include "Views/Inspector/CodesSection.h"

#include "Views/Inspector/ItemRow.h"
#include "Views/Inspector/ShotDetails.h"

#include <QUrl>

namespace Nimbrel {

namespace {

std::string encoded(const std::string& address) {
  return QUrl(QString::fromStdString(address), QUrl::StrictMode).toEncoded().toStdString();
}

}  // namespace

CodesSection::CodesSection(const InspectorContext& context) : ShotSection(context, tr("Codes")) {
  setObjectName(QStringLiteral("inspector.codes"));
  hide();
}

void CodesSection::fill(const Shot& shot) {
  setHidden(shot.barcodes.empty());
  if (codes_ == shot.barcodes) return;
  codes_ = shot.barcodes;
  clear();
  int number = 0;
  for (const auto& code : codes_) addBareRow(row(code, QStringLiteral("inspector.code.%1").arg(number++)));
}

QWidget* CodesSection::row(const std::string& code, const QString& name) {
  auto* row = new ItemRow(QStringLiteral("qrcode"), code, Qt::ElideMiddle);
  row->setObjectName(name);
  row->label().setTextInteractionFlags(Qt::TextSelectableByMouse);
  if (const auto address = addressIn(code)) {
    connect(row->addLink(tr("Open"), QStringLiteral(".open")), &QPushButton::clicked, this,
            [this, url = encoded(*address)] { handOut([url](Store& store, const Shot&) { store.openURL(url); }); });
  }
  connect(row->addLink(tr("Copy"), QStringLiteral(".copy")), &QPushButton::clicked, this,
          [this, code] { handOut([code](Store& store, const Shot&) { store.copyString(code, "code"); }); });
  return row;
}

}  // namespace Nimbrel
