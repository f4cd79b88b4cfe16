#include "compose/value.h"

namespace skypost {

void append_value(text_buffer& text, std::int32_t value, const value_format& format) {
  const double converted = format.convert(value);
  if (format.decimals == 0)
    text.append("%lld", to_nearest(converted));
  else
    text.append("%.*f", format.decimals, converted);
}

void append_or(text_buffer& text, const char* filler, std::int32_t value, const value_format& format) {
  if (known(value))
    append_value(text, value, format);
  else
    text.append_text(filler);
}

}  // namespace skypost
