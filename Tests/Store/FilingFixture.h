#pragma once

#include "Support/StoreHome.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace Nimbrel::Testing {

/// A home with shots of 2 March 2026 on the Desktop.
class FilingFixture : public ::testing::Test {
 protected:
  std::string addShot(const std::string& name) const {
    const auto path = home_.addFile(home_.desktop(name));
    setModificationTime(path, 1'772'452'800);
    return path;
  }

  /// A Store in which nothing scans by itself, with what lies on the Desktop.
  std::unique_ptr<Store> openScanned() {
    auto store = home_.open(ProcessRole::tool);
    store->scan();
    return store;
  }

  static void read(Store& store, const std::string& name, std::string_view text) {
    store.database().setOCR(shotNamed(store, name)->id, text, {});
    store.reload();
  }

  static void attribute(Store& store, const std::string& name, std::string_view application) {
    store.database().setApp(shotNamed(store, name)->id, application, "", Database::Trusted::Yes);
    store.reload();
  }

  StoreHome home_;
};

}  // namespace Nimbrel::Testing
