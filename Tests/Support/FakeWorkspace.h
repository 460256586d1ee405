#pragma once

#include "Platform/Workspace.h"

#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// A desktop without applications, which remembers what it was to open and show.
class FakeWorkspace final : public Workspace {
 public:
  void openFile(const std::string& path) override { files.push_back(path); }
  void openURL(const std::string& url) override { urls.push_back(url); }
  void reveal(const std::string& path) override { revealed.push_back(path); }
  [[nodiscard]] std::vector<Taker> openersOf(const std::string&) override { return openers; }
  void openFileWith(const std::string& path, const std::string& opener) override { taken.emplace_back(opener, path); }
  void composeMail(const std::string& path) override { mailed.push_back(path); }
  [[nodiscard]] std::vector<Taker> senders() override { return sendersThere; }
  void sendFile(const std::string& path, const std::string& sender) override { taken.emplace_back(sender, path); }

  std::vector<std::string> files;
  std::vector<std::string> urls;
  std::vector<std::string> revealed;
  std::vector<std::string> mailed;
  std::vector<std::pair<std::string, std::string>> taken;  ///< who was handed which file
  std::vector<Taker> openers;
  std::vector<Taker> sendersThere;
};

}  // namespace Nimbrel::Testing
