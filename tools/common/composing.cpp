#include "common/composing.h"

namespace skypost {

std::string text_of(const upload& upload, const station& source) {
  upload_text text;
  upload.compose(text, source);
  return std::string(text.view());
}

bool is_unset(const settings_record& settings, const field_description& row) {
  constexpr std::int32_t NO_PASSCODE = -1;
  if (row.field.is_text()) return settings.text(row.as_text()).empty();
  return row.field.is_secret() && settings.integer(row.as_integer()) == NO_PASSCODE;
}

bool is_text_lacking(const upload& upload, const station& source, const field_description& row) {
  if (!is_unset(source.settings, row)) return false;
  settings_record changed = source.settings;
  if (row.field.is_text())
    changed.set_text(row.as_text(), "x");
  else
    changed.set_integer(row.as_integer(), 1);
  return text_of(upload, {changed, source.live, source.now, source.host}) != text_of(upload, source);
}

// Only in queries and forms is `&` encoded but not `%`.
bool is_url_value(const upload& upload, const station& source, const text_field& field) {
  settings_record changed = source.settings;
  changed.set_text(field, "%x&");
  return text_of(upload, {changed, source.live, source.now, source.host}).find("%x%26") != std::string::npos;
}

bool is_hardware_address_told(const upload& upload, const station& source) {
  const auto text_with = [&](const char* address) {
    return text_of(upload, {source.settings, source.live, source.now, {source.host.platform, address}});
  };
  return text_with("1") != text_with("2");
}

}  // namespace skypost
