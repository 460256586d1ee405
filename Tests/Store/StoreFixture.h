#pragma once

#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Testing {

/// A home and a Store in it in which nothing scans by itself.
class StoreFixture : public ::testing::Test {
 protected:
  [[nodiscard]] std::vector<std::string> tagsOf(std::string_view name) const { return shotNamed(*store_, name)->tags; }
  [[nodiscard]] std::vector<std::string> projects() const { return store_->settings().projects(); }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
};

}  // namespace Nimbrel::Testing
