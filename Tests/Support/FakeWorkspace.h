#pragma once

#include "Platform/Workspace.h"

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A desktop without applications, which remembers what it was to open and show.
class FakeWorkspace final : public Workspace {
 public:
  void openFile(const std::string& path) override { files.push_back(path); }
  void openURL(const std::string& url) override { urls.push_back(url); }
  void reveal(const std::string& path) override { revealed.push_back(path); }

  std::vector<std::string> files;
  std::vector<std::string> urls;
  std::vector<std::string> revealed;
};

}  // namespace Nimbrel::Testing
