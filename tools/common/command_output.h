#pragma once

#include <string>

namespace skypost {

// Returns the first 4,000 bytes that a shell command prints; empty if it cannot be run.
std::string output_of(const char* command);

}  // namespace skypost
