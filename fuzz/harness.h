#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace skypost::fuzz {

// In every fuzz target SKYPOST_ROOT is an empty appliance folder in memory, and system() and popen() do nothing.

// If the condition is false, prints the broken `promise` and aborts, so that the fuzzer keeps the input.
void require(bool condition, const char* promise);

// Writes one of the appliance's files, padded with zeros to at least `size` bytes.
void write_file(const char* appliance_path, std::string_view content, std::size_t size = 0);

// Fills `station_settings` with the defaults and the sensors of the simulated report.
void equip_station();

// Composes everything that a run would send from `station_settings` and `live_record`. Requires that the shell sees
// each command as a single one, each packet has two lines, and each mail has its header.
void compose_everything();

// Removes and returns the first byte of `input`; 0 if there is none.
std::uint8_t take_byte(std::string_view& input);

inline std::string_view as_text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace skypost::fuzz
