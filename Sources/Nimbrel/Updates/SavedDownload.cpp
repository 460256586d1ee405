#include "Updates/SavedDownload.h"

#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/NewFile.h"

#include <QUrl>

#include <algorithm>
#include <filesystem>

namespace Nimbrel {

namespace {

constexpr std::size_t longestName = 100;

bool isLetterOrDigit(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9');
}

bool isPlainName(std::string_view name) {
  if (name.empty() || name.size() > longestName || !isLetterOrDigit(name.front())) return false;
  return std::ranges::all_of(name, [](char character) {
    return isLetterOrDigit(character) || std::string_view(".-_+~").find(character) != std::string_view::npos;
  });
}

}  // namespace

std::string downloadName(const UpdateOffer& offer) {
  const auto url = QUrl::fromEncoded(QByteArray::fromStdString(offer.url), QUrl::StrictMode);
  auto name = url.fileName(QUrl::FullyEncoded).toUtf8().toStdString();
  return isPlainName(name) ? name : "nimbrel-" + offer.version;
}

Result<std::string> saveDownload(const VerifiedUpdate& update, const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  auto path = ShotFile::uniqueURL(FilePath::join(folder, downloadName(update.offer)));
  if (auto fault = NewFile::write(path, *update.download)) return std::move(*fault);
  return path;
}

}  // namespace Nimbrel
