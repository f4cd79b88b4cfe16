#pragma once

namespace skypost {

// Seconds since the recorded last run, at `now` (seconds since the epoch): 9999 when none is recorded, 1000
// when the clock was set back by more than 100 seconds since.
long long last_run_age(long long now);

// Records `now` in the last-run file. A file that cannot be written is left alone.
void write_last_run(long long now);

}  // namespace skypost
