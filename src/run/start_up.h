#pragma once

namespace skypost {

// The whole program. Takes main's arguments: none for one run over all enabled networks, "-r" for
// the rapid-fire loop, "-d" for one run with debug output. Returns the exit status: 1 when the command line or
// the settings keep it from starting, 0 otherwise, whatever became of the run.
int run_skypost(int argument_count, char** arguments);

}  // namespace skypost
