#include "preview/field_sources.h"

#include <algorithm>

#include "common/composing.h"
#include "common/report_values.h"
#include "settings/field_descriptions.h"

namespace skypost {
namespace {

using parameters = std::vector<request_parameter>;

constexpr char CLOCK[] = "the clock";

// Two contents for each value, so far apart that they differ in every format; the times differ in each of their parts.
struct content {
  std::int32_t number;
  const char* text;
  std::time_t time;
};
constexpr content ONE = {1'000, "x", 0};
constexpr content OTHER = {2'000, "y", 39'960'400};

// A station with the one content everywhere, of which one value at a time can be changed.
struct probe {
  explicit probe(const station& source)
      : settings(source.settings), host(source.host), now(moment_at(ONE.time)) {
    for (const live_row& row : LIVE_TABLE) fill(row, live, ONE.number, ONE.text);
  }

  parameters sent(const outgoing& upload) const {
    return take_apart(text_of(upload, {settings, live, now, host})).parameters;
  }

  settings_record settings;
  LiveRecord live{};
  board host;
  moment now;
};

// Adds `source` to the fields of `shown` in which the two requests differ.
void add_where_different(parameters& shown, const parameters& one, const parameters& other,
                         const std::string& source) {
  for (std::size_t i = 0; i < std::min({shown.size(), one.size(), other.size()}); ++i) {
    const std::size_t count = shown[i].fields.size();
    // A text that holds the separator would shift the fields after it.
    if (!shown[i].is_record() || one[i].fields.size() != count || other[i].fields.size() != count) continue;
    shown[i].sources.resize(count);
    for (std::size_t field = 0; field < count; ++field) {
      std::string& named = shown[i].sources[field];
      if (one[i].fields[field] != other[i].fields[field]) named += (named.empty() ? "" : ", ") + source;
    }
  }
}

}  // namespace

void name_sources(request_parts& shown, const outgoing& upload, const station& source) {
  if (std::none_of(shown.parameters.begin(), shown.parameters.end(),
                   [](const request_parameter& parameter) { return parameter.is_record(); }))
    return;
  const probe one(source);
  const parameters plain = one.sent(upload);
  for (const live_row& row : LIVE_TABLE) {
    probe other = one;
    fill(row, other.live, OTHER.number, OTHER.text);
    add_where_different(shown.parameters, plain, other.sent(upload), source_of(row));
  }
  for (const field_description& row : FIELD_DESCRIPTIONS) {
    if (!row.field.is_text()) continue;
    probe with_one = one;
    probe with_other = one;
    with_one.settings.set_text(row.as_text(), ONE.text);
    with_other.settings.set_text(row.as_text(), OTHER.text);
    add_where_different(shown.parameters, with_one.sent(upload), with_other.sent(upload), row.name);
  }
  probe later = one;
  later.now = moment_at(OTHER.time);
  add_where_different(shown.parameters, plain, later.sent(upload), CLOCK);
}

}  // namespace skypost
