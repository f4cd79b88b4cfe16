#pragma once

namespace skypost {

// How many seconds before `now` (seconds since the epoch) the last run stands that the last-run file
// tells of: 9999 when it tells of none, 1000 when the clock was set back by more than 100 seconds.
long long last_run_age(long long now);

// Keeps `now` in the last-run file. A file that cannot be written is left alone.
void write_last_run(long long now);

}  // namespace skypost
