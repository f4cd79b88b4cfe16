#pragma once

namespace skypost {

// Explains an exit status of wget, or of the shell that could not run it, to the owner, without a final full stop.
// Returns nullptr for 0, NO_WGET_STATUS and numbers with which wget never exits.
const char* wget_status_meaning(int status);

}  // namespace skypost
