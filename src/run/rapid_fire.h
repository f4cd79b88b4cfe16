#pragma once

#include <cstdint>

#include "compose/outgoing.h"
#include "live/data_server.h"
#include "run/failure.h"
#include "settings/record.h"

namespace skypost {

// When each network was last sent in rapid fire, in seconds since the epoch.
struct rapid_fire_stamps {
  std::int64_t wunderground_last;
  std::int64_t weatherflow_last;
  std::int64_t windit_last;
};

// A network that supports rapid fire.
struct rapid_fire_network {
  failure_name name;
  const integer_field* enabled;        // must be on
  const integer_field* rapid_enabled;  // must be on too, if set
  const integer_field* interval;       // seconds; nullptr: fixed
  std::int64_t rapid_fire_stamps::*last;
  const outgoing* upload;
};

// In the order in which a pass sends them.
extern const rapid_fire_network RAPID_FIRE_NETWORKS[3];

bool is_active(const rapid_fire_network& network, const settings_record& settings);

// True when at least one of them is active.
bool is_any_rapid_fire_active(const settings_record& settings);

// How many seconds a pass sleeps: the shortest interval of the active networks, 30 at most.
std::int32_t pass_length(const settings_record& settings);

// True when the network is active and at least its interval has passed at `now` (seconds since the epoch) since
// its stamp, or the stamp is from before the clock was set back. The stamp then moves to `now`: a failed upload
// waits for its turn like any other.
bool take_turn(const rapid_fire_network& network, const settings_record& settings, rapid_fire_stamps& stamps,
               std::int64_t now);

// Puts 30 seconds for an interval below 1.
void make_intervals_valid(settings_record& record);

// Sends the networks above at their intervals and reloads the settings, for ever. Takes the buffer for the
// data server's reports and the start-up time (seconds since the epoch), from which the first intervals
// count. Failures are reported.
[[noreturn]] void run_rapid_fire(report_buffer& report, std::int64_t start);

}  // namespace skypost
