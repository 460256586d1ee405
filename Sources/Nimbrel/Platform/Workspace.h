#pragma once

#include <string>

namespace Nimbrel {

/// What other applications do with files and addresses for us. Each call returns at once; nobody hears whether an
/// application took it. File names are bytes. Main thread only.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens the file with the application that the user has chosen for its kind.
  virtual void openFile(const std::string& path) = 0;

  /// Opens an address, encoded, with the application for its scheme.
  virtual void openURL(const std::string& url) = 0;

  /// Shows the file in the file manager, selected; where that cannot select, its folder.
  virtual void reveal(const std::string& path) = 0;
};

/// Where no applications can be started: nothing is opened.
class NullWorkspace final : public Workspace {
 public:
  void openFile(const std::string&) override {}
  void openURL(const std::string&) override {}
  void reveal(const std::string&) override {}
};

}  // namespace Nimbrel
