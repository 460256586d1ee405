#include "Views/Companion/PanelFooter.h"

#include "Views/Companion/PanelButton.h"
#include "Views/Shared/Measures.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int padding = 10;

}  // namespace

PanelFooter::PanelFooter(Store& store, QWidget* parent)
    : QWidget(parent),
      store_(store),
      fileInbox_(new PanelButton(QStringLiteral("tray.and.arrow.down"), tr("File Inbox"))),
      undo_(new PanelButton(QStringLiteral("arrow.uturn.backward"), tr("Undo Last Capture"),
                            PanelButton::Words::Hidden)) {
  auto* open = new PanelButton(QStringLiteral("square.grid.2x2"), tr("Open Nimbrel"));
  auto* quit = new PanelButton(QStringLiteral("power"), tr("Quit Nimbrel Menu Bar"), PanelButton::Words::Hidden);
  fileInbox_->setObjectName(QStringLiteral("panel.fileInbox"));
  open->setObjectName(QStringLiteral("panel.openMainApp"));
  undo_->setObjectName(QStringLiteral("panel.undo"));
  quit->setObjectName(QStringLiteral("panel.quit"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(padding, padding, padding, padding);
  row->setSpacing(Measures::step6);
  row->addWidget(fileInbox_);
  row->addWidget(open);
  row->addStretch();
  row->addWidget(undo_);
  row->addWidget(quit);
  connect(fileInbox_, &QAbstractButton::clicked, this, [this] { store_.fileAll(); });
  connect(undo_, &QAbstractButton::clicked, this, [this] { store_.undoLastCapture(); });
  connect(open, &QAbstractButton::clicked, this, &PanelFooter::openMainAppRequested);
  connect(quit, &QAbstractButton::clicked, this, &PanelFooter::quitRequested);
  connect(&store, &Store::shotsChanged, this, &PanelFooter::refresh);
  connect(&store, &Store::lastCapturedIDChanged, this, &PanelFooter::refresh);
  refresh();
}

void PanelFooter::refresh() {
  fileInbox_->setVisible(store_.inboxCount() > 0);
  undo_->setVisible(store_.lastCapturedShot().has_value());
}

}  // namespace Nimbrel
