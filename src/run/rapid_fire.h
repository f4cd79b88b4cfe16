#pragma once

#include <cstdint>

#include "compose/upload.h"
#include "live/data_server.h"
#include "run/upload_switch.h"

namespace skypost {

// When each network last had its turn, in seconds since the epoch.
struct rapid_fire_stamps {
  std::int64_t wunderground_last;
  std::int64_t weatherflow_last;
  std::int64_t windit_last;
};

// A network that supports rapid fire.
struct rapid_fire_network : upload_switch {
  const integer_field* interval;  // seconds; nullptr: fixed
  std::int64_t rapid_fire_stamps::*last;
  const struct upload* upload;
};

// In the order in which a pass sends them.
extern const rapid_fire_network RAPID_FIRE_NETWORKS[3];

bool is_any_rapid_fire_active(const settings_record& settings);

// Seconds that a pass sleeps: the shortest interval of the active networks, at most 30.
std::int32_t pass_length(const settings_record& settings);

// If the network is active and due, sets its stamp to `now` (seconds since the epoch) and returns true. Due
// means one interval after the stamp, or at once if the clock was set back. The stamp moves first, so a
// failed upload waits a full interval too.
bool take_turn(const rapid_fire_network& network, const settings_record& settings, rapid_fire_stamps& stamps,
               std::int64_t now);

// Replaces intervals below 1 with 30 seconds.
void make_intervals_valid(settings_record& record);

// Runs for ever: uploads when due, reports failures, reloads the settings after each pass. `report` is the
// buffer for the data server's reports. Intervals first count from `start`, in seconds since the epoch.
[[noreturn]] void run_rapid_fire(report_buffer& report, std::int64_t start);

}  // namespace skypost
