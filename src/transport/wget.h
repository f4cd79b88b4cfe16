#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

#include "base/text.h"

namespace skypost {

inline constexpr std::size_t REPLY_CAPACITY = 10'000;
using reply_text = fixed_text<REPLY_CAPACITY>;

// How the line feeds of a reply are treated before it is searched.
enum class reply_mode {
  breaks_to_blanks,  // each line feed becomes a blank
  first_line,        // the reply ends before the first line feed
  raw,
};

struct upload_spec;

// Judges wget's output. Returns 0, or -1 with the reason in `error_text`.
using reply_judge = int (*)(text_buffer& reply, const upload_spec& spec);

// How a good reply is recognised: by a word, or by the network's own function.
struct judgement {
  consteval judgement(const char* word, reply_mode searched = reply_mode::raw)
      : success_word(word), mode(searched) {}
  consteval judgement(reply_judge of_network) : judge(of_network) {}

  const char* success_word = nullptr;
  reply_mode mode = reply_mode::raw;
  reply_judge judge = nullptr;  // used instead of the word, if set
};

// Sets error_text to no_response_text and returns -1.
int fail_without_response(const upload_spec& spec);

// How a network's reply is judged, and the texts that go with it.
struct upload_spec {
  const char* debug_header;  // %s is the command; WeatherFlow's has none
  judgement success;
  const char* failure_format;    // %s is the reply, or the part of it that was judged
  const char* no_response_text;  // for an empty reply

  // Judges an empty reply. Returns 0, or -1 with the reason in `error_text`.
  int (*judge_empty)(const upload_spec& spec) = fail_without_response;
  const char* pipe_failure_format =
      "error open pipe %1$s: %2$s";  // the command, then the system's error text
  bool status_0_is_success = false;  // regardless of the reply, even if it is empty
  bool is_pipeline = false;  // the command pipes wget into another program, whose exit status it returns
};

// Reads `stream` to its end, or to the reply's capacity, and returns the number of bytes read. The text is truncated at
// its first NUL.
std::size_t read_reply(text_buffer& reply, std::FILE* stream);

// Removes every CR and LF and returns `text`.
text_buffer& strip_line_breaks(text_buffer& text);

// Runs `command` and judges its output; a truncated command is not run. `success_text` is the owner's, empty for none.
// Records the outcome in latest_exchange, which the caller has reset. Returns 0, or -1 with the reason in `error_text`.
int upload_via_wget(const text_buffer& command, const upload_spec& spec, std::string_view success_text = {});

// Judges the reply to a command that printed `count` bytes and in which wget had the exit status `wget_status`. Returns
// 0, or -1 with the reason in `error_text`. The owner's success text, anywhere in the reply, is accepted like the
// network's own; so is a wget_status of 0 if `spec` says so.
int judge_upload(text_buffer& reply, std::size_t count, const upload_spec& spec, int wget_status,
                 std::string_view success_text = {});

// Sets error_text to the failure text, quoting `reply` without line breaks. Returns -1.
int fail_with_reply(const upload_spec& spec, std::string_view reply);

// In debug mode, prints the reply without line breaks.
void print_reply(std::string_view reply);

// The text from "<body>" to "</body>" or the end; nothing without "<body>".
std::optional<std::string_view> html_body(const text_buffer& reply);

}  // namespace skypost
