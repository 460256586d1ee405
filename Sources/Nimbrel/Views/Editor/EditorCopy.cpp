#include "Views/Editor/EditorCopy.h"

#include "Editing/Flatten.h"
#include "Foundation/FilePath.h"
#include "Foundation/Text.h"
#include "Model/ShotFile.h"
#include "Platform/ImageFile.h"

#include <algorithm>
#include <utility>

namespace Nimbrel::EditorCopy {

namespace {

bool onlyHides(std::span<const Annotation> items) {
  return std::ranges::all_of(items, [](const Annotation& item) {
    return item.kind == Annotation::Kind::redact || item.kind == Annotation::Kind::blur;
  });
}

}  // namespace

std::string wantedPath(const std::string& source, std::span<const Annotation> items) {
  const std::string end = onlyHides(items) ? " redacted.png" : " edited.png";
  const auto name = Text::fittingIn(FilePath::longestName - end.size(), FilePath::baseName(source));
  return FilePath::join(FilePath::folder(source), std::string(name) + end);
}

Saved save(const std::string& source, const FileState& shown, std::span<const Annotation> items,
           const std::atomic<bool>& isGivenUp) {
  const auto copy = Flatten::render(source, items);
  // Afterwards, so that a file that was replaced while it was read is noticed too.
  if (copy.isNull() || stateOfFile(source) != shown) return {.outcome = Outcome::NotRendered, .path = {}};
  if (isGivenUp) return {.outcome = Outcome::GivenUp, .path = {}};
  auto path = ShotFile::uniqueURL(wantedPath(source, items));
  if (ImageFile::writePNG(copy, path)) return {.outcome = Outcome::NotWritten, .path = {}};
  return {.outcome = Outcome::Written, .path = std::move(path)};
}

}  // namespace Nimbrel::EditorCopy
