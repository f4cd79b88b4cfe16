#pragma once

namespace skypost {

// Up to this many seconds in the future is a small clock correction; more means the clock was set back.
inline constexpr long long TOLERATED_CLOCK_CHANGE = 100;

// Seconds since the recorded last run. `now` is in seconds since the epoch. 9999 if none is recorded, 1000 if
// the clock was set back by more than 100 seconds since.
long long last_run_age(long long now);

// Records `now` in the last-run file. Errors are ignored.
void write_last_run(long long now);

}  // namespace skypost
