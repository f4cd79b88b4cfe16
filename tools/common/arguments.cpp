#include "common/arguments.h"

#include <algorithm>

#include "common/errors.h"

namespace skypost {

bool take_option(words& arguments, const std::string& option) { return std::erase(arguments, option) != 0; }

std::optional<std::string> take_file_option(words& arguments, const std::string& option) {
  const auto place = std::find(arguments.begin(), arguments.end(), option);
  if (place == arguments.end()) return std::nullopt;
  if (place + 1 == arguments.end()) throw usage_error(option + " takes a FILE");
  std::string file = place[1];
  arguments.erase(place, place + 2);
  return file;
}

const std::string& as_operand(const std::string& argument) {
  if (argument.starts_with('-')) throw usage_error("unknown option " + argument);
  return argument;
}

}  // namespace skypost
