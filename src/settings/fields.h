#pragma once

#include <cstdint>
#include <iterator>
#include <type_traits>

// The fields of the settings record, from fields.def: a typed handle for each, and all of them as SETTINGS_FIELDS.
// Their names and meanings, which the uploader never prints, are in tools/common/field_descriptions.h.
namespace skypost {

inline constexpr std::uint32_t SETTINGS_SIZE = 65'536;

enum class field_kind : std::uint8_t {
  text,
  secret_text,  // a password
  flag,         // 0 off, anything else on; off by default
  integer,      // signed
  unsigned_integer,
  secret_integer,
};

constexpr bool is_text_kind(field_kind kind) {
  return kind == field_kind::text || kind == field_kind::secret_text;
}

struct settings_field {
  std::uint16_t offset;
  std::uint16_t size;  // bytes; for a text, the whole slot
  field_kind kind;

  constexpr bool is_text() const { return is_text_kind(kind); }
  constexpr bool is_secret() const {
    return kind == field_kind::secret_text || kind == field_kind::secret_integer;
  }
};

// The handles have two types, so that a text cannot be read as a number by mistake, or vice versa.
struct text_field : settings_field {};
struct integer_field : settings_field {};

template <field_kind kind>
using handle_of = std::conditional_t<is_text_kind(kind), text_field, integer_field>;

// A macro, because each row of fields.def becomes both a handle and a table entry.
#define FIELD(name, kind, group, offset, size, meaning) \
  inline constexpr handle_of<field_kind::kind> name{{offset, size, field_kind::kind}};
#include "settings/fields.def"

// The extra temperature sensors, which owners know as six fields.
inline constexpr text_field sensor_extra_temp[] = {sensor_extra_temp0, sensor_extra_temp1,
                                                   sensor_extra_temp2, sensor_extra_temp3,
                                                   sensor_extra_temp4, sensor_extra_temp5};

inline constexpr settings_field SETTINGS_FIELDS[] = {
#define FIELD(name, ...) name,
#include "settings/fields.def"
};

consteval bool settings_fields_are_apart() {
  for (std::size_t i = 0; i < std::size(SETTINGS_FIELDS); ++i) {
    const settings_field& one = SETTINGS_FIELDS[i];
    if (one.offset + one.size > SETTINGS_SIZE || (!one.is_text() && one.size != 4)) return false;
    for (std::size_t j = 0; j < i; ++j) {
      const settings_field& other = SETTINGS_FIELDS[j];
      if (one.offset < other.offset + other.size && other.offset < one.offset + one.size) return false;
    }
  }
  return true;
}
static_assert(settings_fields_are_apart(), "two fields of fields.def overlap, or one is outside the record");

}  // namespace skypost
