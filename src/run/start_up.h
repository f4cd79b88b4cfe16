#pragma once

namespace skypost {

// The whole program. Takes main's arguments: none for one run over all enabled networks, "-r" for the rapid-fire loop,
// "-d" for one run with debug output. Returns the exit status: 1 for a bad command line or unreadable settings, otherwise
// 0, even if uploads failed.
int run_skypost(int argument_count, char** arguments);

}  // namespace skypost
