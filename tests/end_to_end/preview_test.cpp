// The parts shown by the preview, put together again, must be what the real program sends at the same moment.

#include "preview/preview.h"

#include <httplib.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <set>
#include <sstream>

#include "base/paths.h"
#include "channels/channels.h"
#include "end_to_end/program.h"
#include "endpoints/endpoint_file.h"
#include "endpoints/endpoints.h"
#include "live/report_parser.h"
#include "networks/networks.h"
#include "run/run_list.h"
#include "sim/report.h"
#include "support/golden.h"

namespace skypost::testing {
namespace {

namespace fs = std::filesystem;
using pairs = std::vector<std::pair<std::string, std::string>>;

constexpr char HARDWARE_ADDRESS[] = "00:1A:2B:3C:4D:5E";  // the simulated board's

class preview_of_a_run : public program {
 protected:
  preview_of_a_run() {
    interpose("HASTE", "100");
    interpose("TIME", std::to_string(now));
    all.data->set_report(report);
  }
  ~preview_of_a_run() override {
    unsetenv("SKYPOST_ROOT");
    reset_endpoints();
  }

  std::vector<step_preview> steps(const char* platform) const {
    setenv("SKYPOST_ROOT", all.board.root().c_str(), 1);
    load_endpoints();
    station_settings = all.board.settings;
    load_live_record(report.c_str());
    return make_previews(
        {.source = {station_settings, live_record, moment_at(now), {platform, HARDWARE_ADDRESS}},
         .report = report.c_str(),
         .last_run_age = 9'999,
         .with_secrets = true},
        {});
  }

  std::time_t now = std::time(nullptr);
  std::string report = sim::lifelike_report(now);
};

// The parameters of a request, as decoded by another library.
pairs received(const std::string& request) {
  const std::size_t body = request.find('\n');
  const std::size_t query = request.find('?');
  std::istringstream text(body != std::string::npos ? request.substr(body + 1) : request.substr(query + 1));
  pairs result;
  for (std::string pair; std::getline(text, pair, '&');) {
    const std::size_t equals = pair.find('=');
    result.emplace_back(pair.substr(0, equals), httplib::detail::decode_url(pair.substr(equals + 1), true));
  }
  return result;
}

pairs shown(const step_preview& step) {
  pairs result;
  for (const request_parameter& parameter : step.request.parameters)
    result.emplace_back(parameter.name, parameter.value());
  return result;
}

void expect_request(const step_preview& step, const sim::request_seen& seen, const std::string& servers) {
  const std::string target = seen.request.substr(0, seen.request.find_first_of("?\n"));
  EXPECT_EQ(step.how + ' ' + (step.request.path.empty() ? "/" : step.request.path), target);
  EXPECT_EQ(shown(step), received(seen.request));
  // The server shown must be the endpoint file's entry for the server that got the request.
  const std::string server = step.request.server;
  const std::string line = std::string(seen.network->endpoint) + " = " + server;
  EXPECT_TRUE(servers.find(line + '\n') != std::string::npos ||
              servers.find(line + '/') != std::string::npos ||
              servers.find(" = " + server.substr(server.find("//") + 2) + '\n') != std::string::npos)
      << server;
}

// The mail program adds header lines and changes the line ends.
void expect_mail(const step_preview& step, const sim::mail_seen& seen) {
  std::string text = step.text;
  std::erase(text, '\r');
  const std::size_t body = text.find("\n\n");
  EXPECT_EQ(seen.text.substr(seen.text.find("\n\n")), text.substr(body));
  std::istringstream header(text.substr(0, body));
  for (std::string line; std::getline(header, line);)
    EXPECT_NE(('\n' + seen.text).find('\n' + line + '\n'), std::string::npos)
        << line << " not in " << seen.text;
  EXPECT_TRUE(step.where.at(0).starts_with(seen.recipient + ", through "));
}

TEST_F(preview_of_a_run, put_together_again_is_what_is_sent) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"X86", {"-d"}}, {"X86", {}}, {"NSLU2", {"-d"}}, {"NSLU2", {}}};
  for (const auto& [platform, arguments] : cases) {
    SCOPED_TRACE(platform);
    const bool on_nslu2 = std::string(platform) == "NSLU2";
    all.board.write(PROCESSOR_PATH, platform);
    all.write_endpoints(on_nslu2);
    all.board.write(LAST_RUN_PATH, "1");
    all.peers.forget_requests();
    EXPECT_EQ(run_well(arguments).errors.empty(), arguments.empty());
    const auto requests_seen = all.peers.requests();
    const std::string servers = all.peers.endpoints(on_nslu2);

    std::size_t request = 0;
    for (const step_preview& step : steps(platform)) {
      SCOPED_TRACE(step.id);
      EXPECT_TRUE(step.would_be_sent());
      if (step.how == "GET" || step.how == "POST") {
        ASSERT_LT(request, requests_seen.size());
        expect_request(step, requests_seen[request++], servers);
        if (step.id == METEONEWS.id) {
          EXPECT_EQ(step.request.login.at(0).value(), sim::METEONEWS_USER);
          EXPECT_EQ(step.request.login.at(1).value(), all.board.settings.text(meteonews_password));
        }
      } else if (step.how == "file") {
        for (const std::string& path : step.where)
          EXPECT_EQ(step.text, all.board.read(path.substr(all.board.root().string().size())));
      } else if (step.how == "mail") {
        expect_mail(step, all.mail.mails().back());
      } else {
        const sim::aprs_server& server = step.id == CWOP.id ? *all.cwop : *all.aprs;
        const sim::aprs_session_seen session = server.sessions().back();
        EXPECT_EQ(step.text, session.login + "\r\n" + session.packet + "\r\n");
        EXPECT_EQ(step.where.at(0), "127.0.0.1:" + std::to_string(server.port()));
      }
    }
    EXPECT_EQ(request, requests_seen.size());
  }
}

TEST_F(preview_of_a_run, sends_and_writes_nothing) {
  const auto files = [&] {
    return std::set<fs::directory_entry>(fs::recursive_directory_iterator(all.board.root()), {});
  };
  all.board.write("/trace", "");
  all.board.run_tool(PREVIEW_PROGRAM, {"--help"});  // creates the files for a tool's output
  const auto before = files();
  interpose("TRACE", all.board.path("/trace"));
  const sim::run_result run = all.board.run_tool(PREVIEW_PROGRAM, {"--html"});
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(replaced(all.board.read("/trace"), "recv\n", ""), "popen /sbin/ifconfig eth0 2>/dev/null\n");
  EXPECT_TRUE(files() == before);
  EXPECT_EQ(requests(), 0);
}

TEST_F(preview_of_a_run, warns_of_a_missing_hardware_address_and_leaves_an_odd_settings_file_alone) {
  all.board.write(sim::IFCONFIG_OUTPUT_PATH, "eth0: flags=4163<UP>  mtu 1500\n");
  all.board.write(SETTINGS_PATH, std::string(38'692, '\0'));
  sim::run_result run = all.board.run_tool(PREVIEW_PROGRAM, {"meteonews"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.errors, "");
  EXPECT_NE(run.output.find("\n  WARNING: eth0: ifconfig shows no hardware address after "),
            std::string::npos)
      << run.output;
  EXPECT_NE(run.output.find("its size of 38692 bytes matches no known layout"), std::string::npos);
  EXPECT_FALSE(fs::exists(all.board.path(SETTINGS_PATH + std::string(".old"))));

  // On a PLUG, a file of this size is a known layout.
  run = all.board.run_tool("/usr/bin/env", {"NIMBULOGHW=PLUG", PREVIEW_PROGRAM, "meteonews"});
  EXPECT_EQ(run.output.find("matches no known layout"), std::string::npos);
}

}  // namespace
}  // namespace skypost::testing
