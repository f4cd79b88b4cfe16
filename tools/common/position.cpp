#include "common/position.h"

#include "common/meaning.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

void check_coordinate(const coordinate& one, const settings_record& settings, const std::string& networks,
                      std::vector<std::string>& found) {
  const std::string degrees = description_of(one.degrees).name;
  if (settings.integer(one.degrees) == UNSET_NUMBER) {
    found.push_back(degrees + ": the " + one.name + " is not set, so no valid position is sent to " +
                    networks + ". Set it in degrees, minutes and seconds.");
    return;
  }
  const std::string consequence = ", so a wrong position is sent to " + networks + ". ";
  const std::size_t found_before = found.size();
  for (const integer_field* const part : {&one.degrees, &one.minutes, &one.seconds})
    if (const std::string finding = finding_of_number(*part, settings, consequence); !finding.empty())
      found.push_back(finding);
  if (found.size() != found_before) return;
  if (const std::string fault = fault_of_whole(one, settings); !fault.empty())
    found.push_back(degrees + ": " + fault + consequence + "Correct it.");
}

}  // namespace

std::vector<std::string> faults_of_position(const settings_record& settings, const std::string& networks) {
  std::vector<std::string> found;
  for (const coordinate& one : POSITION) check_coordinate(one, settings, networks, found);
  return found;
}

}  // namespace skypost
