#include "status/brief.h"

#include "status/words.h"

namespace skypost {
namespace {

void append_wrong_run(text_buffer& text, const judged_status& judged, const tolerance& tolerated) {
  if (judged.run == run_state::never_begun) {
    text.append_text("no run yet; ");
    return;
  }
  if (has_run_failed(judged)) {
    text.append_text("last run: ");
    append_run_end(text, judged);
    text.append_text("; ");
  } else if (judged.run == run_state::going_on && judged.records[RUN_RECORD].failures > 0) {
    text.append_text("the run before failed; ");
  }
  if (judged.is_run_in_future) text.append_text("the last run is in the future; ");
  if (judged.seconds_since_run <= tolerated.seconds_since_run) return;
  text.append_text("the last run was ");
  append_age(text, judged.seconds_since_run);
  text.append_text("; ");
}

// As "windfinder (3 in a row, login refused)".
void print_wrong_upload(std::FILE* out, const judged_status& judged, std::size_t place,
                        const settings_record& settings) {
  std::fprintf(out, "%s (", RECORD_NAMES[place]);
  const std::uint32_t failures = failures_in_row(judged, place);
  if (failures > 0)
    std::fprintf(out, "%u in a row", failures);
  else
    std::fputs(state_name(judged.uploads[place]), out);
  fixed_text<LONGEST_REASON> reason;
  append_reason(reason, judged, place, settings);
  std::fprintf(out, "%s%s)", reason.empty() ? "" : ", ", reason.c_str());
}

}  // namespace

void print_brief(std::FILE* out, const judged_status& judged, const settings_record& settings,
                 const tolerance& tolerated) {
  fixed_text<LONGEST_REASON> run;
  append_wrong_run(run, judged, tolerated);
  std::fputs(run.c_str(), out);

  unsigned listed = 0, wrong = 0;
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) {
    listed += judged.uploads[i] == upload_state::not_listed ? 0 : 1;
    wrong += is_upload_wrong(judged, i, tolerated) ? 1 : 0;
  }
  if (listed == 0) {
    std::fputs("nothing is switched on\n", out);
    return;
  }
  std::fprintf(out, "%u of %u networks fail%s", wrong, listed, wrong == 1 ? "s" : "");
  const char* separator = ": ";
  for (std::size_t i = 0; i < STATUS_RECORDS; ++i) {
    if (!is_upload_wrong(judged, i, tolerated)) continue;
    std::fputs(separator, out);
    print_wrong_upload(out, judged, i, settings);
    separator = ", ";
  }
  std::fputc('\n', out);
}

}  // namespace skypost
