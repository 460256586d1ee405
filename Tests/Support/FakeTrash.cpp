#include "Support/FakeTrash.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Nimbrel::Testing {

void FakeTrash::recycle(QObject* context, std::vector<std::string> paths, Then then) {
  asked.push_back(std::move(paths));
  context_ = context;
  then_ = std::move(then);
}

void FakeTrash::succeed() {
  for (const auto& path : asked.back()) EXPECT_TRUE(std::filesystem::remove(path)) << path;
  answer(std::nullopt);
}

void FakeTrash::failAfter(std::size_t recycled, std::string message) {
  for (std::size_t i = 0; i < recycled; ++i) EXPECT_TRUE(std::filesystem::remove(asked.back().at(i)));
  answer(Error{std::move(message)});
}

void FakeTrash::answer(std::optional<Error> failure) {
  ASSERT_TRUE(then_) << "nothing was asked";
  if (context_) then_(std::move(failure));
  then_ = nullptr;
}

}  // namespace Nimbrel::Testing
