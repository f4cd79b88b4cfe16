#pragma once

#include <cstdio>

#include "base/text.h"

namespace skypost {

// The servers and the fixed mail addresses, in the order of their table.
enum class endpoint {
  wunderground,
  wunderground_rapid,
  weatherflow,
  metoffice,
  pwsweather,
  weatherbug,
  awekas,
  wedaal,
  windfinder,
  windit,
  idokep,
  idokep_pro,
  wetterarchiv,
  anythingweather,
  meteonews,
  shnetz,
  regiowetter_bw,
  regiowetter,
  sauerlandwetter,
  wetterring,
  cwop_first,
  cwop_second,
  borgervejr_recipient,
  mail_sender,
  COUNT
};

inline constexpr std::size_t ENDPOINT_CAPACITY = 127;

// What stands in force for a row: "scheme://host[:port]", "host[:port]", a host name or a mail
// address, by the row. It holds no character that the shell or a URL would take for its own.
const char* endpoint_value(endpoint row);

// Puts every row back to its default.
void reset_endpoints();

// Reads rows `name = value`, one a line, `#` opening a comment. A line that is not such a row is
// named on standard error with its number, and skipped.
void read_endpoints(std::FILE* file);

// Reads the appliance's override file on top of the defaults. No file is the normal case.
void load_endpoints();

}  // namespace skypost
