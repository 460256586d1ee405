#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QSettings>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>

namespace Nimbrel {

/// One suite of settings: a typed JSON object in a file that several processes share. A key that is missing can be told
/// from one that is false, empty or of another type. Main thread only.
///
/// Changes are on disk when the call returns, and processes that change different keys at the same moment lose neither.
/// A file that is not a JSON object is copied aside, under its own name with ".damaged-" and a few digits behind it,
/// and counts as empty. What cannot be written is logged and kept for the life of the process. A write waits for
/// another process that is writing, up to half a minute.
class Defaults {
 public:
  /// The suite `name` in `folder`, which is made, for the user alone, with the first write.
  Defaults(const std::string& folder, const std::string& name);

  /// The value as of the last synchronize(); undefined when the key is missing.
  [[nodiscard]] QJsonValue value(const QString& key) const;
  [[nodiscard]] QStringList keys() const;

  /// Both return whether the change is on disk.
  bool set(const QString& key, const QJsonValue& value);
  bool remove(const QString& key);

  /// Picks up what other processes have written.
  void synchronize();

  [[nodiscard]] QString filePath() const { return settings_.fileName(); }

 private:
  void makeFolder() const;
  bool write();

  QSettings settings_;
};

/// Bytes as a suite stores them: {"$data": "<base64>"}.
[[nodiscard]] QJsonValue dataValue(const QByteArray& bytes);

/// The bytes of such a value; absent when it is anything else.
[[nodiscard]] std::optional<QByteArray> dataFrom(const QJsonValue& value);

}  // namespace Nimbrel
