#include "live/numbered_record.h"

#include "base/local_time.h"

namespace skypost {
namespace {

// A time that the report does not give is "---", a compass word empty.
bool is_missing(const field_content& content, const LiveRecord& live) {
  if (content.number != nullptr && !known(live.*content.number)) return true;
  if (content.text == nullptr) return content.number == nullptr;
  const std::string_view text = live.*content.text;
  return text.empty() || (content.number != nullptr && text == "---");
}

}  // namespace

void append_content(text_buffer& record, const field_content& content, const record_source& from) {
  if (content.compose != nullptr)
    content.compose(record, from);
  else if (content.setting != nullptr)
    from.write_text(record, from.settings.text(*content.setting));
  else if (is_missing(content, from.live))
    record.append_text(content.missing);
  else if (content.text != nullptr)
    from.write_text(record, from.live.*content.text);
  else
    append_value(record, from.live.*content.number, *content.form);
}

void write_local_date(text_buffer& record, const record_source& from) { append_local_date(record, from.now); }

void write_local_clock(text_buffer& record, const record_source& from) {
  append_local_clock(record, from.now);
}

void append_unchanged(text_buffer& record, std::string_view text) { record.append_text(text); }

void append_fields(text_buffer& record, std::span<const numbered_field> table, const char* separator,
                   const record_source& from) {
  for (const numbered_field& row : table) {
    for (int number = row.first; number <= row.last; ++number) {
      if (number > 1) record.append_text(separator);
      append_content(record, row.content, from);
    }
  }
}

}  // namespace skypost
