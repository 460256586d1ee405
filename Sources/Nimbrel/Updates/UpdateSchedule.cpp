#include "Updates/UpdateSchedule.h"

namespace Nimbrel {

namespace {

constexpr Seconds betweenChecks = std::chrono::hours(24);

}  // namespace

bool isUpdateCheckDue(std::optional<Timestamp> last, Timestamp now) {
  return !last || now < *last || now - *last >= betweenChecks;
}

}  // namespace Nimbrel
