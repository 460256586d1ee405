#pragma once

#include <QLineEdit>
#include <QString>

#include <cstddef>
#include <string>

namespace Nimbrel {

/// Puts a text into a field unless it is there, so that the cursor stays.
void setFieldText(QLineEdit& field, const QString& text);

/// Shows dots for what is typed, and asks input methods to remember nothing of it.
void hideText(QLineEdit& field);

/// Takes the text out of the field and leaves as little of it behind as can be reached. It has room of its own, so that
/// it can be moved on and wiped.
[[nodiscard]] std::string takeSecret(QLineEdit& field);

/// Empties the field in the same way: what was only begun is a secret as well.
void dropSecret(QLineEdit& field);

/// How many characters, as people count them, stand in a field; no copy of them stays behind.
[[nodiscard]] std::size_t characterCount(const QLineEdit& field);

}  // namespace Nimbrel
