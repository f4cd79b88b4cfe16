#include "tools/owners_station.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <iomanip>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "base/paths.h"
#include "common/field_descriptions.h"
#include "endpoints/endpoints.h"
#include "run/run_list.h"
#include "settings/byte_order.h"
#include "sim/report.h"
#include "support/golden.h"
#include "support/pattern.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;

const field_description& field(const std::string& name) {
  for (const field_description& row : FIELD_DESCRIPTIONS)
    if (name == row.name) return row;
  throw std::invalid_argument("no setting " + name);
}

}  // namespace

owners_station::owners_station()
    : report(sim::lifelike_report(spring_morning().seconds)),
      endpoints_(local_servers() + "aprs_path = TCPIP*\n") {
  for (const char* const name : {"http_proxy", "https_proxy"}) unsetenv(name);
  change("platform X86");
  switch_everything_on(settings);
  save();
  folder.write(ENDPOINTS_PATH, endpoints_);
  folder.write("/report", report);
  for (const char* const directory : PULL_DIRECTORIES) change(std::string("folder ") + directory);
  for (const char* const path : {ALARM_SCRIPT_PATH, MAIL_PROGRAM_PATH, "/usr/bin/wget"})
    change(std::string("program ") + path + " #!/bin/sh\\necho 'GNU Wget 1.21.3 -cares +https +ipv6'\\n");
  folder.write(MAIL_CONFIGURATION_PATH, "hostname = 127.0.0.1:25\n");
  folder.write("/etc/ssl/certs/ca.pem", "-----BEGIN CERTIFICATE-----\n");
}

owners_station::~owners_station() {
  reset_endpoints();
  station_settings = settings_record{};
  for (const char* const name : {"NIMBULOGHW", "http_proxy", "https_proxy"}) unsetenv(name);
}

void owners_station::change(const std::string& line) {
  std::istringstream words(line);
  std::string verb;
  std::string first;
  std::string rest;
  words >> verb >> first >> std::ws;
  std::getline(words, rest, '\0');
  const std::string path = first.starts_with('/') ? folder.path(first).string() : "";
  if (verb == "set") {
    const std::string assignment = without_escapes(line.substr(4));
    const std::size_t equals = assignment.find('=');
    const field_description& row = field(assignment.substr(0, equals));
    const std::string value = assignment.substr(equals + 1);
    if (row.field.is_text())
      settings.set_text(row.as_text(), value);
    else
      settings.set_integer(row.as_integer(), std::stoi(value));
  } else if (verb == "only") {
    for (const run_step& step : run_list()) settings.set_integer(*step.enabled, 0);
    std::istringstream names(first + ' ' + rest);
    for (std::string name; names >> name;) settings.set_integer(field(name + "_enabled").as_integer(), 1);
  } else if (verb == "endpoint") {
    folder.write(ENDPOINTS_PATH, endpoints_ += line.substr(9) + '\n');
  } else if (verb == "first-endpoint") {
    folder.write(ENDPOINTS_PATH, endpoints_ = line.substr(15) + '\n' + endpoints_);
  } else if (verb == "platform") {
    platform = first;
    setenv("NIMBULOGHW", first.c_str(), 1);
  } else if (verb == "hardware-address") {
    hardware_address = first;
  } else if (verb == "report") {
    report = with_matches_as(report, first + " [^\n]*\n", "");
    if (!rest.empty()) report += first + ' ' + without_escapes(rest) + '\n';
    folder.write("/report", report);
  } else if (verb == "report-file") {
    folder.write("/report", report = without_escapes(line.substr(12)));
  } else if (verb == "write" || verb == "program") {
    folder.write(first, without_escapes(rest));
    if (verb == "program") fs::permissions(path, fs::perms::owner_all);
  } else if (verb == "folder") {
    fs::create_directories(path);
  } else if (verb == "remove") {
    fs::remove_all(path);
  } else if (verb == "mode") {
    chmod(folder.path(rest).c_str(), static_cast<mode_t>(std::stoi(first, nullptr, 8)));
  } else if (verb == "environment") {
    setenv(first.c_str(), rest.c_str(), 1);
  } else if (verb == "foreign") {
    convert_byte_order(settings);
  } else if (verb == "size") {
    size_ = std::stoul(first);
  } else if (verb == "gap-missing") {
    is_gap_missing_ = true;
  } else {
    throw std::invalid_argument("no verb " + verb);
  }
  if (verb == "set" || verb == "only" || verb == "foreign" || verb == "size" || verb == "gap-missing") save();
}

void owners_station::save() const {
  std::string bytes(reinterpret_cast<const char*>(settings.bytes), SETTINGS_SIZE);
  bytes.resize(size_, 'x');
  if (is_gap_missing_) bytes = bytes.substr(0, 20'580) + bytes.substr(20'584) + std::string(100, 'x');
  folder.write(SETTINGS_PATH, bytes);
  chmod(file.c_str(), 0600);
}

std::string owners_station::run(const tool& program, const std::string& line) {
  const std::string root = folder.root();
  words arguments;
  std::istringstream text(line);
  for (std::string word; text >> std::quoted(word, '\'', '\1');)
    arguments.push_back(with_matches_as(without_escapes(word), "^(--[a-z]+=|)/", "$1" + root + "/"));
  const auto content = [&] { return fs::is_regular_file(file) ? folder.read(SETTINGS_PATH) : ""; };
  const std::string before = content();
  std::ostringstream out;
  const int status = run_tool(program, arguments, out, out);
  EXPECT_TRUE(status == 0 || content() == before) << line;
  EXPECT_FALSE(fs::exists(file + ".old")) << line;
  return without_root(out.str()) + (status == 0 ? "" : "-> " + std::to_string(status) + '\n');
}

std::string owners_station::without_root(std::string text) const {
  return replaced(replaced(std::move(text), fs::canonical(folder.root()), ""), folder.root(), "");
}

void expect_tool_session(const std::string& name, const tool& program) {
  std::optional<owners_station> station;
  expect_session(name, [&](const std::string& line) {
    if (line.starts_with('$')) return station->run(program, line.substr(1));
    if (line.starts_with('#'))
      station.emplace();
    else
      station->change(line.substr(2));
    return std::string();
  });
}

}  // namespace skypost::testing
