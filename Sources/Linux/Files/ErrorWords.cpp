#include "Linux/Files/ErrorWords.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace Nimbrel {

namespace {

struct Words {
  int error;
  std::string_view words;
};

constexpr std::array words{
    Words{ENOENT, "The file is not there"},
    Words{EEXIST, "A file of that name is already there"},
    Words{EACCES, "Permission denied"},
    Words{EPERM, "Permission denied"},
    Words{ENOSPC, "No space left on the disk"},
    Words{EDQUOT, "No space left for this user on the disk"},
    Words{EROFS, "The disk is read-only"},
    Words{ENAMETOOLONG, "The name is too long"},
    Words{EINVAL, "The name is not possible there"},
    Words{ENOTDIR, "A file stands where a folder is needed"},
    Words{EISDIR, "It is not a file"},
    Words{EFBIG, "The file is too large for the disk"},
    Words{EBUSY, "The file is in use"},
    Words{EIO, "The disk reported an error"},
    Words{ELOOP, "The links on the way lead in a circle"},
    Words{EMFILE, "Too many files are open"},
    Words{ENFILE, "Too many files are open"},
    Words{ESTALE, "The disk is no longer there"},
    Words{ENODEV, "The disk is no longer there"},
    Words{ENOTCONN, "The disk is no longer there"},
    Words{EXDEV, "It lies on another disk"},
};

}  // namespace

std::string wordsFor(int error) {
  const auto found = std::ranges::find(words, error, &Words::error);
  if (found != words.end()) return std::string(found->words);
  // Unlike strerror() the same in every language.
  const char* description = ::strerrordesc_np(error);
  return description != nullptr ? description : "Error " + std::to_string(error);
}

}  // namespace Nimbrel
