#include "sim/smtp_sink.h"

namespace skypost::sim {
namespace {

std::string between_brackets(const std::string& line) {
  const std::size_t opening = line.find('<');
  const std::size_t closing = line.find('>', opening);
  return opening == std::string::npos ? line : line.substr(opening + 1, closing - opening - 1);
}

std::string read_message(connection& client) {
  std::string text;
  while (const auto line = client.read_line()) {
    if (*line == ".") break;
    text += (line->starts_with('.') ? line->substr(1) : *line) + '\n';
  }
  return text;
}

}  // namespace

smtp_sink::smtp_sink() : server_(0, "mail server", [this](connection& client) { talk(client); }) {}

std::vector<mail_seen> smtp_sink::mails() const {
  const std::lock_guard lock(mutex_);
  return mails_;
}

void smtp_sink::talk(connection& client) {
  mail_seen mail;
  client.write("220 localhost simulated mail server\r\n");
  while (const auto line = client.read_line()) {
    const std::string command = line->substr(0, 4);
    if (command == "QUIT") {
      client.write("221 bye\r\n");
      return;
    }
    if (command == "MAIL") mail.sender = between_brackets(*line);
    if (command == "RCPT") mail.recipient = between_brackets(*line);
    if (command != "DATA") {
      client.write("250 ok\r\n");
      continue;
    }
    client.write("354 go on\r\n");
    mail.text = read_message(client);
    client.write("250 taken\r\n");
    const std::lock_guard lock(mutex_);
    mails_.push_back(mail);
  }
}

}  // namespace skypost::sim
