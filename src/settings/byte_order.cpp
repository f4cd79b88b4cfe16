#include "settings/byte_order.h"

#include <algorithm>

namespace skypost {
namespace {

consteval bool ranges_are_sound() {
  for (const field_range& range : CONVERTED_FIELDS) {
    if (range.size != 4 && range.size != 8) return false;
    if ((range.last - range.first) % range.size != 0) return false;
    if (range.last + range.size + (range.entries - 1) * range.stride > SETTINGS_SIZE) return false;
  }
  for (const settings_field* field : SETTINGS_FIELDS)
    if (field->is_text() && is_converted(*field)) return false;
  return true;
}
static_assert(ranges_are_sound());

}  // namespace

void swap_u32(unsigned char* field) { std::reverse(field, field + 4); }

void swap_f64(unsigned char* field) { std::reverse(field, field + 8); }

void convert_byte_order(settings_record& record) {
  for (const field_range& range : CONVERTED_FIELDS)
    for (std::uint32_t entry = 0; entry < range.entries; ++entry)
      for (std::uint32_t offset = range.first; offset <= range.last; offset += range.size) {
        unsigned char* const field = record.bytes + entry * range.stride + offset;
        if (range.size == 8)
          swap_f64(field);
        else
          swap_u32(field);
      }
}

}  // namespace skypost
