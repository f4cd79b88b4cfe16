#pragma once

#include <span>

#include "settings/fields.h"

namespace skypost::sim {

// A setting of the station's account at a network, its value, and how the network receives it: as a parameter, as a
// field of a record in a parameter, or as the password of an HTTP login.
struct account_text {
  const text_field* field = nullptr;
  const char* value = nullptr;
  const char* parameter = nullptr;  // nullptr: the password of the login
  int record_field = 0;             // counted from 1; 0: the parameter as a whole
  bool is_hashed = false;
};

// A record in one parameter, with this many separators.
struct record_shape {
  const char* parameter = nullptr;
  char separator = ';';
  int count = 0;
};

enum class server { first, second, secured };

// Whether the network's own server is known to reply like this today, or the replies are made up.
enum class replies { made_up, known };

// An HTTP network as its simulated servers play it.
struct network_row {
  const char* name = nullptr;      // the name under which a run reports a failure
  const char* endpoint = nullptr;  // the endpoint that names the server
  server which = server::first;    // second: not used in an ordinary one-shot run
  const integer_field* enabled = nullptr;
  const char* method = "GET";
  const char* path = nullptr;
  const char* success_text = nullptr;  // if set, the endpoint file gives this and the path
  const char* parameters = "";         // separated by spaces; each must be sent with a value
  record_shape record = {};
  account_text account[3] = {};
  replies origin = replies::made_up;
  const char* good = nullptr;
  int bad_status = 200;
  const char* bad = nullptr;
  const char* failure = nullptr;      // reported for the bad reply; "*" stands for any text
  const char* no_response = nullptr;  // reported for an empty reply; nullptr if that is a success
};

// Every HTTP network, in the order of the run list, then the second servers of four networks.
std::span<const network_row> http_networks();

// The simulated board's user name at MeteoNews.
inline constexpr char METEONEWS_USER[] = "00-1a-2b-3c-4d-5e";

}  // namespace skypost::sim
