#include "common/arguments.h"

#include <algorithm>

#include "common/errors.h"

namespace skypost {
namespace {

words::iterator end_of_options(words& arguments) {
  return std::find(arguments.begin(), arguments.end(), "--");
}

}  // namespace

bool take_option(words& arguments, const std::string& option) {
  const auto end = end_of_options(arguments);
  const auto first_taken = std::remove(arguments.begin(), end, option);
  const bool was_given = first_taken != end;
  arguments.erase(first_taken, end);
  return was_given;
}

std::optional<std::string> take_file_option(words& arguments, const std::string& option) {
  const auto end = end_of_options(arguments);
  const auto place = std::find_if(arguments.begin(), end, [&](const std::string& word) {
    return word == option || word.starts_with(option + '=');
  });
  if (place == end) return std::nullopt;
  const bool is_one_word = *place != option;
  std::string file;
  if (is_one_word)
    file = place->substr(option.size() + 1);
  else if (place + 1 != end)
    file = place[1];
  if (file.empty()) throw usage_error(option + " requires a FILE");
  arguments.erase(place, place + (is_one_word ? 1 : 2));
  return file;
}

words operands(words arguments, bool may_be_password) {
  const auto end = end_of_options(arguments);
  const auto option =
      std::find_if(arguments.begin(), end, [](const std::string& word) { return word.starts_with('-'); });
  if (option != end) throw usage_error("unknown option" + (may_be_password ? "" : ' ' + *option));
  if (end != arguments.end()) arguments.erase(end);
  return arguments;
}

}  // namespace skypost
