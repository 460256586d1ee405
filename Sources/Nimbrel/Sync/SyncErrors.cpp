#include "Sync/SyncErrors.h"

#include "Foundation/Text.h"

#include <cstddef>
#include <string>

namespace Nimbrel::SyncErrors {

namespace {

std::string shortened(std::string_view name) {
  constexpr std::size_t longest = 160;
  const auto beginning = Text::firstCharacters(name.substr(0, 16 * longest), longest);
  return std::string(beginning) + (beginning.size() < name.size() ? "…" : "");
}

Error cannot(std::string_view act, std::string_view what, const Error& reason) {
  return {"Cannot " + std::string(act) + " " + shortened(what) + ": " + reason.message};
}

}  // namespace

Error cannotRead(std::string_view what, const Error& reason) { return cannot("read", what, reason); }

Error cannotWrite(std::string_view what, const Error& reason) { return cannot("write", what, reason); }

Error cannotWriteToLibrary(const Error& reason) { return cannot("write", "to the library", reason); }

Error cannotWriteToVault(const Error& reason) { return cannot("write", "to the vault", reason); }

Error cannotMakeFolder(std::string_view what, const Error& reason) { return cannot("make the folder", what, reason); }

Error cannotEncrypt(std::string_view what) { return {"Cannot encrypt " + shortened(what)}; }

Error stopped() { return {"It was stopped"}; }

}  // namespace Nimbrel::SyncErrors
