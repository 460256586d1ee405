#pragma once

#include "Store/Store.h"

#include <QJsonObject>

#include <string>

namespace Nimbrel::Ctl {

/// A group as an object of its fields.
[[nodiscard]] QJsonObject groupRecord(const ContentGroup& group);

/// The whole record of a shot and what derives from it; of a protected one only what gives nothing away.
[[nodiscard]] QJsonObject shotRecord(const Store& store, const Shot& shot);

/// One line for a table: id, date, size of the file, name.
[[nodiscard]] std::string shotLine(const Store& store, const Shot& shot);

/// The record as lines of "key: value".
[[nodiscard]] std::string recordText(const QJsonObject& record);

}  // namespace Nimbrel::Ctl
