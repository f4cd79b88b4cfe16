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
#include "base/paths.h"
#include "run/host_identity.h"
#include "settings/byte_order.h"
#include "settings/defaults.h"
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
    "\n"
    "The names are those that `show` prints. The environment variable NIMBULOGHW, when set, names the\n"
    "board that a file belongs to: NSLU2, PLUG, A10 or X86. Otherwise it is taken for this board's.\n";

struct usage_error : tool_error {
  using tool_error::tool_error;
};

// The board that files are taken to belong to: the one named in the environment, or else this one.
const char* platform() {
  if (std::getenv("NIMBULOGHW") == nullptr) detect_platform();
  return std::getenv("NIMBULOGHW");
}

std::string appliance_settings_path() {
  path_text path;
  append_appliance_path(path, SETTINGS_PATH);
  return path.c_str();
}

std::string layout_of(const settings_file& file) {
  std::string name = "current";
  if (is_size_unlisted(file.size, platform()))
    name = "unlisted size";
  else if (file.size == OLDER_LAYOUT_SIZE)
    name = "older";
  else if (file.size == OLDER_PLUG_LAYOUT_SIZE)
    name = "older PLUG";
  return name + ", " + std::to_string(file.size) + " bytes";
}

// The record that skypost makes of the file.
settings_record as_loaded(const settings_file& file) {
  settings_record record = file.image;
  if (file.size < SETTINGS_SIZE) complete_short_record(record, static_cast<std::uint32_t>(file.size));
  if (is_size_unlisted(file.size, platform())) open_gap(record);
  if (is_byte_order_foreign(record, platform())) convert_byte_order(record);
  return record;
}

const text_field& as_text(const settings_field& field) { return static_cast<const text_field&>(field); }

const integer_field& as_integer(const settings_field& field) {
  return static_cast<const integer_field&>(field);
}

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

std::string value_of(const settings_record& record, const settings_field& field) {
  if (field.is_text()) return quoted(record.text(as_text(field)));
  if (field.kind == field_kind::unsigned_integer)
    return std::to_string(record.unsigned_integer(as_integer(field)));
  return std::to_string(record.integer(as_integer(field)));
}

// What cannot be guessed from a secret is only that there is none.
bool is_hidden(const settings_record& record, const settings_field& field) {
  return field.is_secret() && !(field.is_text() && record.text(as_text(field)).empty());
}

void print_fields(std::ostream& out, const settings_record& record, bool with_secrets) {
  std::string_view group;
  for (const settings_field* field : SETTINGS_FIELDS) {
    if (group != field->group) out << "\n[" << (group = field->group) << "]\n";
    const bool hide = !with_secrets && is_hidden(record, *field);
    out << field->name << " = " << (hide ? "*" : value_of(record, *field)) << '\n';
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

const settings_field& field_named(const std::string& name) {
  const settings_field& nearest = **std::min_element(
      std::begin(SETTINGS_FIELDS), std::end(SETTINGS_FIELDS), [&](const auto* one, const auto* other) {
        return distance(name, one->name) < distance(name, other->name);
      });
  if (name != nearest.name)
    throw tool_error("no setting \"" + name + "\"; did you mean " + nearest.name + "?");
  return nearest;
}

// The bits that are stored for a number.
std::int32_t number_for(const settings_field& field, const std::string& text) {
  using signed_limits = std::numeric_limits<std::int32_t>;
  const bool is_unsigned = field.kind == field_kind::unsigned_integer;
  const std::int64_t least = is_unsigned ? 0 : signed_limits::min();
  const std::int64_t most = is_unsigned ? std::numeric_limits<std::uint32_t>::max() : signed_limits::max();

  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, value);
  if (stop != end || fault == std::errc::invalid_argument)
    throw tool_error(std::string(field.name) + " takes a whole number, not \"" + text + "\"");
  if (fault != std::errc{} || value < least || value > most)
    throw tool_error(std::string(field.name) + " takes a number from " + std::to_string(least) + " to " +
                     std::to_string(most) + ", not " + text);
  return static_cast<std::int32_t>(value);
}

void store(settings_record& record, const settings_field& field, const std::string& value) {
  if (!field.is_text()) {
    record.set_integer(as_integer(field), number_for(field, value));
    return;
  }
  if (value.size() >= field.size)
    throw tool_error(std::string(field.name) + " holds at most " + std::to_string(field.size - 1) +
                     " bytes; this text has " + std::to_string(value.size()));
  // No rest of a longer password stays behind the new one.
  std::memset(record.bytes + field.offset, 0, field.size);
  record.set_text(as_text(field), value);
}

// Carries "name=value" out on the record of a file.
void assign(const settings_file& file, settings_record& record, const std::string& assignment) {
  const std::size_t equals = assignment.find('=');
  if (equals == std::string::npos) throw usage_error("\"" + assignment + "\" is no NAME=VALUE");
  const settings_field& field = field_named(assignment.substr(0, equals));
  if (field.offset == byte_order_marker.offset)
    throw tool_error(std::string(field.name) + " tells the file's byte order and stays");
  if (field.offset + field.size > file.size)
    throw tool_error(std::string(field.name) + " lies beyond the end of this file's layout (" +
                     layout_of(file) + ")");
  store(record, field, assignment.substr(equals + 1));
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

void run_command(const std::string& command, const words& arguments, std::ostream& out) {
  if (command == "new")
    make_new(arguments);
  else if (command == "show")
    show(arguments, out);
  else if (command == "set")
    set(arguments);
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
