#include "preview/hidden_secrets.h"

#include "common/composing.h"
#include "compose/md5.h"

namespace skypost {
namespace {

constexpr char HIDDEN[] = "***";                        // needs no escaping anywhere
constexpr std::int32_t HIDDEN_NUMBER = -2'000'000'001;  // no value, time or passcode looks like it

settings_record with_secrets_replaced(settings_record settings) {
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret() || is_unset(settings, row)) continue;
    if (row.field.is_text())
      settings.set_text(row.as_text(), HIDDEN);
    else
      settings.set_integer(row.as_integer(), HIDDEN_NUMBER);
  }
  return settings;
}

}  // namespace

std::string text_without_secrets(const upload& upload, const station& source) {
  md5_text digest;
  md5_hex(HIDDEN, digest);
  std::string text =
      text_of(upload, {with_secrets_replaced(source.settings), source.live, source.now, source.host});
  for (const std::string& made : {std::string(digest.view()), std::to_string(HIDDEN_NUMBER)})
    for (std::size_t at = 0; (at = text.find(made, at)) != std::string::npos;)
      text.replace(at, made.size(), HIDDEN);
  return text;
}

}  // namespace skypost
