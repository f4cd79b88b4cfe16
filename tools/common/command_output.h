#pragma once

#include <string>

namespace skypost {

// What a shell command prints, at most 4,000 bytes of it.
std::string output_of(const char* command);

}  // namespace skypost
