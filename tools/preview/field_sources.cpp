#include "preview/field_sources.h"

#include <algorithm>

#include "common/composing.h"
#include "common/field_descriptions.h"
#include "common/report_values.h"

namespace skypost {
namespace {

using parameters = std::vector<request_parameter>;

constexpr char CLOCK[] = "the clock";

// Two contents for each value, far enough apart to differ in every format. The times differ in each of their parts.
struct content {
  std::int32_t number;
  const char* text;
  std::time_t time;
};
constexpr content ONE = {1'000, "x", 0};
constexpr content OTHER = {2'000, "y", 39'960'400};

void add_where_different(parameters& shown, const parameters& one, const parameters& other,
                         const std::string& source) {
  for (std::size_t i = 0; i < std::min({shown.size(), one.size(), other.size()}); ++i) {
    const std::size_t count = shown[i].fields.size();
    // A text that contains the separator shifts the fields after it.
    if (!shown[i].is_record() || one[i].fields.size() != count || other[i].fields.size() != count) continue;
    shown[i].sources.resize(count);
    for (std::size_t field = 0; field < count; ++field) {
      std::string& named = shown[i].sources[field];
      if (one[i].fields[field] != other[i].fields[field]) named += (named.empty() ? "" : ", ") + source;
    }
  }
}

}  // namespace

void name_sources(request_parts& shown, const upload& upload, const station& source) {
  if (std::none_of(shown.parameters.begin(), shown.parameters.end(),
                   [](const request_parameter& parameter) { return parameter.is_record(); }))
    return;
  const auto sent = [&](const settings_record& settings, const LiveRecord& live, const content& filling) {
    return take_apart(text_of(upload, {settings, live, moment_at(filling.time), source.host})).parameters;
  };
  LiveRecord live{};
  for (const live_row& row : LIVE_TABLE) fill(row, live, ONE.number, ONE.text);
  const parameters plain = sent(source.settings, live, ONE);
  for (const live_row& row : LIVE_TABLE) {
    LiveRecord other = live;
    fill(row, other, OTHER.number, OTHER.text);
    add_where_different(shown.parameters, plain, sent(source.settings, other, ONE), source_of(row));
  }
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_text()) continue;
    settings_record one = source.settings;
    settings_record other = source.settings;
    one.set_text(row.as_text(), ONE.text);
    other.set_text(row.as_text(), OTHER.text);
    add_where_different(shown.parameters, sent(one, live, ONE), sent(other, live, ONE), row.name);
  }
  add_where_different(shown.parameters, plain, sent(source.settings, live, OTHER), CLOCK);
}

}  // namespace skypost
