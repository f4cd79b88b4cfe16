#include "common/composing.h"

namespace skypost {

std::string text_of(const outgoing& what, const station& from) {
  outgoing_text text;
  what.compose(text, from);
  return std::string(text.view());
}

bool is_unset(const settings_record& settings, const field_description& row) {
  constexpr std::int32_t NO_PASSCODE = -1;
  if (row.field.is_text()) return settings.text(row.as_text()).empty();
  return row.field.is_secret() && settings.integer(row.as_integer()) == NO_PASSCODE;
}

bool is_text_lacking(const outgoing& what, const station& from, const field_description& row) {
  if (!is_unset(from.settings, row)) return false;
  settings_record changed = from.settings;
  if (row.field.is_text())
    changed.set_text(row.as_text(), "x");
  else
    changed.set_integer(row.as_integer(), 1);
  return text_of(what, {changed, from.live, from.now, from.host}) != text_of(what, from);
}

bool is_hardware_address_told(const outgoing& what, const station& from) {
  const auto text_with = [&](const char* address) {
    return text_of(what, {from.settings, from.live, from.now, {from.host.platform, address}});
  };
  return text_with("1") != text_with("2");
}

}  // namespace skypost
