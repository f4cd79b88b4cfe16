#include "common/position.h"

#include "common/meaning.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

constexpr std::int32_t UNSET = -1;

// What is wrong with one part of a coordinate that is set, and what to do; empty when nothing is.
std::string finding_of_part(const integer_field& part, const settings_record& settings,
                            const std::string& consequence) {
  const meant_range range = meant_range_of(part).value();
  const std::int32_t value = settings.integer(part);
  if (value >= range.least && value <= range.most) return {};
  const std::string fault = value == UNSET ? "it is not set" : std::to_string(value) + " is out of range";
  return std::string(description_of(part).name) + ": " + fault + consequence + "Set it to " +
         std::to_string(range.least) + " to " + std::to_string(range.most) + '.';
}

void check_coordinate(const coordinate& one, const settings_record& settings, const std::string& networks,
                      std::vector<std::string>& found) {
  const std::string degrees = description_of(one.degrees).name;
  if (settings.integer(one.degrees) == UNSET) {
    found.push_back(degrees + ": the " + one.name + " is not set, so no valid position is sent to " +
                    networks + ". Set it in degrees, minutes and seconds.");
    return;
  }
  const std::string consequence = ", so a wrong position is sent to " + networks + ". ";
  const std::size_t found_before = found.size();
  for (const integer_field* const part : {&one.degrees, &one.minutes, &one.seconds})
    if (const std::string finding = finding_of_part(*part, settings, consequence); !finding.empty())
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
