#pragma once

#include "Store/Store.h"

#include "Support/TemporaryFolder.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Testing {

/// File events that come when a test says so, and remember what they were asked.
class FakeFileEvents final : public FileEvents {
 public:
  void watch(std::vector<WatchedFolder> folders, Seconds latency, Callback onChange) override;
  void expectOwnChange(const std::string& path) override { expected.push_back(path); }

  /// As if something had changed in a watched folder.
  void change() const;

  std::vector<std::vector<WatchedFolder>> watched;  ///< each call, with its folders
  Seconds latency{};
  std::vector<std::string> expected;

 private:
  Callback onChange_;
};

/// The home of a user with a Desktop, a library and nothing else, and Stores that work in it.
class StoreHome {
 public:
  StoreHome();

  [[nodiscard]] std::string path(std::string_view name) const { return folder_.path(name); }
  [[nodiscard]] std::string desktop(std::string_view name) const;
  [[nodiscard]] std::string inLibrary(std::string_view name) const;
  [[nodiscard]] const TemporaryFolder& folder() const { return folder_; }
  [[nodiscard]] const UserFolders& folders() const { return folders_; }

  /// A file of a name with an image's extension in a folder; no picture, which a scan need not know.
  std::string addFile(const std::string& path) const;

  /// Opens a Store in the given role. `events`, if given, is told the file events that the Store works with.
  [[nodiscard]] std::unique_ptr<Store> open(ProcessRole role, FakeFileEvents** events = nullptr);

  /// The same with services of the test's own.
  [[nodiscard]] std::unique_ptr<Store> open(ProcessRole role, Services services);

  /// The suite as another process has it.
  [[nodiscard]] std::unique_ptr<Defaults> suiteOfOtherProcess() const;

  /// The time that the Stores are told.
  Timestamp now;

 private:
  TemporaryFolder folder_;
  UserFolders folders_;
};

/// The shots' names, in the order of the list.
[[nodiscard]] std::vector<std::string> namesOf(const ShotList& shots);

/// The shot of that name; fails the test when there is none.
[[nodiscard]] ShotPtr shotNamed(const Store& store, std::string_view name);

}  // namespace Nimbrel::Testing
