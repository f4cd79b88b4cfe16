#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "settings/fields.h"

namespace skypost {

// The image of the settings file: a flat block with fields at fixed offsets. Once loaded, its integers are in
// this machine's byte order.
struct settings_record {
  alignas(8) unsigned char bytes[SETTINGS_SIZE];

  std::int32_t integer(const integer_field& field) const {
    std::int32_t value = 0;
    std::memcpy(&value, bytes + field.offset, sizeof value);
    return value;
  }
  std::uint32_t unsigned_integer(const integer_field& field) const {
    return static_cast<std::uint32_t>(integer(field));
  }
  bool is_on(const integer_field& field) const { return integer(field) != 0; }

  void set_integer(const integer_field& field, std::int32_t value) {
    std::memcpy(bytes + field.offset, &value, sizeof value);
  }

  // A text without a NUL fills its slot.
  std::string_view text(const text_field& field) const {
    const char* const slot = reinterpret_cast<const char*>(bytes + field.offset);
    return {slot, strnlen(slot, field.size)};
  }

  // Writes the text and a NUL, truncated to fit. Leaves the rest of the slot unchanged.
  void set_text(const text_field& field, std::string_view text) {
    const std::size_t length = text.size() < field.size ? text.size() : field.size - 1;
    std::memcpy(bytes + field.offset, text.data(), length);
    bytes[field.offset + length] = 0;
  }
};

// This process's settings, loaded at start-up and on every pass of the rapid-fire loop.
extern settings_record station_settings;

}  // namespace skypost
