#include "Updates/UpdateOffer.h"

#include "Updates/SignatureText.h"

#include <charconv>

namespace Nimbrel {

namespace {

std::optional<std::uint64_t> lengthFrom(const std::string& text) {
  std::uint64_t length = 0;
  const auto* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, length);
  const bool isNumber = error == std::errc() && rest == end;
  return isNumber && length > 0 && length <= mostDownloadBytes ? std::optional(length) : std::nullopt;
}

const FeedItem* newestOf(const std::vector<FeedItem>& items, const Version& running) {
  const FeedItem* newest = nullptr;
  auto version = running;
  for (const auto& item : items) {
    const auto candidate = Version::parse(item.version);
    if (!candidate || *candidate <= version) continue;
    newest = &item;
    version = *candidate;
  }
  return newest;
}

}  // namespace

Result<std::optional<UpdateOffer>> chooseUpdate(const std::vector<FeedItem>& items, const Version& running) {
  const auto* newest = newestOf(items, running);
  if (newest == nullptr) return std::optional<UpdateOffer>();
  const auto fault = [&](const char* words) { return Error{"version " + newest->version + " " + words}; };
  if (!newest->url.starts_with("https://")) return fault("has no https address");
  const auto length = lengthFrom(newest->length);
  if (!length) return fault("has no size that can be");
  if (newest->signature.empty()) return fault("is not signed");
  const auto signature = signatureFrom(newest->signature);
  if (!signature) return fault("has a damaged signature");
  return std::optional(UpdateOffer{.version = newest->version,
                                   .notes = newest->notes,
                                   .url = newest->url,
                                   .length = *length,
                                   .signature = *signature});
}

}  // namespace Nimbrel
