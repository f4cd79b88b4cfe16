#pragma once

namespace skypost {

// The whole program. Takes main's arguments and returns the exit status: 0 if all is well, 1 if not or if that cannot
// be told, 2 for a bad command line or if no status is kept.
int show_status(int argument_count, char** arguments);

}  // namespace skypost
