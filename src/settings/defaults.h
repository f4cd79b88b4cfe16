#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

inline constexpr std::int32_t DEFAULT_RAPID_INTERVAL = 30;  // seconds

// An array that belongs to other programs, with entries `stride` bytes apart. This program only marks entries as free,
// by setting their first integer to -1.
struct entry_array {
  std::uint32_t first;
  std::uint32_t entries;
  std::uint32_t stride;
};
inline constexpr entry_array ENTRY_ARRAYS[] = {{29928, 20, 132}, {32568, 128, 40}, {38236, 20, 500}};
inline constexpr entry_array LAST_ENTRY_ARRAY = ENTRY_ARRAYS[2];

void mark_entries_free(settings_record& record, const entry_array& array);

// Writes the defaults: all networks off, no sensors, no accounts, rapid-fire intervals of 30 seconds, this machine's
// name, and the appliance's mail sender. Leaves all other bytes unchanged.
void set_default_settings(settings_record& record);

}  // namespace skypost
