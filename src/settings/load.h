#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// File sizes of the layouts: today's, the older one, and the older one as it was on the PLUG board.
inline constexpr std::int64_t CURRENT_LAYOUT_SIZE = SETTINGS_SIZE;
inline constexpr std::int64_t OLDER_LAYOUT_SIZE = 38'264;
inline constexpr std::int64_t OLDER_PLUG_LAYOUT_SIZE = 38'692;

// True when a file of `size` bytes holds none of the layouts known on `platform` (the value of
// NIMBULOGHW, or nullptr).
bool is_size_unlisted(std::int64_t size, const char* platform);

// Completes a record of which a file brought only the first `count` bytes: zeros behind them, and
// free entries in the last array, which the older layouts end in front of.
void complete_short_record(settings_record& record, std::uint32_t count);

// Moves the fields from 20580 on up by 4 bytes: there the layouts of unlisted size lack a field.
void open_gap(settings_record& record);

// True when the record's integers stand in the other byte order than this machine's.
bool is_byte_order_foreign(const settings_record& record, const char* platform);

// Adapts a freshly read image. With `size_unlisted` the file is copied to its name with ".old"
// behind it and the fields from 20580 on move up by 4 bytes; then, when it is needed, the byte order
// is converted. Returns 1 when it was, 0 otherwise.
std::int32_t upgrade_settings(settings_record& record, std::int32_t size_unlisted);

// Loads the appliance's settings file. Returns 0, or -1 and a record of defaults when there is no
// usable file. Writes no message; the caller reports.
std::int32_t load_settings(settings_record& record);

}  // namespace skypost
