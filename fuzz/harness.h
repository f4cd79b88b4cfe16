#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace skypost::fuzz {

// SKYPOST_ROOT is an appliance's empty folder in memory, and no process is started: system() and
// popen() do nothing.

// Ends the process, so that the fuzzer keeps the input, when `holds` is false.
void require(bool holds, const char* what);

// Writes one of the appliance's files, filled up with zeros to `size` bytes when that is more.
void write_file(const char* appliance_path, std::string_view content, std::size_t size = 0);

// Fills the settings with defaults and chooses the sensors of the simulated report.
void equip_station();

// Composes what every network, pull file and channel would send from the settings and the live record of
// the process, and requires of each command that it is one: quotes in pairs, nothing that the shell
// would interpret between them.
void compose_everything();

// The input's first byte, taken off its front; 0 of an empty input.
std::uint8_t take_byte(std::string_view& input);

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace skypost::fuzz
