#pragma once

#include <string>

namespace skypost {

// Reads a line from standard input: a password, which then appears neither on the command line nor in a shell's history.
// On a terminal, asks for it twice, without echo. Throws tool_error if there is no line, or if the two differ.
std::string asked_secret(const std::string& name);

}  // namespace skypost
