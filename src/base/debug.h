#pragma once

#include <cstdint>
#include <string_view>

namespace skypost {

// 1 in debug mode, otherwise 0. Set once, by the command line.
extern std::int32_t debug_flag;

// printf to standard error, if the debug flag is set.
[[gnu::format(printf, 1, 2)]] void debug_print(const char* format, ...);

// Gets each reply of a network as it was received, before it is judged. The uploader has none.
using reply_hearer = void (*)(std::string_view reply);
extern reply_hearer reply_listener;

// Passes a reply on to the listener, if there is one.
void tell_reply(std::string_view reply);

}  // namespace skypost
