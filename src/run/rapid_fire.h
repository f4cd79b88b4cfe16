#pragma once

#include <array>
#include <cstdint>
#include <iterator>

#include "compose/upload.h"
#include "live/data_server.h"
#include "run/upload_switch.h"

namespace skypost {

// A network that supports rapid fire.
struct rapid_fire_network : upload_switch {
  const integer_field* interval;  // seconds; nullptr: fixed
  const struct upload* upload;
};

// In the order in which a pass sends them.
extern const rapid_fire_network RAPID_FIRE_NETWORKS[std::size(RAPID_FIRE_SWITCHES)];

// When each of them was last due and enabled, in seconds since the epoch.
using rapid_fire_stamps = std::array<std::int64_t, std::size(RAPID_FIRE_NETWORKS)>;

bool is_any_rapid_fire_active(const settings_record& settings);

// How many seconds a pass sleeps: the shortest interval of the active networks, at most 30.
std::int32_t pass_length(const settings_record& settings);

// If the network is active and due, sets its stamp `last` to `now` (seconds since the epoch) and returns true. A
// network is due one interval after its stamp, or at once if the clock was set back. Call this before the upload, so
// that a failed upload waits a full interval too.
bool take_turn(const rapid_fire_network& network, const settings_record& settings, std::int64_t& last,
               std::int64_t now);

// Replaces intervals below 1 with 30 seconds.
void make_intervals_valid(settings_record& record);

// Runs for ever: uploads what is due, reports failures, and reloads the settings after each pass. `report` is the
// buffer for the data server's reports. The first intervals begin at `start`, in seconds since the epoch.
[[noreturn]] void run_rapid_fire(report_buffer& report, std::int64_t start);

}  // namespace skypost
