#include "common/secrets.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace skypost {
namespace {

constexpr std::string_view STARS = "***";
constexpr std::size_t DIGEST_DIGITS = 32;    // of MD5, the shortest digest in use
constexpr std::size_t BEGINNING_DIGITS = 8;  // of a truncated digest; fewer may be a date

// Holds the longest text setting.
using secret_text = fixed_text<128>;

// The value of a hexadecimal digit, or -1.
int digit_value(char character) {
  if (character >= '0' && character <= '9') return character - '0';
  const char lower = static_cast<char>(character | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// How the text encodes characters: as in a URL, or as in an HTML page, which may also use entities.
enum class notation : std::uint8_t { url, page };

struct written_character {
  char value;
  std::size_t length;
};

// The entities that most servers use for these characters.
constexpr struct {
  std::string_view text;
  char value;
} ENTITIES[] = {
    {"&amp;", '&'}, {"&lt;", '<'},   {"&gt;", '>'},    {"&quot;", '"'},
    {"&#34;", '"'}, {"&#39;", '\''}, {"&#039;", '\''},
};

// Decodes the first character: a literal, %XX, an HTML entity, or "+" for a space.
written_character first_of(std::string_view text, notation written) {
  if (text.size() >= 3 && text[0] == '%' && digit_value(text[1]) >= 0 && digit_value(text[2]) >= 0)
    return {static_cast<char>(digit_value(text[1]) * 16 + digit_value(text[2])), 3};
  for (const auto& entity : ENTITIES)
    if (written == notation::page && head_of(text, entity.text.size()) == entity.text)
      return {entity.value, entity.text.size()};
  return {text[0] == '+' ? ' ' : text[0], 1};
}

// True if the text could be the start of an encoded character that was truncated.
bool is_cut_character(std::string_view text, notation written) {
  if (text == "%" || (text.size() == 2 && text[0] == '%' && digit_value(text[1]) >= 0)) return true;
  return written == notation::page &&
         std::any_of(std::begin(ENTITIES), std::end(ENTITIES), [&](const auto& entity) {
           return text.size() < entity.text.size() && head_of(entity.text, text.size()) == text;
         });
}

// Length of the match for `secret` at the start of `text`, or 0. A partial match counts at the end of a truncated text.
// An escape inside the secret also matches its decoded form, because servers decode it.
std::size_t secret_length(std::string_view text, notation written, std::string_view secret, bool was_cut) {
  std::size_t length = 0;
  while (!secret.empty()) {
    const std::string_view rest = tail_of(text, length);
    if (rest.empty() || (was_cut && is_cut_character(rest, written))) return was_cut ? text.size() : 0;
    const written_character there = first_of(rest, written);
    const written_character wanted = first_of(secret, notation::url);
    if (there.value == wanted.value) {
      length += there.length;
      secret = tail_of(secret, wanted.length);
    } else if (there.value == secret[0] || rest[0] == secret[0]) {
      length += there.value == secret[0] ? there.length : 1;
      secret = tail_of(secret, 1);
    } else {
      return 0;
    }
  }
  return length >= STARS.size() ? length : 0;
}

std::size_t digest_length(std::string_view text, bool was_cut) {
  std::size_t length = 0;
  while (length < text.size() && digit_value(text[length]) >= 0) ++length;
  const std::size_t least = was_cut && length == text.size() ? BEGINNING_DIGITS : DIGEST_DIGITS;
  return length >= least ? length : 0;
}

void append_setting(text_buffer& text, const settings_record& settings, const settings_field& field) {
  if (field.is_text())
    text.append_text(settings.text(text_field{field}));
  else
    text.append("%d", settings.integer(integer_field{field}));
}

// Length of the longest secret at the start of `text`, or 0.
std::size_t hidden_length(std::string_view text, const settings_record& settings, bool was_cut) {
  std::size_t longest = digest_length(text, was_cut);
  for (const settings_field& field : SETTINGS_FIELDS) {
    if (!field.is_secret()) continue;
    secret_text secret;
    append_setting(secret, settings, field);
    if (secret.length() < STARS.size()) continue;
    for (const notation written : {notation::url, notation::page})
      longest = std::max(longest, secret_length(text, written, secret.view(), was_cut));
  }
  return longest;
}

}  // namespace

void hide_secrets(text_buffer& text, const settings_record& settings) {
  char* const bytes = text.storage();
  std::size_t kept = 0;
  for (std::size_t place = 0; place < text.length();) {
    const std::size_t length = hidden_length(tail_of(text.view(), place), settings, text.was_cut());
    if (length == 0) {
      bytes[kept++] = bytes[place++];
    } else {
      for (const char star : head_of(STARS, length)) bytes[kept++] = star;
      place += length;
    }
  }
  text.set_length(kept);
}

}  // namespace skypost
