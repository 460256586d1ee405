#pragma once

#include "RecognitionPage.h"

#include <QString>

namespace Nimbrel::Benchmarks {

/// How many of one list are in the other as well.
struct Found {
  int wanted = 0;
  int given = 0;
  int both = 0;

  [[nodiscard]] double recall() const { return wanted == 0 ? 1 : static_cast<double>(both) / wanted; }
  [[nodiscard]] double precision() const { return given == 0 ? 1 : static_cast<double>(both) / given; }
  Found& operator+=(const Found& other);
};

/// What was read beside what stands on the pages.
struct Score {
  Found words;       ///< as they stand, quotes and dashes made alike
  Found tokens;      ///< what a search looks for: runs of two or more letters and digits, case folded
  Found smallWords;  ///< those of 11 pixels and less; only the recall means something
  Found longWords;   ///< those of more than 20 characters; likewise
  int characters = 0;
  int slips = 0;  ///< characters to be changed to make each line out of the best matching part of what was read

  [[nodiscard]] double characterErrors() const { return characters == 0 ? 0 : static_cast<double>(slips) / characters; }
  Score& operator+=(const Score& other);
};

[[nodiscard]] Score scoreOf(const Page& page, const QString& read);

/// The words of a page that were not read, and those read that are not on it.
struct Misses {
  QStringList missed;
  QStringList invented;
};
[[nodiscard]] Misses missesOf(const Page& page, const QString& read);

}  // namespace Nimbrel::Benchmarks
