#include "App/HeadlessRun.h"

#include "Foundation/Formats.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace Nimbrel {

namespace {

constexpr std::size_t shotsListed = 20;

void printHash(std::ostream& output, std::int64_t hash, const Shot& shot) {
  output << "  " << std::hex << std::setfill('0') << std::setw(16) << static_cast<std::uint64_t>(hash) << std::dec
         << "  " << shot.name << '\n';
}

void printShot(std::ostream& output, const Shot& shot) {
  output << "  " << Formats::mediumDateShortTime(shot.date) << "  " << shot.name << "  "
         << Formats::byteCount(shot.bytes);
  if (!shot.appName.empty()) output << "  [" << shot.appName << ']';
  output << '\n';
}

}  // namespace

void finishHeadlessRun(Store& store, Verbosity verbosity, std::ostream& output) {
  Store::HashLog log;
  if (verbosity == Verbosity::HashLines) {
    log = [&output](std::int64_t hash, const Shot& shot) { printHash(output, hash, shot); };
  }
  const auto hashed = store.hashAllPending(log);
  const auto sensitive = store.rescanSensitive();
  output << store.shots().size() << " shots indexed, " << store.inboxCount() << " waiting in the Inbox\n";
  output << "hashed " << hashed << ", " << sensitive << " look sensitive\n";
  const auto listed = std::min(store.shots().size(), shotsListed);
  for (std::size_t i = 0; i < listed; ++i) printShot(output, *store.shots()[i]);
}

}  // namespace Nimbrel
