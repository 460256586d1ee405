#pragma once

#include <string>
#include <vector>

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

  /// An application that takes a file.
  struct Taker {
    std::string id;    ///< for the call that hands it the file
    std::string name;  ///< for people, in their language
    std::string icon;  ///< a name for the icon theme, or the absolute path of a picture; empty when there is none

    bool operator==(const Taker&) const = default;
  };

  /// The applications that open files of that kind, the one that the user has chosen first. Looks at the file.
  [[nodiscard]] virtual std::vector<Taker> openersOf(const std::string& path) = 0;
  virtual void openFileWith(const std::string& path, const std::string& opener) = 0;

  /// Begins an e-mail to nobody yet that has the file with it.
  virtual void composeMail(const std::string& path) = 0;

  /// What the desktop has to send files to other devices and people.
  [[nodiscard]] virtual std::vector<Taker> senders() = 0;
  virtual void sendFile(const std::string& path, const std::string& sender) = 0;
};

/// Where no applications can be started: nothing is opened.
class NullWorkspace final : public Workspace {
 public:
  void openFile(const std::string&) override {}
  void openURL(const std::string&) override {}
  void reveal(const std::string&) override {}
  [[nodiscard]] std::vector<Taker> openersOf(const std::string&) override { return {}; }
  void openFileWith(const std::string&, const std::string&) override {}
  void composeMail(const std::string&) override {}
  [[nodiscard]] std::vector<Taker> senders() override { return {}; }
  void sendFile(const std::string&, const std::string&) override {}
};

}  // namespace Nimbrel
