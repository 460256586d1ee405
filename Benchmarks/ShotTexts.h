#pragma once

#include <string>

namespace Nimbrel::Benchmarks {

/// A text of about 1.2 KB as a screenshot might hold, by number: one half running words, the others receipts, code,
/// chats, web pages and reports of errors, with characters beyond ASCII here and there. The same every time.
[[nodiscard]] std::string shotText(int number);

/// The application in front when the shot was taken, by number; empty for a third of them.
struct Application {
  std::string name;
  std::string bundleID;
};
[[nodiscard]] Application applicationOf(int number);

}  // namespace Nimbrel::Benchmarks
