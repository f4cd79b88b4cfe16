#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "base/paths.h"
#include "common/file_start.h"
#include "common/networks.h"
#include "common/settings_file.h"
#include "common/similar_name.h"
#include "settings_tool/checks.h"

namespace skypost {
namespace {

constexpr std::size_t LONGEST_FILE = 100'000;

// The name that a line of the endpoint file begins with. A line ends in LF, CR LF or a lone CR.
std::string name_in_line(int number) {
  std::string text = file_start(appliance_path(ENDPOINTS_PATH), LONGEST_FILE);
  for (std::size_t place = 0; (place = text.find("\r\n", place)) != std::string::npos;) text.erase(place, 1);
  std::replace(text.begin(), text.end(), '\r', '\n');
  std::istringstream lines(text);
  std::string line;
  for (int i = 0; i < number; ++i) std::getline(lines, line);
  line.erase(0, line.find_first_not_of(" \t"));
  return line.substr(0, line.find_first_of(" \t=:"));
}

// For a line with an unknown name, "; did you mean windit?" if it resembles one.
std::string suggestion_after(const std::string& fault) {
  const std::string start = appliance_path(ENDPOINTS_PATH) + " line ";
  if (!fault.starts_with(start) || fault.find(": unknown name; ", start.size()) == std::string::npos)
    return {};
  std::vector<std::string> names;
  for (int row = 0; row < static_cast<int>(endpoint::COUNT); ++row)
    names.emplace_back(endpoint_name(endpoint{row}));
  return suggestion_for(name_in_line(std::atoi(fault.c_str() + start.size())), names);
}

}  // namespace

void check_endpoint_file(const checked_appliance& appliance, findings& found) {
  for (const std::string& fault : endpoint_faults(appliance.endpoint_errors)) {
    const std::string suggestion = suggestion_after(fault);
    found.push_back(fault + (suggestion.empty() ? "." : suggestion) + " Correct it.");
  }
}

}  // namespace skypost
