#include "run/settings_attempts.h"

#include <unistd.h>

#include "settings/load.h"

namespace skypost {
namespace {

constexpr int ATTEMPTS = 3;
constexpr unsigned PAUSE = 1;                  // seconds
constexpr std::int32_t DEFAULT_INTERVAL = 30;  // seconds

}  // namespace

std::int32_t load_settings_in_three_attempts(settings_record& record) {
  for (int attempt = 0; attempt < ATTEMPTS; ++attempt) {
    if (load_settings(record) == 0) return 0;
    sleep(PAUSE);
  }
  return -1;
}

void make_intervals_valid(settings_record& record) {
  for (const integer_field* interval : {&wunderground_rapid_interval, &weatherflow_rapid_interval})
    if (record.integer(*interval) < 1) record.set_integer(*interval, DEFAULT_INTERVAL);
}

}  // namespace skypost
