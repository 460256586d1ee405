#include "Views/Window/SheetHost.h"

#include <utility>

namespace Nimbrel {

SheetHost::SheetHost(QWidget& window) : QObject(&window), window_(&window) {}

SheetHost::SheetHost(QObject* parent) : QObject(parent) {}

SheetHost::~SheetHost() {
  if (window_ == nullptr) delete dialog_;
}

void SheetHost::add(Sheet sheet) { sheets_.push_back(std::move(sheet)); }

void SheetHost::look() {
  if (dialog_) {
    if (!sheets_[index_].isWanted()) dialog_->reject();
    return;
  }
  for (std::size_t i = 0; i < sheets_.size() && !dialog_; ++i) {
    if (sheets_[i].isWanted()) open(i);
  }
}

void SheetHost::open(std::size_t index) {
  auto* dialog = sheets_[index].make ? sheets_[index].make(window_) : nullptr;
  if (dialog == nullptr) return sheets_[index].dismissed();
  index_ = index;
  dialog_ = dialog;
  connect(dialog, &QDialog::finished, this, &SheetHost::end);
  if (window_ == nullptr) {
    dialog->setWindowModality(Qt::NonModal);
    dialog->show();
  } else {
    dialog->open();
  }
  Q_EMIT opened();
}

void SheetHost::end() {
  auto* dialog = dialog_.data();
  dialog_.clear();
  if (dialog != nullptr) dialog->deleteLater();
  if (sheets_[index_].isWanted()) sheets_[index_].dismissed();
  look();
}

}  // namespace Nimbrel
