#include "compose/numbered_record.h"

#include "compose/command.h"
#include "compose/md5.h"

namespace skypost {
namespace {

// A time that the report does not have is "---".
bool is_text_missing(const field_content& content, const LiveRecord& live) {
  const std::string_view text = live.*content.text;
  if (text.empty()) return true;
  return content.kind == content_kind::time && (!known(content.number.of(live)) || text == "---");
}

void append_digest(text_buffer& record, std::string_view password) {
  md5_text digest;
  record.append_text(md5_hex(password, digest).view());
}

}  // namespace

void append_content(text_buffer& record, const field_content& content, const station& source,
                    text_writer write_text) {
  switch (content.kind) {
    case content_kind::fixed:
      record.append_text(content.filler);
      break;
    case content_kind::number:
      append_or(record, content.filler, content.number.of(source.live), *content.format);
      break;
    case content_kind::word:
    case content_kind::time:
      if (is_text_missing(content, source.live))
        record.append_text(content.filler);
      else
        write_text(record, source.live.*content.text);
      break;
    case content_kind::setting:
      write_text(record, source.settings.text(*content.setting));
      break;
    case content_kind::digest:
      append_digest(record, source.settings.text(*content.setting));
      break;
    case content_kind::made:
      content.compose(record, source);
      break;
  }
}

void append_unchanged(text_buffer& record, std::string_view text) { record.append_text(text); }

void append_fields(text_buffer& record, std::span<const numbered_field> table, const char* separator,
                   const station& source, text_writer write_text) {
  for (const numbered_field& row : table) {
    for (int number = row.number; number <= row.last; ++number) {
      if (number > 1) record.append_text(separator);
      append_content(record, row.content, source, write_text);
    }
  }
}

void append_record(text_buffer& query, const char* key, std::span<const numbered_field> table,
                   const station& source, const char* end) {
  query.append_text(key);
  append_fields(query, table, ";", source, append_url_value);
  query.append_text(end);
}

}  // namespace skypost
