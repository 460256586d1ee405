#pragma once

#include <QJsonArray>
#include <QJsonValue>

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Ctl {

/// What a command came to: its exit status and what is printed, in both forms.
struct Outcome {
  enum Status { Done = 0, Failed = 1, Misused = 2 };

  Status status = Done;
  QJsonValue json;    ///< for --json; undefined prints nothing
  std::string text;   ///< for people, with its line feeds
  std::string error;  ///< one line for standard error, unless done

  [[nodiscard]] static Outcome done(QJsonValue json, std::string text);
  /// The operation failed, for the given reason.
  [[nodiscard]] static Outcome failed(std::string reason);
  /// The command was used wrongly, in the given way.
  [[nodiscard]] static Outcome misused(std::string reason);
  /// Something was changed; `status` is what the program says about it.
  [[nodiscard]] static Outcome changed(const std::string& status);
};

/// Any JSON value as UTF-8 text without a line feed at its end.
[[nodiscard]] std::string jsonText(const QJsonValue& value);

/// UTF-8 as JSON takes it: bytes that are not valid become U+FFFD.
[[nodiscard]] QString jsonString(std::string_view text);

/// The text on one line and harmless to a terminal: a blank for each control character.
[[nodiscard]] std::string printable(std::string_view text);

/// The same, with its line feeds.
[[nodiscard]] std::string printableLines(std::string_view text);

[[nodiscard]] QJsonArray jsonList(const std::vector<std::string>& texts);

}  // namespace Nimbrel::Ctl
