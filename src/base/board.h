#pragma once

#include <cstdio>

#include "base/text.h"

namespace skypost {

// The environment variable that names the platform, to this program and to those that it starts.
inline constexpr char PLATFORM_VARIABLE[] = "NIMBULOGHW";

// The hardware address of eth0, as 00:1A:2B:3C:4D:5E; empty if unknown. Written once, at start-up.
inline constexpr std::size_t HARDWARE_ADDRESS_CAPACITY = 31;
extern text_buffer hardware_address;

// The machine that the program runs on.
struct board {
  const char* platform;          // as in PLATFORM_VARIABLE; nullptr if unknown
  const char* hardware_address;  // as above
};

// The board of this process, as its environment and `hardware_address` describe it.
board this_board();

// Start-up finds out which board this is with the functions below.

// Reads the start of both system files, once per process, up to 8,000 bytes each. Sets `text` and returns its length: 0
// without /proc/cpuinfo.
std::size_t read_system_text(const char*& text);

// Sets NIMBULOGHW in this process's environment to the kind of board, which the system text names. Leaves it alone if
// that cannot be read.
void detect_platform();

// Appends the hardware address that follows "HWaddr " in `line`, in upper case. Returns 0, or -1 if there is none.
int find_hardware_address(const char* line, text_buffer& address);

// Reads the hardware address of eth0 into `address`, from the first line that ifconfig prints; empty if there is none.
// Returns 0, or -1 after printing an error to `errors` if that line has no address.
int read_hardware_address(text_buffer& address, std::FILE* errors = stderr);

// `text` in upper case, in a static 32-byte buffer; truncated if longer.
const char* to_upper_text(const char* text);

}  // namespace skypost
