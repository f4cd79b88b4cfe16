#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "base/moment.h"
#include "base/value.h"
#include "live/live_record.h"
#include "settings/record.h"

// Several networks take a record in which every value has its fixed place, and a missing one something
// that stands there for it. Such a record is a table of fields, in the order of their numbers.
namespace skypost {

// What a record is made from.
struct record_source {
  const settings_record& settings;
  const LiveRecord& live;
  const moment& now;
  // How a text of the settings or the report is written, by where the record goes.
  void (*write_text)(text_buffer& record, std::string_view text);
};

using field_composer = void (*)(text_buffer& record, const record_source& from);

// What stands in one field. Made by the functions below.
struct field_content {
  const char* missing;  // in place of a missing value or an empty text; all there is when there is no value
  std::int32_t LiveRecord::*number = nullptr;
  const value_form* form = nullptr;
  live_text LiveRecord::*text = nullptr;
  const text_field* setting = nullptr;
  field_composer compose = nullptr;
};

constexpr field_content always(const char* text) { return {.missing = text}; }
constexpr field_content number_or(const char* missing, std::int32_t LiveRecord::*number,
                                  const value_form& form) {
  return {.missing = missing, .number = number, .form = &form};
}
constexpr field_content text_or(const char* missing, live_text LiveRecord::*text) {
  return {.missing = missing, .text = text};
}
// A text as it is, also when it is empty or hyphens.
constexpr field_content unchanged(live_text LiveRecord::*text) { return text_or("", text); }
// The time of an extreme, missing also when its value is.
constexpr field_content time_or(const char* missing, live_text LiveRecord::*time,
                                std::int32_t LiveRecord::*extreme) {
  return {.missing = missing, .number = extreme, .text = time};
}
constexpr field_content setting(const text_field& slot) { return {.missing = nullptr, .setting = &slot}; }
constexpr field_content made_by(field_composer compose) { return {.missing = nullptr, .compose = compose}; }

void append_content(text_buffer& record, const field_content& content, const record_source& from);

// Local time, two contents that many records have.
void write_local_date(text_buffer& record, const record_source& from);   // DD.MM.YYYY
void write_local_clock(text_buffer& record, const record_source& from);  // HH:MM

// The way of writing a text into a record that is no part of a URL.
void append_unchanged(text_buffer& record, std::string_view text);

// One field, or a run of fields with the same content.
struct numbered_field {
  int first;
  int last;
  field_content content;
};

constexpr numbered_field field(int number, const field_content& content) { return {number, number, content}; }
constexpr numbered_field fields(int first, int last, const field_content& content) {
  return {first, last, content};
}

// Appends all fields, with `separator` between them.
void append_fields(text_buffer& record, std::span<const numbered_field> table, const char* separator,
                   const record_source& from);

// True when the table holds the fields 1 to `count`, each once and in order.
consteval bool numbers_each_once(std::span<const numbered_field> table, int count) {
  int next = 1;
  for (const numbered_field& row : table) {
    if (row.first != next || row.last < row.first) return false;
    next = row.last + 1;
  }
  return next == count + 1;
}

}  // namespace skypost
