#include "settings_tool.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <iterator>
#include <limits>
#include <numeric>
#include <ostream>
#include <sstream>

#include "base/endpoints.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"
#include "settings/field_descriptions.h"
#include "settings/load.h"
#include "settings_file.h"

namespace skypost {
namespace {

using words = std::vector<std::string>;

constexpr char HELP[] =
    "skypost-settings makes, shows and changes the settings files of skypost.\n"
    "\n"
    "  skypost-settings new FILE\n"
    "      writes the default settings to a new file\n"
    "  skypost-settings show [--secrets] [FILE]\n"
    "      prints every setting, group by group, with * for each password unless --secrets is given;\n"
    "      without FILE, the appliance's own file\n"
    "  skypost-settings set FILE NAME=VALUE...\n"
    "      changes settings; when one of them is wrong, the file stays as it was\n"
    "  skypost-settings names\n"
    "      prints the names of all settings, one a line\n"
    "  skypost-settings --version\n"
    "\n"
    "The environment variable NIMBULOGHW, when set, names the board that a file belongs to: NSLU2, PLUG,\n"
    "A10 or X86. Otherwise it is taken for this board's.\n";

struct usage_error : tool_error {
  using tool_error::tool_error;
};

// A text between quotes, without anything that a terminal would obey.
std::string quoted(std::string_view text) {
  std::ostringstream result;
  result << '"' << std::hex << std::setfill('0');
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < ' ' || byte == 0x7f)
      result << "\\x" << std::setw(2) << int{byte};
    else if (character == '"' || character == '\\')
      result << '\\' << character;
    else
      result << character;
  }
  result << '"';
  return result.str();
}

std::string value_of(const settings_record& record, const field_description& row) {
  if (row.field.is_text()) return quoted(record.text(row.as_text()));
  if (row.field.kind == field_kind::unsigned_integer)
    return std::to_string(record.unsigned_integer(row.as_integer()));
  return std::to_string(record.integer(row.as_integer()));
}

// An empty password is no secret.
bool is_hidden(const settings_record& record, const field_description& row) {
  return row.field.is_secret() && !(row.field.is_text() && record.text(row.as_text()).empty());
}

void print_fields(std::ostream& out, const settings_record& record, bool with_secrets) {
  std::string_view group;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (group != row.group) out << "\n[" << (group = row.group) << "]\n";
    const bool hide = !with_secrets && is_hidden(record, row);
    out << row.name << " = " << (hide ? "*" : value_of(record, row)) << '\n';
  }
}

// How many letters must be put in, left out or changed to make one word of the other.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < one.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < other.size(); ++j) {
      const std::size_t changed = diagonal + (one[i] == other[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

const field_description& field_named(const std::string& name) {
  const field_description& nearest =
      *std::min_element(std::begin(FIELD_DESCRIPTIONS), std::end(FIELD_DESCRIPTIONS),
                        [&](const field_description& one, const field_description& other) {
                          return distance(name, one.name) < distance(name, other.name);
                        });
  if (name != nearest.name)
    throw tool_error("no setting \"" + name + "\"; did you mean " + nearest.name + "?");
  return nearest;
}

// The bits that are stored for a number.
std::int32_t number_for(const field_description& row, const std::string& text) {
  using signed_limits = std::numeric_limits<std::int32_t>;
  const bool is_unsigned = row.field.kind == field_kind::unsigned_integer;
  const std::int64_t least = is_unsigned ? 0 : signed_limits::min();
  const std::int64_t most = is_unsigned ? std::numeric_limits<std::uint32_t>::max() : signed_limits::max();

  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, value);
  if (stop != end || fault == std::errc::invalid_argument)
    throw tool_error(std::string(row.name) + " takes a whole number, not \"" + text + "\"");
  if (fault != std::errc{} || value < least || value > most)
    throw tool_error(std::string(row.name) + " takes a number from " + std::to_string(least) + " to " +
                     std::to_string(most) + ", not " + text);
  return static_cast<std::int32_t>(value);
}

void store(settings_record& record, const field_description& row, const std::string& value) {
  const settings_field& field = row.field;
  if (!field.is_text()) {
    record.set_integer(row.as_integer(), number_for(row, value));
    return;
  }
  if (value.size() >= field.size)
    throw tool_error(std::string(row.name) + " holds at most " + std::to_string(field.size - 1) +
                     " bytes; this text has " + std::to_string(value.size()));
  // No rest of a longer password stays after the new one.
  std::memset(record.bytes + field.offset, 0, field.size);
  record.set_text(row.as_text(), value);
}

// Carries "name=value" out on the record of a file.
void assign(const settings_file& file, settings_record& record, const std::string& assignment) {
  const std::size_t equals = assignment.find('=');
  if (equals == std::string::npos) throw usage_error("\"" + assignment + "\" is no NAME=VALUE");
  const field_description& row = field_named(assignment.substr(0, equals));
  if (row.field.offset == byte_order_marker.offset)
    throw tool_error(std::string(row.name) + " tells the file's byte order and stays");
  if (row.field.offset + row.field.size > file.size)
    throw tool_error(std::string(row.name) + " lies beyond the end of this file's layout (" +
                     layout_of(file) + ")");
  store(record, row, assignment.substr(equals + 1));
}

// A file whose name starts with a dash is given as ./-name.
const std::string& as_path(const std::string& argument) {
  if (argument.starts_with('-')) throw usage_error("unknown option " + argument);
  return argument;
}

void make_new(const words& arguments) {
  if (arguments.size() != 1) throw usage_error("new takes one FILE");
  load_endpoints();
  settings_record record{};
  set_default_settings(record);
  create_settings_file(as_path(arguments[0]), record);
}

void show(words arguments, std::ostream& out) {
  const bool with_secrets = std::erase(arguments, "--secrets") != 0;
  if (arguments.size() > 1) throw usage_error("show takes one FILE");
  const settings_file file =
      read_settings_file(arguments.empty() ? appliance_settings_path() : as_path(arguments[0]));
  out << "File:       " << file.path << '\n'
      << "Layout:     " << layout_of(file) << '\n'
      << "Byte order: "
      << (is_byte_order_foreign(file.image, platform()) ? "foreign; the values are shown converted"
                                                        : "native")
      << '\n';
  print_fields(out, as_loaded(file), with_secrets);
}

void set(const words& arguments) {
  if (arguments.size() < 2) throw usage_error("set takes a FILE and at least one NAME=VALUE");
  settings_file file = read_settings_file(as_path(arguments[0]));
  if (is_size_unlisted(file.size, platform()))
    throw tool_error(arguments[0] + ": not changed, as its layout is unknown (" + layout_of(file) + ")");

  const bool foreign = is_byte_order_foreign(file.image, platform());
  if (foreign) convert_byte_order(file.image);
  for (std::size_t i = 1; i < arguments.size(); ++i) assign(file, file.image, arguments[i]);
  if (foreign) convert_byte_order(file.image);
  replace_settings_file(file);
}

void print_names(const words& arguments, std::ostream& out) {
  if (!arguments.empty()) throw usage_error("names takes nothing else");
  for (const field_description& row : FIELD_DESCRIPTIONS) out << row.name << '\n';
}

void run_command(const std::string& command, const words& arguments, std::ostream& out) {
  if (command == "new")
    make_new(arguments);
  else if (command == "show")
    show(arguments, out);
  else if (command == "set")
    set(arguments);
  else if (command == "names")
    print_names(arguments, out);
  else
    throw usage_error("no command \"" + command + "\"");
}

}  // namespace

int run_settings_tool(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& errors) {
  if (arguments.empty()) {
    errors << HELP;
    return 2;
  }
  if (arguments[0] == "--help") {
    out << HELP;
    return 0;
  }
  if (arguments[0] == "--version") {
    out << "skypost-settings " SKYPOST_VERSION "\n";
    return 0;
  }
  try {
    run_command(arguments[0], {arguments.begin() + 1, arguments.end()}, out);
    return 0;
  } catch (const usage_error& fault) {
    errors << "Error: " << fault.what() << "\n\n" << HELP;
    return 2;
  } catch (const tool_error& fault) {
    errors << "Error: " << fault.what() << '\n';
    return 1;
  }
}

}  // namespace skypost
