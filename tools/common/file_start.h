#pragma once

#include <string>

namespace skypost {

// Returns at most the first `count` bytes of a file; empty if it cannot be read. Never blocks, not even on a FIFO.
std::string file_start(const std::string& path, std::size_t count);

}  // namespace skypost
