#pragma once

#include "Store/Store.h"

#include <QAction>
#include <QLineEdit>

namespace Nimbrel {

/// The Store's query. Every change of it by the user searches; Escape and the button at its end empty it.
class SearchField final : public QLineEdit {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit SearchField(Store& store, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void search(const QString& text);
  void showQuery();

  Store& store_;
  QAction* clear_;
};

}  // namespace Nimbrel
