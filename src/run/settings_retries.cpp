#include "run/settings_retries.h"

#include <unistd.h>

#include "settings/load.h"

namespace skypost {

std::int32_t load_settings_with_retries(settings_record& record) {
  constexpr int ATTEMPTS = 3;
  constexpr unsigned PAUSE = 1;  // seconds
  for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
    if (load_settings(record) == 0) return 0;
    sleep(PAUSE);
  }
  return -1;
}

}  // namespace skypost
