// Apart from what reads pictures, so that a program which only writes them loads none of the libraries for that.

#include "Linux/Images/PngEncoder.h"
#include "Platform/ImageFile.h"
#include "Platform/NewFile.h"

#include <new>

namespace Nimbrel::ImageFile {

std::optional<Error> writePNG(const QImage& picture, const std::string& path) {
  try {
    const auto bytes = Images::pngOf(picture);
    return bytes.empty() ? Error{"The picture cannot be encoded"} : NewFile::write(path, bytes);
  } catch (const std::bad_alloc&) {
    return Error{"The picture takes too much memory"};
  }
}

}  // namespace Nimbrel::ImageFile
