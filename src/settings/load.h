#pragma once

#include <cstdint>

#include "settings/record.h"

namespace skypost {

// File sizes of the layouts in bytes: the current one, the older one, and the older one of the PLUG board.
inline constexpr std::int64_t CURRENT_LAYOUT_SIZE = SETTINGS_SIZE;
inline constexpr std::int64_t OLDER_LAYOUT_SIZE = 38'264;
inline constexpr std::int64_t OLDER_PLUG_LAYOUT_SIZE = 38'692;

// Loads the appliance's settings file. Returns 0, or -1 with the defaults in the record if there is no usable file.
// Prints nothing; the caller must report the failure. A file of unlisted size is first copied to FILE.old. A tool that
// only reads must pass false for `make_backup`, which leaves the copy out.
int load_settings(settings_record& record, bool make_backup = true);

// Calls load_settings up to three times, with a pause of one second after each failure, since the web pages may
// be writing the file.
int load_settings_with_retries(settings_record& record);

// The steps of loading, for tools that load files of their own. `platform` is the value of NIMBULOGHW, or nullptr.

// True if a file of `size` bytes has none of the layouts known on `platform`.
bool is_size_unlisted(std::int64_t size, const char* platform);

// Completes a record of which only the first `length` bytes were read: with zeros, and with free entries in the
// last array, which older layouts lack.
void complete_short_record(settings_record& record, std::uint32_t length);

// True if the record's integers are not in this machine's byte order.
bool is_byte_order_foreign(const settings_record& record, const char* platform);

// Brings a freshly read image to the current layout and this machine's byte order. With `size_unlisted`, the
// fields from offset 20580 on move up by 4 bytes. Returns true if the byte order was converted.
bool adapt_image(settings_record& record, bool size_unlisted, const char* platform);

// Calls adapt_image for this board, after copying a file of unlisted size to FILE.old. Returns 1 if the byte order
// was converted, otherwise 0.
int upgrade_settings(settings_record& record, bool size_unlisted);

}  // namespace skypost
