#pragma once

namespace skypost {

// The whole program. Takes main's arguments: none for one run over all enabled networks, "-r" for
// the rapid-fire loop, "-d" for one run that tells what it does. Returns the exit status: 0 after a
// run or when the data server cannot be read, 1 for a bad command line or unreadable settings.
int run_skypost(int argument_count, char** arguments);

}  // namespace skypost
