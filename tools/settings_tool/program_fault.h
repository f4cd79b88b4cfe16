#pragma once

#include <string>

namespace skypost {

// Returns why a program cannot be run; empty if it can.
std::string program_fault(const std::string& path);

}  // namespace skypost
