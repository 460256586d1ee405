#pragma once

#include "Views/Settings/SymbolButton.h"
#include "Views/Shared/FormSection.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <string>
#include <vector>

namespace Nimbrel {

/// The first rows of a section, one for each entry of a list: a symbol, the entry, and a button that removes it. Main
/// thread.
class EntryRows final : public QObject {
  Q_OBJECT

 public:
  struct Look {
    QString symbol;
    Qt::TextElideMode elide;
  };

  /// The section owns it. Its rows are called the section's name, ".entry" and ".remove".
  EntryRows(FormSection& section, Look look);

  /// Brings the rows in line with the list. The keyboard focus stays at its place in the list.
  void setEntries(const std::vector<std::string>& entries);

 Q_SIGNALS:
  void removeClicked(std::size_t index);
  /// There are other rows.
  void changed();

 private:
  void addRow(std::size_t index);
  void removeRows();

  FormSection& section_;
  Look look_;
  std::vector<std::string> entries_;
  std::vector<SymbolButton*> buttons_;  ///< one of each row
};

}  // namespace Nimbrel
