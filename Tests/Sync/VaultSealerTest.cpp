#include "Sync/VaultSealer.h"

#include "SyncFixture.h"

namespace Nimbrel {
namespace {

using Outcome = VaultSealer::Outcome;

class VaultSealerTest : public ::testing::Test {
 protected:
  /// What comes of sealing what stands at the path, once `meanwhile` has been called; fails the test on an error.
  [[nodiscard]] Outcome sealed(const std::string& path, const std::function<void()>& meanwhile) {
    auto source = FileReader::open(path);
    EXPECT_TRUE(source) << source.error().message;
    meanwhile();
    auto target = PendingFile::beside(folder_.path("target"));
    EXPECT_TRUE(target) << target.error().message;
    const auto outcome = sealer_.seal(source.value(), "a.png", target.value());
    EXPECT_TRUE(outcome) << outcome.error().message;
    return outcome.value();
  }

  Testing::TemporaryFolder folder_;
  VaultSealer sealer_{Testing::keyOf(Testing::passphrase)};
};

TEST_F(VaultSealerTest, AFileThatStaysAsItIsIsSealed) {
  EXPECT_EQ(sealed(folder_.write("a.png", "content"), [] {}), Outcome::Sealed);
  EXPECT_EQ(sealed(folder_.write("empty.png", ""), [] {}), Outcome::Sealed);
}

TEST_F(VaultSealerTest, AFileThatIsWrittenToIsNot) {
  const auto path = folder_.write("a.png", "content");
  EXPECT_EQ(sealed(path, [&] { std::ofstream(path, std::ios::app).put('x'); }), Outcome::SourceChanged);
  EXPECT_EQ(sealed(path, [&] { std::filesystem::resize_file(path, 1); }), Outcome::SourceChanged);
  EXPECT_EQ(sealed(path, [] {}), Outcome::Sealed) << "now it stays";
}

}  // namespace
}  // namespace Nimbrel
