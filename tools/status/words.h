#pragma once

#include "status/judgement.h"

// What the table, the one line, a single network and the news have in common. All append to `text`, and only printable
// ASCII.
namespace skypost {

inline constexpr std::size_t LONGEST_REASON = 400;

// Replaces what is no printable ASCII by "?": neither a server's text nor one in the history may command the terminal.
void make_printable(text_buffer& text);

// "2026-11-25 09:15:21", local; "?" for what is no time.
void append_time(text_buffer& text, std::int64_t milliseconds);

// "3 hours ago"
void append_age(text_buffer& text, std::int64_t seconds);

// How the last run went, as "it timed out in windfinder". Nothing if there was none, or if it is going on.
void append_run_end(text_buffer& text, const judged_status& judged);

// The state of an upload, as "no turn".
const char* state_name(upload_state state);

// Why an upload is not good, at most LONGEST_REASON characters: what wget's exit status means, and the reason that the
// alarm script gets. Passwords of the settings are hidden. Nothing if there is nothing to say.
void append_reason(text_buffer& text, const judged_status& judged, std::size_t place,
                   const settings_record& settings);

}  // namespace skypost
