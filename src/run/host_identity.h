#pragma once

#include <cstddef>
#include <cstdio>

#include "base/text.h"

namespace skypost {

// Points `text` at the contents of "/proc/cpuinfo" followed by those of "/proc/bus/pci/devices" (at most
// 8,000 bytes of each), and returns its length: 0 when the first cannot be read. Both are read at the first
// call only.
std::size_t read_system_text(const char*& text);

// Sets NIMBULOGHW in the process's environment to the board's name. Leaves it alone when the system
// text cannot be read.
void detect_platform();

// Appends the hardware address in `line`, the first line that `ifconfig` prints, in upper case. Returns 0, or
// -1 when there is none.
int find_hardware_address(const char* line, text_buffer& address);

// Reads the hardware address of eth0 into `address`, in upper case; it is empty when there is none. Returns 0,
// or -1 when `ifconfig` printed a line without an address, with a message to `errors`.
int read_hardware_address(text_buffer& address, std::FILE* errors = stderr);

// `text` with its letters in upper case, in a static buffer of 32 bytes; cut where it does not fit.
const char* to_upper_text(const char* text);

}  // namespace skypost
