#pragma once

#include "Platform/PictureReader.h"

#include <chrono>
#include <memory>
#include <string>

namespace Nimbrel {

struct ReaderProcessOptions {
  std::string program;  ///< where nimbrel-reader lies
  std::string journal;  ///< the file that remembers pictures which were not finished
  std::chrono::milliseconds timeLimit = std::chrono::minutes(1);   ///< for one picture; up to three times that on a
                                                                   ///< machine that is busy or was asleep
  std::chrono::milliseconds restAfter = std::chrono::seconds(60);  ///< the child ends when idle for so long
};

/// Reads in the child process nimbrel-reader: started when first asked, kept while there is something to do, started
/// anew after a picture that it died over or took too long for, which reads as empty. A picture that did so three times
/// is not tried again, by no process of the user. A child that ends before it looked at the picture is started anew for
/// the same one; after a second such end nothing can be read. A picture that another took the place of while it was
/// read, or that was still being written, is read once more. The destructor ends the child. Needs a QCoreApplication.
[[nodiscard]] std::unique_ptr<PictureReader> makeReaderProcess(ReaderProcessOptions options);

/// With the program beside this one, or where it is installed, and the journal among the user's caches.
[[nodiscard]] std::unique_ptr<PictureReader> makeReaderProcess();

}  // namespace Nimbrel
