#include "compose/value.h"

namespace skypost {

void append_value(text_buffer& text, std::int32_t value, const value_form& form) {
  const double converted = form.convert(value);
  if (form.decimals == 0)
    text.append("%lld", to_nearest(converted));
  else
    text.append("%.*f", form.decimals, converted);
}

void append_or(text_buffer& text, const char* filler, std::int32_t value, const value_form& form) {
  if (known(value))
    append_value(text, value, form);
  else
    text.append_text(filler);
}

}  // namespace skypost
