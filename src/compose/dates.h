#pragma once

#include "base/text.h"
#include "live/station.h"

// The local date and time, as most networks take them.
namespace skypost {

// "06.05.2012"
inline void append_local_date(text_buffer& text, const station& source) {
  const std::tm& local = source.now.local;
  text.append("%02d.%02d.%04d", local.tm_mday, local.tm_mon + 1, local.tm_year + 1900);
}

// "07:08"
inline void append_local_clock(text_buffer& text, const station& source) {
  text.append("%02d:%02d", source.now.local.tm_hour, source.now.local.tm_min);
}

}  // namespace skypost
