#include "CommandTable.h"
#include "EventWait.h"
#include "ShotArguments.h"

#include "Foundation/Wipe.h"
#include "Platform/Terminal.h"

#include <QObject>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace Nimbrel::Ctl {

namespace {

constexpr std::string_view noFolder = "Choose a sync folder first";
constexpr std::string_view failure = "Sync failed: ";

/// Grows by hand: a text that grows by itself leaves its former characters behind.
void append(std::string& secret, char character) {
  if (secret.size() == secret.capacity()) {
    std::string larger;
    larger.reserve(std::max(secretRoom, 2 * secret.capacity()));
    larger = secret;
    wipe(secret);
    secret.swap(larger);
  }
  secret += character;
}

/// The first line of standard input without its end, read without a buffer that would keep it.
std::string firstLine() {
  std::setvbuf(stdin, nullptr, _IONBF, 0);
  std::string line;
  line.reserve(secretRoom);
  int c = std::fgetc(stdin);
  for (; c != EOF && c != '\n'; c = std::fgetc(stdin)) append(line, static_cast<char>(c));
  if (c == '\n' && line.ends_with('\r')) line.pop_back();
  return line;
}

/// What somebody types unseen; absent when that is cancelled or the program interrupted.
std::optional<std::string> typedLine(Terminal& terminal) {
  std::optional<std::string> line;
  const bool isAnswered = untilDone([&](const std::function<void()>& done) {
    terminal.ask("Passphrase: ", Terminal::Echo::Off, [&line, done](std::optional<std::string> typed) {
      line = std::move(typed);
      done();
    });
  });
  return isAnswered ? std::move(line) : std::nullopt;
}

std::optional<std::string> readPassphrase() {
  const auto terminal = Terminal::isStandardInput() ? Terminal::open() : nullptr;
  return terminal ? typedLine(*terminal) : firstLine();
}

Outcome outcomeOf(const std::string& status) {
  const bool isFailed = status == noFolder || status.starts_with(failure);
  return isFailed ? Outcome::failed(status) : Outcome::changed(status);
}

/// An exchange and the scan that follows, to their end.
Outcome exchange(Store& store, std::string passphrase) {
  const QObject context;
  const bool isDone = untilDone([&](const std::function<void()>& done) {
    QObject::connect(&store, &Store::syncEnded, &context, done);
    store.syncEncrypted(std::move(passphrase));
  });
  return isDone ? outcomeOf(store.status()) : Outcome::failed(std::string(interrupted));
}

}  // namespace

Outcome runSync(const CommandLine&, Session& session) {
  return withStore(session, [](Store& store) {
    // Before signals end the event loop alone: an interrupt ends the waiting for a line. Without a folder nobody needs
    // to wait.
    auto passphrase = store.settings().syncFolder() ? readPassphrase() : std::string();
    return passphrase ? exchange(store, std::move(*passphrase)) : Outcome::failed(std::string(interrupted));
  });
}

}  // namespace Nimbrel::Ctl
