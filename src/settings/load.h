#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// File sizes of the layouts: today's, the older one, and the older one as it was on the PLUG board.
inline constexpr std::int64_t CURRENT_LAYOUT_SIZE = SETTINGS_SIZE;
inline constexpr std::int64_t OLDER_LAYOUT_SIZE = 38'264;
inline constexpr std::int64_t OLDER_PLUG_LAYOUT_SIZE = 38'692;

// Loads the appliance's settings file. Returns 0, or -1 and a record of defaults when there is no
// usable file. Writes no message; the caller reports.
std::int32_t load_settings(settings_record& record);

// The same with up to three attempts and a one-second pause after each failure, since the web pages may be writing
// the file.
std::int32_t load_settings_with_retries(settings_record& record);

// The steps of loading, which the owner's tools call separately. `platform` is the value of NIMBULOGHW, or
// nullptr.

// True when a file of `size` bytes has none of the layouts known on `platform`.
bool is_size_unlisted(std::int64_t size, const char* platform);

// Completes a record of which a file held only the first `count` bytes: zeros after them, and free entries
// in the last array, which the older layouts do not reach.
void complete_short_record(settings_record& record, std::uint32_t count);

// True when the record's integers are in the other byte order than this machine's.
bool is_byte_order_foreign(const settings_record& record, const char* platform);

// Makes a freshly read image one of today's layout and this machine's byte order: with `size_unlisted` the
// fields from 20580 on move up by 4 bytes. Returns 1 when the byte order was converted, 0 otherwise.
std::int32_t adapt_image(settings_record& record, bool size_unlisted, const char* platform);

// The same for the appliance's own file, on the board named in NIMBULOGHW. With `size_unlisted` the file is
// first copied to its name with ".old" added.
std::int32_t upgrade_settings(settings_record& record, std::int32_t size_unlisted);

}  // namespace skypost
