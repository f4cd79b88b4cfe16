#pragma once

#include <string_view>

namespace skypost {

// Called with each network reply as received, before it is judged. Only the owner's tools install one.
using reply_hearer = void (*)(std::string_view reply);
extern reply_hearer reply_listener;

// Calls the listener, if there is one.
void tell_reply(std::string_view reply);

}  // namespace skypost
