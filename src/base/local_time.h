#pragma once

#include "base/moment.h"
#include "base/text.h"

// Date and time as most networks write them.
namespace skypost {

// The local date, "06.05.2012".
inline void append_local_date(text_buffer& text, const moment& now) {
  text.append("%02d.%02d.%04d", now.local.tm_mday, now.local.tm_mon + 1, now.local.tm_year + 1900);
}

// The local time, "07:08".
inline void append_local_clock(text_buffer& text, const moment& now) {
  text.append("%02d:%02d", now.local.tm_hour, now.local.tm_min);
}

}  // namespace skypost
