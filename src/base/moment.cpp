#include "base/moment.h"

namespace skypost {

moment moment_at(std::time_t seconds) {
  moment result{.seconds = seconds, .local = {}, .utc = {}};
  // localtime_r() does not have to notice that the time zone has changed since the process started; tzset() does.
  tzset();
  if (localtime_r(&seconds, &result.local) == nullptr) result.local = {};
  if (gmtime_r(&seconds, &result.utc) == nullptr) result.utc = {};
  return result;
}

moment current_moment() { return moment_at(std::time(nullptr)); }

}  // namespace skypost
