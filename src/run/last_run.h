#pragma once

namespace skypost {

// A time at most this many seconds in the future is due to a small clock correction; a later one means that the clock was
// set back.
inline constexpr long long TOLERATED_CLOCK_CHANGE = 100;

// Returns the seconds from the recorded last run to `now`, which is in seconds since the epoch: 9999 if none is recorded,
// 1000 if the clock has been set back by more than 100 seconds since.
long long last_run_age(long long now);

// Records `now` in the last-run file. Errors are ignored.
void write_last_run(long long now);

}  // namespace skypost
