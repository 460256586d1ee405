#include "Model/Filter.h"

#include <gtest/gtest.h>

#include <unordered_set>

namespace Nimbrel {
namespace {

struct Face {
  Filter filter;
  std::string_view title;
  std::string_view symbol;
};

const Face faces[] = {
    {{Filter::Inbox{}}, "Inbox", "tray"},
    {{Filter::All{}}, "All Shots", "square.grid.2x2"},
    {{Filter::Today{}}, "Today", "clock"},
    {{Filter::Week{}}, "Last 7 Days", "calendar"},
    {{Filter::Favorites{}}, "Favorites", "star"},
    {{Filter::Sensitive{}}, "Sensitive", "exclamationmark.shield"},
    {{Filter::Tag{"work"}}, "work", "tag"},
    {{Filter::Content{"app:mail", "Mail"}}, "Mail", "square.stack.3d.up"},
    {{Filter::Saved{"red car"}}, "red car", "bookmark"},
    {{Filter::Similar{7}}, "Similar Shots", "square.on.square"},
    {{Filter::Smart{SmartCollection::tickets}}, "Tickets", "ticket"},
    {{Filter::Stack{"stack:app:mail", "Mail"}}, "Mail", "square.stack.3d.up"},
    {{Filter::Project{"Thesis"}}, "Thesis", "folder.badge.gearshape"},
};

TEST(Filter, EachCaseHasATitleAndASymbol) {
  static_assert(std::size(faces) == std::variant_size_v<Filter::Case>);
  for (std::size_t i = 0; i < std::size(faces); ++i) {
    EXPECT_EQ(faces[i].filter.choice.index(), i);
    EXPECT_EQ(faces[i].filter.title(), faces[i].title);
    EXPECT_EQ(faces[i].filter.symbol(), faces[i].symbol);
  }
}

TEST(Filter, IsTheInboxAtFirst) { EXPECT_EQ(Filter{}, Filter{Filter::Inbox{}}); }

TEST(Filter, IsEqualOnlyWithTheSameCaseAndPayload) {
  for (const auto& a : faces) {
    for (const auto& b : faces) EXPECT_EQ(a.filter == b.filter, &a == &b) << a.title << " and " << b.title;
  }
  EXPECT_NE(Filter{Filter::Tag{"a"}}, Filter{Filter::Tag{"b"}});
  EXPECT_NE((Filter{Filter::Content{"app:a", "Mail"}}), (Filter{Filter::Content{"app:b", "Mail"}}));
  EXPECT_NE(Filter{Filter::Similar{1}}, Filter{Filter::Similar{2}});
}

TEST(Filter, StandsInSets) {
  std::unordered_set<Filter> filters;
  for (const auto& face : faces) filters.insert(face.filter);
  for (const auto& face : faces) filters.insert(Filter(face.filter));
  EXPECT_EQ(filters.size(), std::size(faces));
  filters.insert(Filter{Filter::Similar{8}});
  filters.insert(Filter{Filter::Content{"app:other", "Mail"}});
  EXPECT_EQ(filters.size(), std::size(faces) + 2);
}

TEST(Filter, HashesOfDifferentShotsDiffer) {
  const std::hash<Filter> hash;
  EXPECT_NE(hash(Filter{Filter::Similar{1}}), hash(Filter{Filter::Similar{2}}));
  EXPECT_NE(hash(Filter{Filter::Tag{"a"}}), hash(Filter{Filter::Tag{"b"}}));
  EXPECT_NE(hash(Filter{Filter::Inbox{}}), hash(Filter{Filter::All{}}));
}

}  // namespace
}  // namespace Nimbrel
