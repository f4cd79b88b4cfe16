#pragma once

#include <string>

#include "compose/upload.h"

// One upload as a run makes it: by the same function, prepared in the same way, under the same limit. The process's
// settings, live record, endpoints and hardware address are used. Nothing is reported and nothing is recorded.
namespace skypost {

enum class verdict { accepted, failed, ended_by_alarm };

// Texts are without secrets.
struct trial_result {
  verdict outcome;
  int wget_status;     // NO_WGET_STATUS if there is none
  std::string reply;   // all that the network said, as received
  std::string reason;  // of a failure, its beginning
};

trial_result try_upload(const upload& upload);

// Sends the request of an HTTP upload once more, and returns what wget says of it, without secrets. Empty if wget was
// not silent before, so that this is known already.
std::string messages_of_wget(const upload& upload);

}  // namespace skypost
