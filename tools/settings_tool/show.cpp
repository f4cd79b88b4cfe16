#include <ostream>

#include "common/composing.h"
#include "common/errors.h"
#include "common/field_descriptions.h"
#include "common/networks.h"
#include "common/printable.h"
#include "common/settings_file.h"
#include "settings/load.h"
#include "settings_tool/chosen_file.h"
#include "settings_tool/commands.h"

namespace skypost {
namespace {

std::string value_of(const settings_record& record, const field_description& row) {
  if (row.field.is_text()) return quoted(record.text(row.as_text()));
  if (row.field.kind == field_kind::unsigned_integer)
    return std::to_string(record.unsigned_integer(row.as_integer()));
  return std::to_string(record.integer(row.as_integer()));
}

// Prints all groups if `wanted` is empty.
void print_fields(std::ostream& out, const settings_record& record, std::string_view wanted,
                  bool with_secrets) {
  std::string_view group;
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!wanted.empty() && wanted != row.group) continue;
    if (group != row.group) out << "\n[" << (group = row.group) << "]\n";
    const bool hide = !with_secrets && row.field.is_secret() && !is_unset(record, row);
    out << row.name << " = " << (hide ? "*" : value_of(record, row)) << '\n';
  }
}

// Removes the last argument if it names a group of settings, and returns the group. A file of that name must be given
// as ./name.
std::string_view take_group(words& arguments) {
  if (arguments.empty()) return {};
  const std::string_view group = group_named(arguments.back());
  if (!group.empty()) arguments.pop_back();
  return group;
}

// The rest must be a file. One that does not exist and has no slash may be a misspelt network.
void check_file(const words& arguments) {
  if (arguments.size() > 2) throw usage_error("show takes at most one FILE and one NETWORK");
  if (arguments.size() == 2)
    throw usage_error("no network " + quoted(arguments[1]) + suggested_network(arguments[1], true));
  if (arguments.empty() || arguments[0].find('/') != std::string::npos) return;
  if (!is_there(arguments[0]))
    throw tool_error(quoted(arguments[0]) + " is neither a file nor a network" +
                     suggested_network(arguments[0], true));
}

}  // namespace

int run_show(const words& all_arguments, std::ostream& out) {
  words arguments = all_arguments;
  const bool with_secrets = take_option(arguments, "--secrets");
  arguments = operands(arguments);
  const std::string_view group = take_group(arguments);
  check_file(arguments);
  const settings_file file = read_chosen_file(arguments);
  out << "File:       " << printable(file.path) << '\n'
      << "Layout:     " << layout_of(file) << '\n'
      << "Byte order: "
      << (is_byte_order_foreign(file.image, platform()) ? "foreign; the values are shown converted"
                                                        : "native")
      << '\n';
  print_fields(out, as_loaded(file), group, with_secrets);
  return 0;
}

// Prints the names that `set` accepts.
int run_names(const words& arguments, std::ostream& out) {
  if (!operands(arguments).empty()) throw usage_error("names takes no arguments");
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (row.field.offset != byte_order_marker.offset) out << row.name << '\n';
  return 0;
}

}  // namespace skypost
