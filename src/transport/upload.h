#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>

#include "base/text.h"

namespace skypost {

inline constexpr std::size_t COMMAND_CAPACITY = 9'999;
using command_text = fixed_text<COMMAND_CAPACITY>;

inline constexpr std::size_t REPLY_CAPACITY = 10'000;
using reply_text = fixed_text<REPLY_CAPACITY>;

// What is done to the line breaks of a reply before it is searched.
enum class reply_mode {
  breaks_to_blanks,  // each line feed becomes a blank
  first_line,        // the reply ends before the first line feed
  raw,
};

struct upload_spec;

// Judges a reply as wget gave it. Returns 0, or -1 with the reason in `error_text`.
using reply_judge = int (*)(text_buffer& reply, const upload_spec& spec);

// What makes a reply a good one: a word that it must contain, or a judgement of the network's own.
struct judgement {
  consteval judgement(const char* word, reply_mode searched = reply_mode::raw)
      : success_word(word), mode(searched) {}
  consteval judgement(reply_judge of_network) : judge(of_network) {}

  const char* success_word = nullptr;
  reply_mode mode = reply_mode::raw;
  reply_judge judge = nullptr;  // if set, there is no word
};

// Judges an empty reply: leaves the network's text for it in `error_text` and returns -1.
int fail_without_response(const upload_spec& spec);

// How a network's reply is judged, and the texts that go with it. Each pattern has one "%s".
struct upload_spec {
  const char* debug_header;  // with the command; WeatherFlow's has no "%s" and shows none
  judgement success;
  const char* failure_format;    // with the reply, or the part of it that was judged
  const char* no_response_text;  // for an empty reply

  // Judges an empty reply. Returns 0, or -1 with the reason in `error_text`.
  int (*judge_empty)(const upload_spec& spec) = fail_without_response;
  bool pipe_reason_first = false;  // the failed-pipe text names the system's reason, then the command
};

// Reads `stream` to its end, or to the reply's capacity, and returns how many bytes came. The reply is
// a text: it ends at its first NUL.
std::size_t read_reply(text_buffer& reply, std::FILE* stream);

// Removes every CR and LF from `text` and returns it.
text_buffer& strip_line_breaks(text_buffer& text);

// Runs `command` and judges what it prints. Returns 0, or -1 with the reason in `error_text`. A
// command that did not fit its buffer is not run.
int upload_via_wget(const text_buffer& command, const upload_spec& spec);

// Judges what wget printed: `count` bytes, of which `reply` holds the text. Returns 0, or -1 with the reason in
// `error_text`.
int judge_upload(text_buffer& reply, std::size_t count, const upload_spec& spec);

// The pieces that judgements are made of. The first writes `error_text` and returns -1.
int fail_with_reply(const upload_spec& spec, std::string_view reply);
void print_reply(std::string_view reply);  // in debug mode, without line breaks

// What is between "<body>" and the first "</body>" after it, or the end of the reply; nothing when there is no
// "<body>".
std::optional<std::string_view> html_body(const text_buffer& reply);

}  // namespace skypost
