#pragma once

#include "Store/Store.h"
#include "Views/Shared/FormSection.h"

#include <QCheckBox>
#include <QPushButton>
#include <QStringList>

#include <functional>
#include <initializer_list>

namespace Nimbrel {

/// One section of the settings. What it shows follows the settings, whoever changes them; what the user does is stored
/// at once. Main thread.
class SettingsPane : public FormSection {
  Q_OBJECT

 public:
  /// The Store must outlive it. `name` is the object's, behind "settings.".
  SettingsPane(Store& store, const QString& title, const QString& name);

 Q_SIGNALS:
  /// Rows came or went.
  void rowsChanged();

 protected:
  using Act = std::function<void()>;

  [[nodiscard]] Store& store() const { return store_; }
  [[nodiscard]] Settings& settings() const { return store_.settings(); }

  /// Calls that now, and again whenever the setting has another value.
  void follow(const AnyPreference& setting, Act show);
  /// A toggle that is a setting, with "settings." and its key for a name. `then`, if any, follows when the user has
  /// changed it.
  QCheckBox* addSwitch(const QString& label, Preference<bool>& setting, const QString& explanation = {}, Act then = {});
  /// Texts over the whole width, one below the other.
  void addNotes(const QStringList& texts);
  /// Controls side by side, from the beginning of the row.
  void addControls(std::initializer_list<QWidget*> controls);

 private:
  Store& store_;
};

/// A small button that does something, of that name behind "settings.".
[[nodiscard]] QPushButton* settingsButton(const QString& title, const QString& name);

/// A control behind a label, which becomes the control's accessible name. The controls of all such rows begin below
/// each other, also those of rows that are indented by so many device-independent pixels.
[[nodiscard]] QWidget* labelledRow(const QString& label, QWidget* control,
                                   FormSection::Fit fit = FormSection::Fit::Fill, int indent = 0);

}  // namespace Nimbrel
