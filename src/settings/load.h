#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// File sizes of the layouts in bytes: the current one, the older one, and the older one of the PLUG board.
inline constexpr std::int64_t CURRENT_LAYOUT_SIZE = SETTINGS_SIZE;
inline constexpr std::int64_t OLDER_LAYOUT_SIZE = 38'264;
inline constexpr std::int64_t OLDER_PLUG_LAYOUT_SIZE = 38'692;

// Loads the appliance's settings file. Returns 0, or -1 with the defaults in the record if there is no usable
// file. Prints nothing; the caller reports.
std::int32_t load_settings(settings_record& record);

// The same, but never copies the file: for a program that only looks.
std::int32_t look_at_settings(settings_record& record);

// load_settings with up to three attempts and a one-second pause after each failure, since the web pages may be
// writing the file.
std::int32_t load_settings_with_retries(settings_record& record);

// The steps of loading, which the owner's tools call separately. `platform` is the value of NIMBULOGHW, or
// nullptr.

// True if a file of `size` bytes has none of the layouts known on `platform`.
bool is_size_unlisted(std::int64_t size, const char* platform);

// Completes a record of which only `count` bytes were read: zeros, and free entries in the last array, which
// older layouts lack.
void complete_short_record(settings_record& record, std::uint32_t count);

// True if the record's integers are not in this machine's byte order.
bool is_byte_order_foreign(const settings_record& record, const char* platform);

// Brings a fresh image to the current layout and byte order: with `size_unlisted`, the fields from offset
// 20580 on move up by 4 bytes. Returns 1 if the byte order was converted, otherwise 0.
std::int32_t adapt_image(settings_record& record, bool size_unlisted, const char* platform);

// The same for the appliance's own file, on the board named in NIMBULOGHW. With `size_unlisted`, the file is
// first copied to FILE.old.
std::int32_t upgrade_settings(settings_record& record, std::int32_t size_unlisted);

}  // namespace skypost
