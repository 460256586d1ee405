#pragma once

#include <QAbstractButton>
#include <QWidget>

namespace Nimbrel {

/// A tag in a capsule, with a button that removes it unless it is fixed. A long one is shortened at its end.
class Chip final : public QWidget {
  Q_OBJECT

 public:
  enum class Kind { Removable, Fixed };

  explicit Chip(const QString& text, Kind kind = Kind::Removable, QWidget* parent = nullptr);

  [[nodiscard]] QString text() const { return text_; }
  /// Null in a fixed one.
  [[nodiscard]] QAbstractButton* removeButton() const { return remove_; }

 Q_SIGNALS:
  void removeRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString text_;
  QAbstractButton* remove_ = nullptr;
};

}  // namespace Nimbrel
