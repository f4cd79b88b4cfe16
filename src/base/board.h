#pragma once

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

}  // namespace skypost
