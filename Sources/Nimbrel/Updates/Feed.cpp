#include "Updates/Feed.h"

#include <QByteArray>
#include <QXmlStreamReader>

namespace Nimbrel {

namespace {

std::string plain(QStringView text) { return text.trimmed().toUtf8().toStdString(); }

/// By their names alone: which namespace a feed puts them in is its own affair.
std::string attribute(const QXmlStreamAttributes& attributes, QLatin1String name) {
  for (const auto& candidate : attributes) {
    if (candidate.name() == name) return plain(candidate.value());
  }
  return {};
}

class FeedReader {
 public:
  explicit FeedReader(std::string_view xml)
      : xml_(QByteArray::fromRawData(xml.data(), static_cast<qsizetype>(xml.size()))) {}

  Result<std::vector<FeedItem>> read() {
    const bool isFeed = xml_.readNextStartElement() && xml_.name() == QLatin1String("rss");
    while (isFeed && xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("channel")) {
        readChannel();
      } else {
        xml_.skipCurrentElement();
      }
    }
    // Half a feed is none, wherever the fault is.
    while (!xml_.atEnd()) xml_.readNext();
    if (xml_.hasError()) return Error{"the feed is no XML"};
    if (!isFeed) return Error{"the feed is no RSS"};
    return std::move(items_);
  }

 private:
  void readChannel() {
    while (xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("item")) {
        items_.push_back(readItem());
      } else {
        xml_.skipCurrentElement();
      }
    }
  }

  FeedItem readItem() {
    FeedItem item;
    while (xml_.readNextStartElement()) {
      if (xml_.name() == QLatin1String("description")) {
        item.notes = readText();
      } else if (xml_.name() == QLatin1String("version")) {
        item.version = readText();
      } else if (xml_.name() == QLatin1String("enclosure")) {
        readEnclosure(item);
      } else {
        xml_.skipCurrentElement();
      }
    }
    return item;
  }

  void readEnclosure(FeedItem& item) {
    const auto attributes = xml_.attributes();
    item.url = attribute(attributes, QLatin1String("url"));
    item.length = attribute(attributes, QLatin1String("length"));
    item.signature = attribute(attributes, QLatin1String("edSignature"));
    const auto version = attribute(attributes, QLatin1String("version"));
    if (!version.empty()) item.version = version;
    xml_.skipCurrentElement();
  }

  std::string readText() { return plain(xml_.readElementText(QXmlStreamReader::SkipChildElements)); }

  QXmlStreamReader xml_;
  std::vector<FeedItem> items_;
};

}  // namespace

Result<std::vector<FeedItem>> parseFeed(std::string_view xml) { return FeedReader(xml).read(); }

}  // namespace Nimbrel
