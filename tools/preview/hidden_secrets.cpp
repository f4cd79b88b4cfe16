#include "preview/hidden_secrets.h"

#include "common/composing.h"

namespace skypost {
namespace {

// Short enough for every slot, with neither blanks nor separators.
constexpr const char* WORDS[] = {"AAAAAAAA", "bbbbbbbb"};
constexpr std::int32_t NUMBERS[] = {11'111, 22'222};

constexpr std::string_view BLANKS = " \r\n";

// Takes the run of characters that are blanks, or are none, from the front of `text`.
std::string_view take_run(std::string_view& text, bool of_blanks) {
  const std::size_t end = of_blanks ? text.find_first_not_of(BLANKS) : text.find_first_of(BLANKS);
  const std::string_view run = text.substr(0, end);
  text.remove_prefix(run.size());
  return run;
}

}  // namespace

settings_record with_secrets_replaced(const settings_record& settings, bool by_second_word) {
  settings_record result = settings;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_secret() || is_unset(settings, row)) continue;
    if (row.field.is_text())
      result.set_text(row.as_text(), WORDS[by_second_word]);
    else
      result.set_integer(row.as_integer(), NUMBERS[by_second_word]);
  }
  return result;
}

std::string with_differences_hidden(std::string_view one, std::string_view other) {
  std::string result;
  for (bool of_blanks = false; !one.empty() || !other.empty(); of_blanks = !of_blanks) {
    const std::string_view run = take_run(one, of_blanks);
    if (run == take_run(other, of_blanks))
      result += run;
    else
      result += HIDDEN;
  }
  return result;
}

std::vector<request_parameter> with_differences_hidden(const std::vector<request_parameter>& one,
                                                       const std::vector<request_parameter>& other) {
  std::vector<request_parameter> result = one;
  for (std::size_t i = 0; i < result.size(); ++i)
    for (std::size_t j = 0; j < result[i].fields.size(); ++j)
      if (i >= other.size() || j >= other[i].fields.size() || result[i].fields[j] != other[i].fields[j])
        result[i].fields[j] = HIDDEN;
  return result;
}

request_parts with_differences_hidden(const request_parts& one, const request_parts& other) {
  return {.method = one.method,
          .server = with_differences_hidden(one.server, other.server),
          .path = with_differences_hidden(one.path, other.path),
          .login = with_differences_hidden(one.login, other.login),
          .parameters = with_differences_hidden(one.parameters, other.parameters)};
}

}  // namespace skypost
