#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <limits>

#include "common/errors.h"
#include "common/plausibility.h"
#include "common/printable.h"
#include "common/settings_file.h"
#include "common/similar_name.h"
#include "settings/byte_order.h"
#include "settings/load.h"
#include "settings_tool/asked_secret.h"
#include "settings_tool/chosen_file.h"
#include "settings_tool/commands.h"

namespace skypost {
namespace {

const field_description* find_field(std::string_view name) {
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (name == row.name) return &row;
  return nullptr;
}

const field_description& field_named(const std::string& name) {
  if (const field_description* const row = find_field(name)) return *row;
  std::vector<std::string> names;
  for (const field_description& row : FIELD_DESCRIPTIONS) names.emplace_back(row.name);
  throw tool_error("no setting " + quoted(name) + suggestion_for(name, names));
}

// Throws tool_error if the text is not a number that fits the field.
std::int64_t number_for(const field_description& row, const std::string& text) {
  using signed_limits = std::numeric_limits<std::int32_t>;
  const bool is_unsigned = row.field.kind == field_kind::unsigned_integer;
  const std::int64_t least = is_unsigned ? 0 : signed_limits::min();
  const std::int64_t most = is_unsigned ? std::numeric_limits<std::uint32_t>::max() : signed_limits::max();

  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, value);
  if (stop != end || fault == std::errc::invalid_argument) throw tool_error(fault_of_digits(row, text));
  if (fault != std::errc{} || value < least || value > most)
    throw tool_error(std::string(row.name) + " must be from " + std::to_string(least) + " to " +
                     std::to_string(most) + (row.field.is_secret() ? "" : ", not " + text));
  return value;
}

void refuse(const std::string& fault) {
  if (!fault.empty()) throw tool_error(fault + "; --force stores it anyway");
}

void store_number(settings_record& record, const field_description& row, const std::string& text,
                  bool force) {
  const std::int64_t number = number_for(row, text);
  if (!force) refuse(fault_of_number(row, number));
  record.set_integer(row.as_integer(), static_cast<std::int32_t>(number));
}

void store_text(settings_record& record, const field_description& row, const std::string& text, bool force) {
  const settings_field& field = row.field;
  if (text.size() >= field.size) {
    const std::string fault = fault_of_site_id(row, text);
    throw tool_error(std::string(row.name) + " holds at most " + std::to_string(field.size - 1) +
                     " bytes; this text has " + std::to_string(text.size()) +
                     (fault.empty() ? "" : "; " + fault));
  }
  if (!force) refuse(fault_of_text(row, text));
  // No tail of a longer old password may remain.
  std::memset(record.bytes + field.offset, 0, field.size);
  record.set_text(row.as_text(), text);
}

// The name in "name=value", or that of a password without a value. Anything else may contain a password, so the error
// quotes only the name of a setting.
std::string name_in(const std::string& assignment) {
  const auto is_in_name = [](unsigned char letter) { return std::isalnum(letter) != 0 || letter == '_'; };
  const auto end = std::find_if_not(assignment.begin(), assignment.end(), is_in_name);
  std::string name(assignment.begin(), end);
  const field_description* const row = find_field(name);
  if (end == assignment.end() ? row != nullptr && row->field.is_secret() : *end == '=') return name;
  throw usage_error((row != nullptr ? name : std::string("an argument after FILE")) + " has no =VALUE");
}

// Refuses a change that makes a valid coordinate invalid.
void refuse_invalid_coordinate(const settings_record& before, const settings_record& after) {
  for (const coordinate& one : POSITION)
    if (fault_of_coordinate(one, before).empty()) refuse(fault_of_coordinate(one, after));
}

void assign(const settings_file& file, settings_record& record, const std::string& assignment, bool force) {
  const std::string name = name_in(assignment);
  const field_description& row = field_named(name);
  if (row.field.offset == byte_order_marker.offset)
    throw tool_error(std::string(row.name) + " marks the file's byte order and cannot be set");
  if (row.field.offset + row.field.size > file.size)
    throw tool_error(std::string(row.name) + " is beyond the end of this file's layout (" + layout_of(file) +
                     ")");
  const std::string value = assignment == name ? asked_secret(row.name) : assignment.substr(name.size() + 1);
  if (row.field.is_text())
    store_text(record, row, value, force);
  else
    store_number(record, row, value, force);
}

}  // namespace

int run_set(const words& all_arguments, std::ostream&) {
  words arguments = all_arguments;
  const bool force = take_option(arguments, "--force");
  arguments = operands(arguments, true);
  if (arguments.size() < 2) throw usage_error("set takes a FILE and at least one NAME=VALUE");
  if (arguments[0].find('=') != std::string::npos && !is_there(arguments[0]))
    throw usage_error("set takes a FILE before NAME=VALUE");  // does not quote it: it may be a password
  const descriptor lock = lock_settings_file(arguments[0]);
  const settings_file file = read_settings_file(arguments[0]);
  if (is_size_unlisted(file.size, platform()))
    throw tool_error(arguments[0] + ": not changed, because its layout is unknown (" + layout_of(file) + ")");

  settings_record image = file.image;
  const bool foreign = is_byte_order_foreign(image, platform());
  if (foreign) convert_byte_order(image);
  const settings_record before = image;
  for (std::size_t i = 1; i < arguments.size(); ++i) assign(file, image, arguments[i], force);
  if (!force) refuse_invalid_coordinate(before, image);
  if (foreign) convert_byte_order(image);
  replace_settings_file(file, image);
  return 0;
}

}  // namespace skypost
