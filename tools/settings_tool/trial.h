#pragma once

#include <string>

#include "compose/upload.h"

// Makes one upload as a run does: with the same preparation and time limit, and except for the mail by the same function.
// The mail program is run without the logger, so that its output and exit status are known. A pull file is read back.
// Uses the process's settings, live record, endpoints and hardware address. Failures are not reported, and nothing is
// recorded.
namespace skypost {

enum class verdict { accepted, unclear, failed, ended_by_alarm };

// The texts contain no secrets.
struct trial_result {
  verdict outcome;
  int wget_status;     // NO_WGET_STATUS if there is none
  std::string reply;   // everything that the network replied, or the mail program printed, as received
  std::string reason;  // why the upload is unclear, or the start of the reason for a failure
};

trial_result try_upload(const upload& upload);

// Sends the request of an HTTP upload again and returns wget's messages, without secrets. Returns an empty text, and
// sends nothing, if the upload's own command does not silence wget.
std::string messages_of_wget(const upload& upload);

}  // namespace skypost
