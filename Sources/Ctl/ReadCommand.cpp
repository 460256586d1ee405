#include "CommandTable.h"
#include "EventWait.h"
#include "ReadableFile.h"

#include "Analysis/OCR.h"
#include "Analysis/Perceptual.h"
#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Model/ShotFile.h"

#include <QJsonArray>
#include <QJsonObject>

#include <utility>

namespace Nimbrel::Ctl {

namespace {

QJsonArray blockList(const std::vector<TextBlock>& blocks) {
  QJsonArray list;
  for (const auto& [text, rect] : blocks) {
    list.append(QJsonObject{{QStringLiteral("text"), jsonString(text)},
                            {QStringLiteral("rect"), QJsonArray{rect.x(), rect.y(), rect.width(), rect.height()}}});
  }
  return list;
}

Outcome whatWasRead(const std::string& path, const OCR::Recognition& recognition,
                    const std::vector<std::string>& codes) {
  const auto size = ShotFile::dimensions(path);
  auto text = printableLines(recognition.text) + "\n";
  for (const auto& code : codes) text += "code: " + printable(code) + "\n";
  return Outcome::done(QJsonObject{{QStringLiteral("text"), jsonString(recognition.text)},
                                   {QStringLiteral("blocks"), blockList(recognition.blocks)},
                                   {QStringLiteral("codes"), jsonList(codes)},
                                   {QStringLiteral("phash"), QString::number(Perceptual::hash(path))},
                                   {QStringLiteral("width"), size.width},
                                   {QStringLiteral("height"), size.height},
                                   {QStringLiteral("bytes"), qint64{ShotFile::size(path)}},
                                   {QStringLiteral("captureType"), jsonString(ShotFile::captureType(path))}},
                       text);
}

}  // namespace

Outcome runRead(const CommandLine& line, Session&) {
  const auto path = readableFile(line.arguments.front());
  if (!path) return Outcome::failed(path.error().message);
  const auto reader = std::move(makeServices(AppIdentity::bundleIdentifier()).pictureReader);
  QObject context;
  auto outcome = Outcome::failed("nothing here can read pictures");
  const bool isDone = untilDone([&](const std::function<void()>& done) {
    OCR::recognizeWithBarcodes(&context, *reader, path.value(),
                               [&, done](std::optional<OCR::RecognitionWithBarcodes> found) {
                                 if (found) outcome = whatWasRead(path.value(), found->recognition, found->barcodes);
                                 done();
                               });
  });
  return isDone ? outcome : Outcome::failed(std::string(interrupted));
}

}  // namespace Nimbrel::Ctl
