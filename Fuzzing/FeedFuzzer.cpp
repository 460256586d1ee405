// A feed of releases as any server may send it. Whatever it is, nothing is offered that is not newer, not https, too
// large or without a signature.

#include "Updates/Feed.h"
#include "Updates/UpdateOffer.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace Nimbrel {

namespace {

void demand(bool condition) {
  if (!condition) std::abort();
}

void checkOffer(const std::vector<FeedItem>& items) {
  const auto running = Version::parse("1.2").value();
  const auto offer = chooseUpdate(items, running);
  if (!offer) return demand(!offer.error().message.empty() && offer.error().message.size() < 300);
  if (!offer.value()) return;
  demand(offer.value()->url.starts_with("https://"));
  demand(offer.value()->length > 0 && offer.value()->length <= mostDownloadBytes);
  const auto version = Version::parse(offer.value()->version);
  demand(version && *version > running);
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  // In memory of exactly this size, so that a step beyond it is noticed.
  const std::vector<char> xml(data, data + size);
  const auto items = parseFeed({xml.data(), xml.size()});
  if (items) checkOffer(items.value());
  return 0;
}
