#include "settings/byte_order.h"

#include <algorithm>

namespace skypost {
namespace {

constexpr bool is_exempt(const settings_field& field) {
  return std::any_of(std::begin(NEVER_CONVERTED), std::end(NEVER_CONVERTED),
                     [&](const integer_field& exempt) { return exempt.offset == field.offset; });
}

consteval bool ranges_fit_the_record() {
  for (const converted_range& range : CONVERTED_RANGES) {
    if (range.size != 4 && range.size != 8) return false;
    if ((range.last - range.first) % range.size != 0 || range.stride % range.size != 0) return false;
    if (range.last + range.size + (range.entries - 1) * range.stride > SETTINGS_SIZE) return false;
  }
  return true;
}
static_assert(ranges_fit_the_record());

// The range that overlaps the field, or nullptr.
consteval const converted_range* range_over(const settings_field& field) {
  for (const converted_range& range : CONVERTED_RANGES)
    for (std::uint32_t entry = 0; entry < range.entries; ++entry) {
      const std::uint32_t first = range.first + entry * range.stride;
      const std::uint32_t end = range.last + range.size + entry * range.stride;
      if (field.offset < end && first < field.offset + field.size) return &range;
    }
  return nullptr;
}

consteval bool are_integers_converted_and_texts_not() {
  for (const settings_field& field : SETTINGS_FIELDS) {
    const converted_range* const range = range_over(field);
    const bool is_converted = range != nullptr && range->size == 4 && (field.offset - range->first) % 4 == 0;
    if (field.is_text() || is_exempt(field) ? range != nullptr : !is_converted) return false;
  }
  return true;
}
static_assert(
    are_integers_converted_and_texts_not(),
    "a field of fields.def: an integer outside CONVERTED_RANGES belongs in NEVER_CONVERTED, and no range may "
    "overlap a text");

}  // namespace

void swap_u32(unsigned char* number) { std::reverse(number, number + 4); }

void swap_f64(unsigned char* number) { std::reverse(number, number + 8); }

void convert_byte_order(settings_record& record) {
  for (const converted_range& range : CONVERTED_RANGES)
    for (std::uint32_t entry = 0; entry < range.entries; ++entry)
      for (std::uint32_t offset = range.first; offset <= range.last; offset += range.size) {
        unsigned char* const number = record.bytes + entry * range.stride + offset;
        if (range.size == 8)
          swap_f64(number);
        else
          swap_u32(number);
      }
}

}  // namespace skypost
