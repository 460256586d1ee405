#include "CommandTable.h"
#include "EventWait.h"
#include "ShotArguments.h"

#include "Foundation/Wipe.h"

#include <QObject>

#include <algorithm>
#include <cstdio>
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
  for (int c = std::fgetc(stdin); c != EOF && c != '\n'; c = std::fgetc(stdin)) append(line, static_cast<char>(c));
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

Outcome outcomeOf(const std::string& status) {
  const bool isFailed = status == noFolder || status.starts_with(failure);
  return isFailed ? Outcome::failed(status) : Outcome::changed(status);
}

}  // namespace

Outcome runSync(const CommandLine&, Session& session) {
  return withStore(session, [](Store& store) {
    // Before signals end the event loop alone: an interrupt ends the waiting for a line.
    auto passphrase = firstLine();
    const QObject context;
    const bool isDone = untilDone([&](const std::function<void()>& done) {
      QObject::connect(&store, &Store::syncEnded, &context, done);
      store.syncEncrypted(std::move(passphrase));
    });
    return isDone ? outcomeOf(store.status()) : Outcome::failed(std::string(interrupted));
  });
}

}  // namespace Nimbrel::Ctl
