#include "settings/byte_order.h"

#include <algorithm>

namespace skypost {
namespace {

// Not converted on any board, so they arrive reversed from one of the other byte order. They are flags: a
// reversed 1 is still on.
constexpr integer_field NEVER_CONVERTED[] = {hetweeractueel_enabled, weatherflow_enabled, metoffice_enabled};

constexpr bool is_exempt(const settings_field& field) {
  return std::any_of(std::begin(NEVER_CONVERTED), std::end(NEVER_CONVERTED),
                     [&](const integer_field& exempt) { return exempt.offset == field.offset; });
}

// True if a range converts the integer at the field; true if any range overlaps the field.
consteval bool is_converted(const settings_field& field) {
  for (const field_range& range : CONVERTED_FIELDS)
    for (std::uint32_t entry = 0; entry < range.entries; ++entry) {
      const std::uint32_t first = range.first + entry * range.stride;
      const std::uint32_t last = range.last + entry * range.stride;
      if (range.size == 4 && field.offset >= first && field.offset <= last && (field.offset - first) % 4 == 0)
        return true;
    }
  return false;
}
consteval bool is_reached(const settings_field& field) {
  for (const field_range& range : CONVERTED_FIELDS)
    for (std::uint32_t entry = 0; entry < range.entries; ++entry) {
      const std::uint32_t first = range.first + entry * range.stride;
      const std::uint32_t end = range.last + range.size + entry * range.stride;
      if (field.offset < end && first < field.offset + field.size) return true;
    }
  return false;
}

consteval bool ranges_fit_the_record() {
  for (const field_range& range : CONVERTED_FIELDS) {
    if (range.size != 4 && range.size != 8) return false;
    if ((range.last - range.first) % range.size != 0) return false;
    if (range.last + range.size + (range.entries - 1) * range.stride > SETTINGS_SIZE) return false;
  }
  return true;
}
static_assert(ranges_fit_the_record());

consteval bool are_integers_converted_and_texts_not() {
  for (const settings_field& field : SETTINGS_FIELDS)
    if (field.is_text() || is_exempt(field) ? is_reached(field) : !is_converted(field)) return false;
  return true;
}
static_assert(
    are_integers_converted_and_texts_not(),
    "a field of fields.def: an integer outside CONVERTED_FIELDS belongs in NEVER_CONVERTED, and no range may "
    "overlap a text");

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
