#include "support/pattern.h"

#include <regex>

namespace skypost::testing {

std::vector<std::string> first_match(const std::string& text, const std::string& pattern) {
  std::smatch parts;
  if (!std::regex_search(text, parts, std::regex(pattern))) return {};
  return {parts.begin(), parts.end()};
}

std::vector<std::string> all_matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  return {std::sregex_token_iterator(text.begin(), text.end(), regex), {}};
}

std::string with_matches_as(const std::string& text, const std::string& pattern, const std::string& to) {
  return std::regex_replace(text, std::regex(pattern), to);
}

}  // namespace skypost::testing
