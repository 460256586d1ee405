#include "Views/Window/HeaderSubtitle.h"

#include "Store/StoreFixture.h"

namespace Nimbrel {
namespace {

class HeaderSubtitleTest : public Testing::StoreFixture {
 protected:
  void add(const std::string& name, std::int64_t bytes) {
    store_->importFiles({home_.addFile(home_.path(name))});
    store_->database().setBytes(Testing::shotNamed(*store_, name)->id, bytes);
    store_->reload();
  }
};

TEST_F(HeaderSubtitleTest, WithoutShotsThereIsTheirNumberAlone) { EXPECT_EQ(headerSubtitle(*store_), "0 shots"); }

TEST_F(HeaderSubtitleTest, OneShotIsPluralAsWell) {
  add("a.png", 0);
  store_->setFilter({Filter::All{}});
  EXPECT_EQ(headerSubtitle(*store_), "1 shots · Imported 1");
}

TEST_F(HeaderSubtitleTest, TellsTheSizeOfWhatIsVisible) {
  add("a.png", 1'200'000);
  add("b.png", 800'000);
  EXPECT_EQ(headerSubtitle(*store_), "2 shots · 2 MB · Imported 1");
  store_->setFilter({Filter::Favorites{}});
  EXPECT_EQ(headerSubtitle(*store_), "0 shots · Imported 1");
}

}  // namespace
}  // namespace Nimbrel
