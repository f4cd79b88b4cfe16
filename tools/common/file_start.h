#pragma once

#include <string>

namespace skypost {

// The first bytes of a file, at most `count`; empty if it cannot be read. Never waits, even for a FIFO.
std::string file_start(const std::string& path, std::size_t count);

}  // namespace skypost
