#include "transport/reply_listener.h"

namespace skypost {

constinit reply_hearer reply_listener = nullptr;

void tell_reply(std::string_view reply) {
  if (reply_listener != nullptr) reply_listener(reply);
}

}  // namespace skypost
