#include "sim/http_peers.h"

#include <httplib.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "compose/md5.h"

namespace skypost::sim {
namespace {

void make_certificate(const std::filesystem::path& certificate, const std::filesystem::path& key) {
  const std::string command =
      "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=localhost"
      " -keyout " +
      key.string() + " -out " + certificate.string() + " 2>/dev/null";
  if (std::system(command.c_str()) != 0) throw std::runtime_error("openssl could not make a certificate");
}

std::string field_of(const std::string& record, char separator, int number) {
  std::istringstream fields(record);
  std::string field;
  for (int i = 0; i < number; ++i) std::getline(fields, field, separator);
  return field;
}

std::string as_sent(const account_text& text) {
  if (!text.is_hashed) return text.value;
  md5_text digest;
  return std::string(md5_hex(text.value, digest).view());
}

// The first "=" ends the name, as in any form; cpp-httplib would split at the last.
std::string parameter(const httplib::Request& request, const std::string& name) {
  const std::size_t query = request.target.find('?');
  std::istringstream pairs(
      request.body.empty() && query != std::string::npos ? request.target.substr(query + 1) : request.body);
  for (std::string pair; std::getline(pairs, pair, '&');)
    if (pair.starts_with(name + '=')) return httplib::detail::decode_url(pair.substr(name.size() + 1), true);
  return {};
}

bool has_login(const network_row& network, const httplib::Request& request) {
  const char* const password = network.account[0].value;
  return request.get_header_value("Authorization") ==
         httplib::make_basic_authentication_header(METEONEWS_USER, password).second;
}

std::string fault_in_account(const network_row& network, const httplib::Request& request) {
  for (const account_text& text : network.account) {
    if (text.field == nullptr) continue;
    if (text.parameter == nullptr) {
      if (!has_login(network, request)) return "wrong user or password";
      continue;
    }
    std::string value = parameter(request, text.parameter);
    if (text.record_field != 0) value = field_of(value, network.record.separator, text.record_field);
    if (value != as_sent(text)) return std::string(text.parameter) + " arrived as " + value;
  }
  return {};
}

std::string fault_in_record(const record_shape& record, const httplib::Request& request) {
  if (record.parameter == nullptr) return {};
  const std::string value = parameter(request, record.parameter);
  const auto found = std::count(value.begin(), value.end(), record.separator);
  if (found == record.count) return {};
  return std::string("record ") + record.parameter + " with " + std::to_string(found) + " separators";
}

// The network's objection to a request; empty if it has none.
std::string fault_in(const network_row& network, const httplib::Request& request) {
  if (request.method != network.method) return "method " + request.method;
  if (request.path != network.path) return "path " + request.path;
  if (request.get_header_value("User-Agent") != "nimbulog") return "another program";
  std::istringstream parameters(network.parameters);
  for (std::string name; parameters >> name;)
    if (parameter(request, name).empty()) return "no parameter " + name;
  const std::string fault = fault_in_record(network.record, request);
  return fault.empty() ? fault_in_account(network, request) : fault;
}

}  // namespace

struct http_peers::peer {
  const network_row* network;
  std::unique_ptr<httplib::Server> server;
  int port = 0;
  reply_kind how = reply_kind::good;
  std::thread thread;
};

http_peers::http_peers(const std::filesystem::path& certificate) {
  std::filesystem::path key = certificate;
  key.replace_extension("key");
  make_certificate(certificate, key);
  for (const network_row& network : http_networks()) {
    auto one = std::make_unique<peer>();
    one->network = &network;
    if (network.which == server::secured)
      one->server = std::make_unique<httplib::SSLServer>(certificate.c_str(), key.c_str());
    else
      one->server = std::make_unique<httplib::Server>();
    start(*one);
    peers_.push_back(std::move(one));
  }
}

http_peers::~http_peers() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  released_.notify_all();
  for (const auto& one : peers_) one->server->stop();
  for (const auto& one : peers_) one->thread.join();
}

void http_peers::start(peer& one) {
  one.server->new_task_queue = [] { return new httplib::ThreadPool(2); };
  one.server->set_keep_alive_max_count(1);
  const auto handler = [this, &one](const httplib::Request& request, httplib::Response& response) {
    respond(one, request, response);
  };
  one.server->Get(".*", handler);
  one.server->Post(".*", handler);
  one.port = one.server->bind_to_any_port("127.0.0.1");
  if (one.port <= 0) throw std::runtime_error(std::string("no port for the peer of ") + one.network->name);
  one.thread = std::thread([&one] { one.server->listen_after_bind(); });
  while (!one.server->is_running()) std::this_thread::yield();
}

void http_peers::set_reply(reply_kind how) {
  const std::lock_guard lock(mutex_);
  for (const auto& one : peers_) one->how = how;
}

void http_peers::set_reply(const std::string& name, reply_kind how) {
  const std::lock_guard lock(mutex_);
  for (const auto& one : peers_)
    if (name == one->network->name) one->how = how;
}

std::string http_peers::endpoints(bool second_servers) const {
  std::string lines;
  for (const auto& one : peers_) {
    const network_row& network = *one->network;
    const std::string name = network.endpoint;
    const bool has_two = name == "meteonews" || name == "pwsweather";
    if (has_two && second_servers != (network.which == server::second)) continue;
    lines += name + (name == "meteonews" ? " = " : " = http://") + "127.0.0.1:" + std::to_string(one->port);
    if (network.success_text != nullptr) lines += std::string(network.path) + ' ' + network.success_text;
    lines += '\n';
  }
  return lines;
}

std::vector<request_seen> http_peers::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void http_peers::forget_requests() {
  const std::lock_guard lock(mutex_);
  requests_.clear();
}

void http_peers::respond(const peer& one, const httplib::Request& request, httplib::Response& response) {
  const network_row& network = *one.network;
  const bool wants_login = network.account[0].field != nullptr && network.account[0].parameter == nullptr;
  if (wants_login && !request.has_header("Authorization")) {
    response.status = 401;
    response.set_header("WWW-Authenticate", "Basic realm=\"stations\"");
    return;
  }

  std::unique_lock lock(mutex_);
  request_seen seen{&network, request.method + ' ' + request.target, fault_in(network, request), {}};
  if (!request.body.empty()) seen.request += '\n' + request.body;
  const reply_kind how = seen.fault.empty() ? one.how : reply_kind::bad;
  if (how == reply_kind::good) seen.reply = network.good;
  if (how == reply_kind::bad) {
    seen.reply = network.bad;
    response.status = network.bad_status;
  }
  response.set_content(seen.reply, "text/plain");
  requests_.push_back(std::move(seen));
  if (how == reply_kind::hang) released_.wait(lock, [this] { return stopping_; });
}

}  // namespace skypost::sim
