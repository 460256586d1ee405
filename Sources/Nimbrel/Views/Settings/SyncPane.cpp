#include "Views/Settings/SyncPane.h"

#include "Sync/Vault.h"
#include "Views/Settings/FolderPicker.h"
#include "Views/Shared/FieldText.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

QString pickerTitle() { return QStringLiteral("Choose an iCloud, Dropbox, or shared sync folder"); }

}  // namespace

SyncPane::SyncPane(Store& store)
    : SettingsPane(store, tr("Encrypted Sync"), QStringLiteral("sync")),
      folder_(new FolderRow(QStringLiteral("sync"), pickerTitle())),
      passphrase_(new QLineEdit),
      syncNow_(settingsButton(tr("Sync Now"), QStringLiteral("syncNow"))),
      ring_(new BusyRing),
      count_(new QLabel) {
  addRow(tr("Folder"), folder_, Fit::Fill);
  connect(folder_, &FolderRow::chooseClicked, this, &SyncPane::chooseFolder);
  addPassphrase();
  addSyncRow();
  addNotes(
      {tr("Screenshots in the library are encrypted before entering the shared folder. Use the same passphrase on "
          "each Mac. The passphrase is never stored.")});
  follow(settings().syncRoot, [this] { refresh(); });
}

// The pane may go without being hidden first.
SyncPane::~SyncPane() {
  disconnect(passphrase_, nullptr, this, nullptr);
  dropSecret(*passphrase_);
}

void SyncPane::addPassphrase() {
  passphrase_->setObjectName(QStringLiteral("settings.passphrase"));
  passphrase_->setFixedHeight(scaled(Measures::formFieldHeight));
  passphrase_->setContextMenuPolicy(Qt::NoContextMenu);
  hideText(*passphrase_);
  addWidgetRow(labelledRow(tr("Sync passphrase"), passphrase_));
  connect(passphrase_, &QLineEdit::textChanged, this, &SyncPane::refresh);
  connect(passphrase_, &QLineEdit::returnPressed, syncNow_, &QAbstractButton::click);
}

void SyncPane::addSyncRow() {
  ring_->setObjectName(QStringLiteral("settings.syncRing"));
  count_->setObjectName(QStringLiteral("settings.syncCount"));
  setTextLook(*count_, TextStyle::Caption, Token::Secondary);
  addControls({syncNow_, ring_, count_});
  connect(syncNow_, &QPushButton::clicked, this, &SyncPane::syncNow);
  connect(&store(), &Store::syncProgressChanged, this, &SyncPane::showProgress);
  showProgress();
}

void SyncPane::chooseFolder() {
  const FolderQuestion question{.name = QStringLiteral("settings.syncPicker"),
                                .title = pickerTitle(),
                                .former = settings().syncFolder().value_or(std::string())};
  pickFolder(*this, question, [this](const std::string& path) { settings().syncRoot.set(path); });
}

void SyncPane::refresh() {
  const auto folder = settings().syncFolder();
  folder_->setPath(folder ? *folder : tr("Not configured").toStdString());
  syncNow_->setEnabled(folder && characterCount(*passphrase_) >= Vault::fewestCharacters);
}

void SyncPane::showProgress() {
  const auto& progress = store().syncProgress();
  ring_->setVisible(progress.has_value());
  const bool isCounted = progress && progress->all > 0;
  count_->setText(isCounted ? tr("%1 of %2").arg(progress->done).arg(progress->all) : QString());
}

void SyncPane::syncNow() { store().syncEncrypted(takeSecret(*passphrase_)); }

}  // namespace Nimbrel
