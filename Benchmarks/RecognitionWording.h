#pragma once

#include <QString>
#include <QStringList>

#include <random>

namespace Nimbrel::Benchmarks {

/// Wording for pages as they stand on a screen, different with each call and the same for the same seed everywhere.
class Wording {
 public:
  explicit Wording(unsigned seed) : random_(seed) {}

  /// From 0 up to `limit`, without it.
  int upTo(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool oneIn(int count) { return upTo(count) == 0; }
  QString anyOf(const QStringList& list) { return list[upTo(static_cast<int>(list.size()))]; }

  QString word();
  QString title(int words);     ///< a heading: capitalised, without a full stop
  QString sentence(int words);  ///< with names, numbers and punctuation now and then
  QString person();
  QString company();
  QString email();
  QString address();  ///< of a web page
  QString file();
  QString path();
  QString identifier();  ///< of a program
  QString price();
  QString number();
  QString date();
  QString time();
  QString key();  ///< letters and digits without sense
  QString codeLine();
  QString shellLine();

 private:
  QString digits(int count);

  std::mt19937 random_;
};

}  // namespace Nimbrel::Benchmarks
