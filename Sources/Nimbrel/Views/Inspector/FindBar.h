#pragma once

#include "Views/Shared/GlyphButton.h"

#include <QLineEdit>
#include <QWidget>

namespace Nimbrel {

/// A field for what to look for in a text, with a button that empties it while there is something in it.
class FindBar final : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QWidget* parent = nullptr);

  /// Without telling.
  void setQuery(const QString& query);

 Q_SIGNALS:
  void queryChanged(const QString& query);

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  QLineEdit* field_;
  GlyphButton* clear_;
};

}  // namespace Nimbrel
