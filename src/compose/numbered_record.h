#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "compose/upload.h"
#include "compose/value.h"

// Several networks take a positional record, with a filler for each missing value. A table lists its fields in numerical
// order.
namespace skypost {

enum class content_kind : std::uint8_t { fixed, number, word, time, setting, digest, made };

// The content of one field. The functions below make one.
struct field_content {
  const char* filler = "";  // written if the value is missing; for `fixed`, always
  union {
    const value_format* format;   // number
    live_text LiveRecord::*text;  // word, time
    const text_field* setting;    // setting, digest
    composer compose;             // made
  };
  content_kind kind;
  live_number number{};  // number; for a time, the extreme that occurred then
};

consteval field_content always(const char* text) {
  return {.filler = text, .format = nullptr, .kind = content_kind::fixed};
}
consteval field_content number_or(const char* filler, live_number number, const value_format& format) {
  return {.filler = filler, .format = &format, .kind = content_kind::number, .number = number};
}
// A word; the filler if it is empty.
consteval field_content word_or(const char* filler, live_text LiveRecord::*text) {
  return {.filler = filler, .text = text, .kind = content_kind::word};
}
// The time of an extreme; the filler if the time or the extreme is missing.
consteval field_content time_or(const char* filler, live_text LiveRecord::*time, live_number extreme) {
  return {.filler = filler, .text = time, .kind = content_kind::time, .number = extreme};
}
consteval field_content setting(const text_field& slot) {
  return {.setting = &slot, .kind = content_kind::setting};
}
// The MD5 digest of a password.
consteval field_content digest_of(const text_field& password) {
  return {.setting = &password, .kind = content_kind::digest};
}
consteval field_content made_by(composer compose) { return {.compose = compose, .kind = content_kind::made}; }

// Appends a text from the settings or the report, encoded as its destination requires.
using text_writer = void (*)(text_buffer& record, std::string_view text);

// Appends a text as it is: for files.
void append_unchanged(text_buffer& record, std::string_view text);

// Appends the field's value for this station.
void append_content(text_buffer& record, const field_content& content, const station& source,
                    text_writer write_text);

// One field, or several in a row with the same content.
struct numbered_field {
  std::uint8_t number;
  std::uint8_t last;
  field_content content;
};

consteval numbered_field field(std::uint8_t number, const field_content& content) {
  return {number, number, content};
}
consteval numbered_field fields(std::uint8_t first, std::uint8_t last, const field_content& content) {
  return {first, last, content};
}

// Appends all fields, with `separator` between them.
void append_fields(text_buffer& record, std::span<const numbered_field> table, const char* separator,
                   const station& source, text_writer write_text);

// Appends a parameter: `key` (including its "="), the fields with semicolons between them, and `end`.
void append_record(text_buffer& query, const char* key, std::span<const numbered_field> table,
                   const station& source, const char* end = ";");

// True if the rows that `is_in` selects have the numbers 1 to `count`, each once and in order. A row has one number, or
// all from it to `last`.
template <typename table, typename selection>
consteval bool numbers_each_once(const table& rows, int count, selection is_in) {
  int previous = 0;
  for (const auto& row : rows) {
    if (!is_in(row)) continue;
    if (row.number != previous + 1) return false;
    previous = row.number;
    if constexpr (requires { row.last; }) previous = row.last;
  }
  return previous == count;
}
template <typename table>
consteval bool numbers_each_once(const table& rows, int count) {
  return numbers_each_once(rows, count, [](const auto&) { return true; });
}

}  // namespace skypost
