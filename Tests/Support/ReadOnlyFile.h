#pragma once

#include <string>

namespace Nimbrel::Testing {

/// A file that its own user cannot write, for as long as this lives, on the thread that made it. The superuser, who may
/// write everything, looks at files as another user meanwhile.
class ReadOnlyFile {
 public:
  explicit ReadOnlyFile(std::string path);
  ~ReadOnlyFile();
  ReadOnlyFile(const ReadOnlyFile&) = delete;
  ReadOnlyFile& operator=(const ReadOnlyFile&) = delete;

 private:
  std::string path_;
};

}  // namespace Nimbrel::Testing
