#pragma once

namespace Nimbrel {

/// How a batch of background reading ended.
enum class BatchEnd {
  Done,            ///< every shot had its turn; one whose writing was lost is still pending
  NothingWritten,  ///< so had they here, but all are pending as before: the catalogue takes no writes
  CannotRead,      ///< nothing can look at pictures now; the rest is pending
};

}  // namespace Nimbrel
