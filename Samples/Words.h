#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

/// Dates and amounts as the people in the pictures write them, whatever the language of the machine.
namespace Nimbrel::Samples {

[[nodiscard]] inline QLocale sampleLocale() { return {QLocale::English, QLocale::UnitedStates}; }

[[nodiscard]] inline QString words(const QDateTime& moment, QStringView pattern) {
  return sampleLocale().toString(moment, pattern.toString());
}

[[nodiscard]] inline QString words(QDate day, QStringView pattern) {
  return sampleLocale().toString(day, pattern.toString());
}

/// "$1,240.50".
[[nodiscard]] inline QString dollars(qint64 cents) {
  return QLatin1Char('$') + sampleLocale().toString(static_cast<double>(cents) / 100.0, 'f', 2);
}

}  // namespace Nimbrel::Samples
