#include "transport/wget.h"

#include <sys/wait.h>

#include <cerrno>
#include <cstring>

#include "base/debug.h"
#include "base/error_text.h"
#include "base/shell.h"
#include "transport/reply_listener.h"

namespace skypost {
namespace {

void set_pipe_failure(const text_buffer& command, const upload_spec& spec, const char* reason) {
  error_text.clear();
  latest_exchange.is_command_quoted = true;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"  // each is a constant of this program, with two strings
  error_text.append(spec.pipe_failure_format, command.c_str(), reason);
#pragma GCC diagnostic pop
}

void print_header(const text_buffer& command, const upload_spec& spec) {
  if (debug_flag == 0) return;
  fixed_text<COMMAND_CAPACITY + 100> header;
  header.append_pattern(spec.debug_header, command.view());
  debug_print("%s", header.c_str());
}

// wget's exit status, from that of the command and the number of bytes read. If the reply filled the buffer, wget may
// have failed only because its pipe was closed early.
int status_of_wget(int status, std::size_t count, const upload_spec& spec) {
  if (spec.is_pipeline || count == REPLY_CAPACITY || !WIFEXITED(status)) return NO_WGET_STATUS;
  return WEXITSTATUS(status);
}

// How most networks are judged.
int find_success_word(text_buffer& reply, const upload_spec& spec) {
  if (spec.success.mode == reply_mode::breaks_to_blanks) reply.replace_all('\n', ' ');
  if (spec.success.mode == reply_mode::first_line) reply.cut_at('\n');
  print_reply(reply.view());
  if (std::strstr(reply.c_str(), spec.success.success_word) != nullptr) return 0;
  return fail_with_reply(spec, reply.view());
}

int judge_as_network(text_buffer& reply, std::size_t count, const upload_spec& spec) {
  if (count == 0) return spec.judge_empty(spec);
  if (spec.success.judge != nullptr) return spec.success.judge(reply, spec);
  return find_success_word(reply, spec);
}

}  // namespace

std::size_t read_reply(text_buffer& reply, std::FILE* stream) {
  const std::size_t count = std::fread(reply.storage(), 1, reply.capacity(), stream);
  reply.set_length(count);
  reply.set_length(std::strlen(reply.c_str()));
  return count;
}

text_buffer& strip_line_breaks(text_buffer& text) {
  text.remove_all('\r');
  text.remove_all('\n');
  return text;
}

int upload_via_wget(const text_buffer& command, const upload_spec& spec, std::string_view success_text) {
  if (command.was_cut()) {
    error_text.clear();
    latest_exchange.is_command_quoted = true;
    error_text.append("command longer than %zu characters, not run: %s", command.capacity(), command.c_str());
    return -1;
  }
  print_header(command, spec);
  std::FILE* const pipe = popen(command.c_str(), "re");
  if (pipe == nullptr) {
    set_pipe_failure(command, spec, std::strerror(errno));
    return -1;
  }
  reply_text reply;
  const std::size_t count = read_reply(reply, pipe);
  tell_reply(reply.view());
  const int end = pclose(pipe);
  latest_exchange.wget_status = status_of_wget(end, count, spec);
  const int result = judge_upload(reply, count, spec, latest_exchange.wget_status, success_text);
  const bool was_killed = WIFSIGNALED(end) && count < REPLY_CAPACITY;
  if (result == 0 && was_killed)
    doubt_upload("wget was killed; counts as good all the same");
  else if (result == 0 && latest_exchange.wget_status > 0)
    doubt_upload("counts as good all the same");
  return result;
}

int judge_upload(text_buffer& reply, std::size_t count, const upload_spec& spec, int wget_status,
                 std::string_view success_text) {
  // Tested before the network's own judgement, which may truncate the reply.
  const bool has_success_text =
      !success_text.empty() && reply.view().find(success_text) != std::string_view::npos;
  const bool is_good_anyway = has_success_text || (spec.status_0_is_success && wget_status == 0);
  const int result = judge_as_network(reply, count, spec);
  if (result == 0 || !is_good_anyway) return result;
  error_text.clear();
  return 0;
}

int fail_without_response(const upload_spec& spec) {
  error_text.clear();
  error_text.append_text(spec.no_response_text);
  return -1;
}

int fail_with_reply(const upload_spec& spec, std::string_view reply) {
  reply_text line;
  line.append_text(reply);
  error_text.clear();
  error_text.append_pattern(spec.failure_format, strip_line_breaks(line).view());
  return -1;
}

void print_reply(std::string_view reply) {
  if (debug_flag == 0) return;
  reply_text line;
  line.append_text(reply);
  debug_print("Reply: %s\n", strip_line_breaks(line).c_str());
}

std::optional<std::string_view> html_body(const text_buffer& reply) {
  constexpr std::string_view OPENING = "<body>";
  const std::size_t opening = reply.view().find(OPENING);
  if (opening == std::string_view::npos) return std::nullopt;
  const std::string_view body = tail_of(reply.view(), opening + OPENING.size());
  return head_of(body, body.find("</body>"));
}

}  // namespace skypost
