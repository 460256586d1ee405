#pragma once

#include <QTemporaryDir>

namespace Nimbrel::Testing {

/// The same world for every test, whoever runs it: no locale, no time zone, no display and no home of the user's. Made
/// in main() before anything else; the home goes with it.
class TestEnvironment {
 public:
  TestEnvironment();

 private:
  QTemporaryDir home_;
};

}  // namespace Nimbrel::Testing
