#include "common/secrets.h"

#include <algorithm>
#include <cstdint>

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

// How a text writes characters: all as they are; some as in a URL; or some also as in HTML, JSON or wget's messages.
enum class notation : std::uint8_t { plain, url, page };

struct written_character {
  std::uint32_t value;  // a byte or a code point
  std::size_t length;
};

// Characters as numbers. Where something ends the number, it may have fewer digits.
constexpr struct {
  std::string_view start;
  unsigned base;
  std::size_t digits;
  std::string_view end;
} NUMBERS[] = {
    // clang-format off
    {"%",   16, 2, ""},   // the only one in a URL
    {"&#x", 16, 8, ";"},  // HTML
    {"&#X", 16, 8, ";"},
    {"&#",  10, 8, ";"},
    {"\\u", 16, 4, ""},   // JSON
    {"\\x", 16, 2, ""},   // JavaScript
    {"\\",   8, 3, ""},   // wget
    // clang-format on
};

constexpr struct {
  std::string_view name;
  char value;
} ASCII_ENTITIES[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

// The entities of U+00A0 to U+00FF, each followed by a blank.
constexpr std::uint32_t FIRST_OF_LATIN_1 = 0xa0;
constexpr std::string_view LATIN_1_ENTITIES =
    "nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not shy reg macr deg plusmn sup2 "
    "sup3 acute micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest Agrave Aacute Acirc "
    "Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute Icirc Iuml ETH Ntilde Ograve "
    "Oacute Ocirc Otilde Ouml times Oslash Ugrave Uacute Ucirc Uuml Yacute THORN szlig agrave aacute "
    "acirc atilde auml aring aelig ccedil egrave eacute ecirc euml igrave iacute icirc iuml eth ntilde "
    "ograve oacute ocirc otilde ouml divide oslash ugrave uacute ucirc uuml yacute thorn yuml ";
constexpr std::size_t LONGEST_ENTITY = std::string_view("&#x00000000;").size();

// The character of a named entity, or 0 if there is none of that name.
std::uint32_t character_named(std::string_view name) {
  for (const auto& entity : ASCII_ENTITIES)
    if (name == entity.name) return static_cast<unsigned char>(entity.value);
  std::uint32_t character = FIRST_OF_LATIN_1;
  for (std::string_view rest = LATIN_1_ENTITIES; !rest.empty(); ++character) {
    const std::size_t blank = rest.find(' ');
    if (head_of(rest, blank) == name) return character;
    rest = tail_of(rest, blank + 1);
  }
  return 0;
}

// The character that `text` begins with if that is written as in one row of NUMBERS; otherwise its length is 0.
template <typename number_row>
written_character number_at(std::string_view text, const number_row& row) {
  if (head_of(text, row.start.size()) != row.start) return {0, 0};
  std::uint32_t value = 0;
  std::size_t length = row.start.size();
  const std::size_t most = length + row.digits;
  for (; length < text.size() && length < most; ++length) {
    const int digit = digit_value(text[length]);
    if (digit < 0 || static_cast<unsigned>(digit) >= row.base) break;
    value = value * row.base + static_cast<unsigned>(digit);
  }
  if (row.end.empty() ? length < most : head_of(tail_of(text, length), row.end.size()) != row.end)
    return {0, 0};
  return {value, length + row.end.size()};
}

// The character that `text` begins with if it is written in more than one; otherwise its length is 0.
written_character encoded_at(std::string_view text, notation written) {
  if (written == notation::plain) return {0, 0};
  for (const auto& row : NUMBERS) {
    if (const written_character found = number_at(text, row); found.length != 0) return found;
    if (written == notation::url) return {0, 0};
  }
  if (text[0] == '&') {
    const std::size_t end = head_of(text, LONGEST_ENTITY).find(';');
    const std::uint32_t named = end == text.npos ? 0 : character_named(head_of(tail_of(text, 1), end - 1));
    if (named != 0) return {named, end + 1};
  }
  if (text[0] == '\\' && text.size() > 1 && !is_alphanumeric(head_of(tail_of(text, 1), 1)))
    return {static_cast<unsigned char>(text[1]), 2};
  return {0, 0};
}

// The character that `text`, which is not empty, begins with.
written_character first_of(std::string_view text, notation written) {
  if (const written_character found = encoded_at(text, written); found.length != 0) return found;
  if (written != notation::plain && text[0] == '+') return {' ', 1};
  return {static_cast<unsigned char>(text[0]), 1};
}

// True if the text could be the start of an encoded character that was truncated.
bool is_cut_character(std::string_view text, notation written) {
  constexpr std::string_view STARTS = "%&\\";
  return written != notation::plain && text.size() < LONGEST_ENTITY &&
         head_of(STARTS, written == notation::url ? 1 : STARTS.size()).find(text[0]) != STARTS.npos &&
         is_alphanumeric(tail_of(text, 1), "#") && encoded_at(text, written).length == 0;
}

// The number of bytes at the start of `secret` that are `character`, as a byte or in UTF-8; 0 if they are not.
std::size_t length_of(std::uint32_t character, std::string_view secret) {
  if (character == static_cast<unsigned char>(secret[0])) return 1;
  if (character < 0x80) return 0;
  char bytes[4];
  const std::size_t count = character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
  for (std::size_t i = count - 1; i > 0; --i, character >>= 6)
    bytes[i] = static_cast<char>(0x80 | (character & 0x3f));
  bytes[0] = static_cast<char>(0xf00 >> count | character);
  return head_of(secret, count) == std::string_view(bytes, count) ? count : 0;
}

// Length of the match for `secret` at the start of `text`, or 0. A partial match counts at the end of a truncated text.
// If it was entered as in a URL, an escape inside it also matches its decoded form, because servers decode it.
std::size_t secret_length(std::string_view text, notation written, std::string_view secret, notation entered,
                          bool was_cut) {
  std::size_t length = 0;
  while (!secret.empty()) {
    const std::string_view rest = tail_of(text, length);
    if (rest.empty() || (was_cut && is_cut_character(rest, written))) return was_cut ? text.size() : 0;
    const written_character there = first_of(rest, written);
    const written_character wanted = first_of(secret, entered);
    if (there.value == wanted.value) {
      length += there.length;
      secret = tail_of(secret, wanted.length);
    } else if (const std::size_t count = length_of(there.value, secret); count != 0) {
      length += there.length;
      secret = tail_of(secret, count);
    } else if (rest[0] == secret[0]) {
      length += 1;
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
    for (const notation written : {notation::plain, notation::url, notation::page})
      for (const notation entered : {notation::plain, notation::url})
        longest = std::max(longest, secret_length(text, written, secret.view(), entered, was_cut));
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
