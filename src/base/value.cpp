#include "base/value.h"

namespace skypost {

void append_value(text_buffer& text, std::int32_t value, const value_form& form) {
  const double converted = form.convert(value);
  if (form.decimals == 0)
    text.append("%lld", to_nearest(converted));
  else
    text.append("%.*f", form.decimals, converted);
}

void append_known(text_buffer& text, const char* key, std::int32_t value, const value_form& form,
                  const char* end) {
  if (!known(value)) return;
  text.append_text(key);
  append_value(text, value, form);
  text.append_text(end);
}

void append_or(text_buffer& text, const char* missing, std::int32_t value, const value_form& form) {
  if (known(value))
    append_value(text, value, form);
  else
    text.append_text(missing);
}

}  // namespace skypost
