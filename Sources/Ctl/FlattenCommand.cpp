#include "CommandTable.h"
#include "ReadableFile.h"

#include "Editing/Flatten.h"
#include "Editing/MarksFile.h"
#include "Foundation/Result.h"
#include "Model/Annotation.h"
#include "Platform/ImageFile.h"

#include <QJsonObject>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace Nimbrel::Ctl {

namespace {

/// Nobody draws as many marks as that, and the whole file is held in memory, several times over while it is parsed.
constexpr std::uintmax_t mostMarksBytes = 64 << 20;

Result<std::string> contentOf(const std::string& name) {
  const auto unreadable = [&](const std::string& reason) { return Error{"cannot read " + name + ": " + reason}; };
  const auto path = readableFile(name);
  if (!path) return path.error();
  std::error_code error;
  const auto size = std::filesystem::file_size(path.value(), error);
  if (error) return unreadable(error.message());
  if (size > mostMarksBytes) return unreadable("larger than 64 MB");
  std::string content(size, '\0');
  std::ifstream file(path.value(), std::ios::binary);
  if (!file.read(content.data(), std::ssize(content))) return unreadable("the reading broke off");
  return content;
}

Result<std::vector<Annotation>> marksIn(const std::string& name) {
  const auto content = contentOf(name);
  if (!content) return content.error();
  auto marks = marksFromJSON(content.value());
  return marks ? std::move(marks) : Error{name + ": " + marks.error().message};
}

}  // namespace

Outcome runFlatten(const CommandLine& line, Session&) {
  const auto marksName = line.value("--marks");
  if (!marksName) return Outcome::misused("which marks? give --marks");
  const auto source = readableFile(line.arguments[0]);
  if (!source) return Outcome::failed(source.error().message);
  const auto target = newFile(line.arguments[1]);
  if (!target) return Outcome::failed(target.error().message);
  const auto marks = marksIn(std::string(*marksName));
  if (!marks) return Outcome::failed(marks.error().message);

  const auto picture = Flatten::render(source.value(), marks.value());
  if (picture.isNull()) return Outcome::failed("cannot read " + line.arguments[0] + ": no picture, or too large a one");
  if (const auto error = ImageFile::writePNG(picture, target.value())) {
    return Outcome::failed("cannot write " + line.arguments[1] + ": " + error->message);
  }
  return Outcome::done(QJsonObject{{QStringLiteral("path"), jsonString(target.value())}},
                       printable(target.value()) + "\n");
}

}  // namespace Nimbrel::Ctl
