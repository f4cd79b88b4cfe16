#include <algorithm>

#include "common/network_faults.h"
#include "settings_tool/checks.h"
#include "settings_tool/enabled.h"

namespace skypost {

void check_any_network(const checked_appliance&, findings& found) {
  if (!is_any_network_enabled(station_settings))
    found.push_back("no network is switched on, so nothing is sent. Set one's NAME_enabled to 1.");
}

void check_networks_settings(const checked_appliance& appliance, findings& found) {
  // Of a board whose files alone are here, neither the hardware address is known nor, perhaps, the endpoint file.
  const bool is_here = appliance.at_hand == extent::machine;
  const station source =
      station_without_values(is_here ? appliance.hardware_address.c_str() : "00:00:00:00:00:01");
  std::vector<network_fault> faults;
  for (const handed_out& one : all_handed_out())
    if (one.is_on(station_settings))
      for (const network_fault& fault : faults_of(one, source))
        if (appliance.at_hand > extent::settings || !fault.is_of_endpoint_file) faults.push_back(fault);
  std::stable_sort(faults.begin(), faults.end(), [](const network_fault& fault, const network_fault& other) {
    return fault.weight < other.weight;
  });
  for (const network_fault& fault : faults)
    if (std::find(found.begin(), found.end(), fault.text) == found.end()) found.push_back(fault.text);
}

}  // namespace skypost
