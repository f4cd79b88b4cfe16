#pragma once

namespace skypost {

// What an exit status of wget, or of the shell that could not run it, tells the owner: a few words without a full stop.
// nullptr if it tells nothing: 0, NO_WGET_STATUS, and what wget never exits with.
const char* wget_status_meaning(int status);

}  // namespace skypost
