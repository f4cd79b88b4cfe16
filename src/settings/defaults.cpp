#include "settings/defaults.h"

#include <unistd.h>

#include <cstring>

#include "endpoints/endpoints.h"

namespace skypost {
namespace {

// Sets `count` adjacent integers, the first at `offset`.
struct integer_default {
  std::uint32_t offset;
  std::uint32_t count;
  std::int32_t value;
};

// Bare offsets belong to other programs of the appliance.
constexpr integer_default INTEGER_DEFAULTS[] = {
    // clang-format off
    {    0,                               1, 0},
    {longitude_degrees.offset,            3, -1},  // with its minutes and seconds
    {longitude_west.offset,               1, 0},
    {latitude_degrees.offset,             3, -1},
    {latitude_south.offset,               1, 0},
    {  792,                               1, -1},
    { 6456,                               1, 1},
    {12256,                               1, 21},
    {12264,                               1, 1},
    {17608,                               1, 1},
    {17612,                               1, 3},
    {17616,                               1, 4},
    {wunderground_rapid_interval.offset,  1, DEFAULT_RAPID_INTERVAL},
    {byte_order_marker.offset,            1, 1},
    {19300,                              64, -1},
    {aprs_passcode.offset,                1, -1},
    {aprs_port.offset,                    1, 14580},
    {weatherflow_rapid_interval.offset,   1, DEFAULT_RAPID_INTERVAL},
    // clang-format on
};

consteval bool are_fields_outside_entry_arrays() {
  for (const settings_field& field : SETTINGS_FIELDS)
    for (const entry_array& array : ENTRY_ARRAYS)
      if (field.offset < array.first + array.entries * array.stride &&
          array.first < field.offset + field.size)
        return false;
  return true;
}
static_assert(are_fields_outside_entry_arrays(), "a field of fields.def is inside another program's array");

constexpr std::uint32_t FACTORS_OFFSET = 20584;
constexpr std::uint32_t FACTORS_COUNT = 64;
constexpr double FACTOR_DEFAULT = 1.0;

void store(settings_record& record, std::uint32_t offset, std::int32_t value) {
  std::memcpy(record.bytes + offset, &value, sizeof value);
}

std::string_view system_host_name(char (&name)[60]) {
  if (gethostname(name, sizeof name) != 0) return "";
  return {name, strnlen(name, sizeof name)};
}

}  // namespace

void mark_entries_free(settings_record& record, const entry_array& array) {
  for (std::uint32_t i = 0; i < array.entries; ++i) store(record, array.first + i * array.stride, -1);
}

void set_default_settings(settings_record& record) {
  for (const settings_field& field : SETTINGS_FIELDS) {
    if (field.is_text())
      record.bytes[field.offset] = 0;
    else if (field.kind == field_kind::flag)
      store(record, field.offset, 0);
  }

  char name[60];
  record.set_text(settings_version, "4.9q");
  record.set_text(host_name, system_host_name(name));
  record.set_text(sender_address, endpoint_value(endpoint::mail_sender));

  for (const integer_default& row : INTEGER_DEFAULTS)
    for (std::uint32_t i = 0; i < row.count; ++i) store(record, row.offset + 4 * i, row.value);
  for (std::uint32_t i = 0; i < FACTORS_COUNT; ++i)
    std::memcpy(record.bytes + FACTORS_OFFSET + 8 * i, &FACTOR_DEFAULT, sizeof FACTOR_DEFAULT);
  for (const entry_array& array : ENTRY_ARRAYS) mark_entries_free(record, array);
}

}  // namespace skypost
