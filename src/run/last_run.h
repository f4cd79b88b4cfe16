#pragma once

namespace skypost {

// A time so many seconds in the future may still come from a clock that was set right. A later one is from
// before a clock change.
inline constexpr long long TOLERATED_CLOCK_CHANGE = 100;

// Seconds since the recorded last run, at `now` (seconds since the epoch): 9999 when none is recorded, 1000
// when the clock was set back by more than 100 seconds since.
long long last_run_age(long long now);

// Records `now` in the last-run file. A file that cannot be written is left alone.
void write_last_run(long long now);

}  // namespace skypost
