#include "Updates/UpdateCheck.h"

#include "Foundation/Background.h"
#include "Updates/Feed.h"

#include <utility>

namespace Nimbrel {

namespace {

using Then = std::function<void(UpdateOutcome)>;

Result<std::optional<UpdateOffer>> offerOf(const Result<std::string>& feed, const UpdateSource& source) {
  if (!feed) return feed.error();
  const auto items = parseFeed(feed.value());
  if (!items) return items.error();
  auto offer = chooseUpdate(items.value(), source.running);
  if (!offer) return offer;
  const auto& found = offer.value();
  if (found && found->version == source.skipped) return std::optional<UpdateOffer>();
  return offer;
}

UpdateOutcome outcomeOf(const UpdateOffer& offer, std::shared_ptr<const std::string> download, bool isGenuine) {
  if (!isGenuine) return Error{"the signature of version " + offer.version + " is wrong"};
  return std::optional(VerifiedUpdate{.offer = offer, .download = std::move(download)});
}

void verify(const UpdateOffer& offer, std::string bytes, const Crypto::PublicKey& key, QObject* context, Then then) {
  auto download = std::make_shared<const std::string>(std::move(bytes));
  const auto isGenuine = [download, signature = offer.signature, key] {
    return Crypto::isSigned(*download, signature, key);
  };
  inBackground(context, *QThreadPool::globalInstance(), isGenuine,
               [offer, download, then = std::move(then)](bool genuine) { then(outcomeOf(offer, download, genuine)); });
}

void fetchOffer(HttpsFetcher& fetcher, const UpdateOffer& offer, const Crypto::PublicKey& key, QObject* context,
                Then then) {
  const auto take = [offer, key, context, then = std::move(then)](Result<std::string> bytes) {
    if (!bytes) return then(bytes.error());
    if (bytes.value().size() != offer.length) {
      return then(Error{"version " + offer.version + " has another size than it should"});
    }
    verify(offer, std::move(bytes).value(), key, context, then);
  };
  fetcher.fetch({.url = offer.url, .mostBytes = offer.length}, context, take);
}

}  // namespace

void lookForUpdate(HttpsFetcher& fetcher, UpdateSource source, QObject* context, Then then) {
  const HttpsFetcher::Request request{.url = source.feedURL, .mostBytes = mostFeedBytes};
  fetcher.fetch(
      request, context,
      [&fetcher, source = std::move(source), context, then = std::move(then)](const Result<std::string>& feed) {
        const auto offer = offerOf(feed, source);
        if (!offer) return then(offer.error());
        if (!offer.value()) return then(std::optional<VerifiedUpdate>());
        fetchOffer(fetcher, *offer.value(), source.key, context, then);
      });
}

}  // namespace Nimbrel
