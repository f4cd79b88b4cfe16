#pragma once

namespace skypost {

// The whole program. Takes main's arguments and returns the exit status, as monitoring plugins have it: 0 if all is well,
// 1 if a network fails, 2 if the run does, 3 if that cannot be told.
int show_status(int argument_count, char** arguments);

}  // namespace skypost
