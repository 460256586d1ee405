#include "Views/Shared/FieldText.h"

#include "Foundation/Text.h"
#include "Foundation/Wipe.h"

#include <algorithm>
#include <span>

namespace Nimbrel {

namespace {

void wipeBytes(QByteArray& bytes) { wipe(std::span(bytes.data(), static_cast<std::size_t>(bytes.size()))); }

}  // namespace

void setFieldText(QLineEdit& field, const QString& text) {
  if (field.text() != text) field.setText(text);
}

void hideText(QLineEdit& field) {
  field.setEchoMode(QLineEdit::Password);
  field.setInputMethodHints(Qt::ImhHiddenText | Qt::ImhSensitiveData | Qt::ImhNoPredictiveText |
                            Qt::ImhNoAutoUppercase);
}

std::string takeSecret(QLineEdit& field) {
  auto text = field.text();
  // Other than clear(), this forgets what could be undone.
  field.setText({});
  auto bytes = text.toUtf8();
  std::string secret;
  secret.reserve(std::max(secretRoom, static_cast<std::size_t>(bytes.size())));
  secret.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  wipeBytes(bytes);
  wipe(std::span(reinterpret_cast<char*>(text.data()), static_cast<std::size_t>(text.size()) * sizeof(QChar)));
  return secret;
}

void dropSecret(QLineEdit& field) {
  auto begun = takeSecret(field);
  wipe(begun);
}

std::size_t characterCount(const QLineEdit& field) {
  auto bytes = field.text().toUtf8();
  const auto count = Text::characterCount({bytes.constData(), static_cast<std::size_t>(bytes.size())});
  wipeBytes(bytes);
  return count;
}

}  // namespace Nimbrel
