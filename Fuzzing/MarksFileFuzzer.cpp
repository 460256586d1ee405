// Marks as whoever writes them by hand or by a script leaves them. What our reader takes, it takes alike once it is
// written out again.

#include "Editing/MarksFile.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointF>
#include <QString>
#include <QStringDecoder>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

void demand(bool condition) {
  if (!condition) std::abort();
}

/// To the letter: a text may begin with what would be a mark of the byte order in a file.
QString text(std::string_view bytes) {
  QStringDecoder decoder(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
  return decoder(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

std::string written(const Annotation& mark) {
  const QJsonObject object{{QStringLiteral("kind"), text(rawValue(mark.kind))},
                           {QStringLiteral("start"), QJsonArray{mark.start.x(), mark.start.y()}},
                           {QStringLiteral("end"), QJsonArray{mark.end.x(), mark.end.y()}},
                           {QStringLiteral("colorIndex"), mark.colorIndex},
                           {QStringLiteral("number"), mark.number},
                           {QStringLiteral("text"), text(mark.text)}};
  // Qt's parser takes a mark of the byte order off the beginning of a text in which nothing is escaped.
  return QJsonDocument(QJsonArray{object}).toJson().replace("\xEF\xBB\xBF", "\\ufeff").toStdString();
}

bool isFinite(QPointF point) { return std::isfinite(point.x()) && std::isfinite(point.y()); }

void checkOneByOne(const std::vector<Annotation>& marks) {
  for (const auto& mark : marks) {
    demand(isFinite(mark.start) && isFinite(mark.end) && !mark.id.isNull());
    const auto again = marksFromJSON(written(mark));
    demand(again && again.value().size() == 1);
    auto copy = again.value().front();
    demand(copy.id != mark.id);
    copy.id = mark.id;
    demand(copy == mark && qHash(copy) == qHash(mark));
  }
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  // In memory of exactly this size, so that a step beyond it is noticed.
  const std::vector<char> json(data, data + size);
  const auto marks = marksFromJSON({json.data(), json.size()});
  if (marks) {
    checkOneByOne(marks.value());
  } else {
    demand(!marks.error().message.empty() && marks.error().message.size() < 300);
  }
  return 0;
}
