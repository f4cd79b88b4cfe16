// Idokep (Hungary) and Wetterarchiv (Germany). A GET request with user, password, and one parameter per known
// value, named in the network's language: °C, %, hPa, m/s, mm.

#include "compose/command.h"
#include "compose/parameters.h"
#include "compose/software.h"
#include "networks/networks.h"

namespace skypost {
namespace {

constexpr std::int32_t IDOKEP_PRO_SERVICE = 2;  // a value of idokep_enabled

constexpr parameter IDOKEP_PARAMETERS[] = {
    // clang-format off
    {"&p=",         &LiveRecord::sealevel10,         TENTHS},
    {"&hom=",       &LiveRecord::temp10,             TENTHS},
    {"&rh=",        &LiveRecord::hum,                WHOLE},
    {"&szelero=",   &LiveRecord::wind10,             TENTHS},
    {"&szelirany=", &LiveRecord::winddir,            WHOLE},
    {"&csap1h=",    &LiveRecord::last60mraintotal10, TENTHS},
    {"&csap=",      &LiveRecord::todayraintotal10,   TENTHS},
    {"&szellokes=", &LiveRecord::gust10,             TENTHS},
    {"&uv=",        &LiveRecord::uv10,               TENTHS},
    // clang-format on
};

// Rain is sent with the period it covers, in minutes.
constexpr parameter WETTERARCHIV_PARAMETERS[] = {
    // clang-format off
    {"&windrichtung=",       &LiveRecord::winddir,            WHOLE},
    {"&windstaerke=",        &LiveRecord::gust10,             TENTHS},
    {"&feuchtigkeit=",       &LiveRecord::hum,                WHOLE},
    {"&temperatur=",         &LiveRecord::temp10,             TENTHS},
    {"&niederschlagsmenge=", &LiveRecord::last60mraintotal10, TENTHS, "&niederschlagsmenge_zeit=60"},
    {"&luftdruck=",          &LiveRecord::sealevel10,         TENTHS},
    // clang-format on
};

void compose_idokep(text_buffer& command, const station& source) {
  begin_get(command, idokep_service(source.settings).reply.server, "/sendws.php");
  append_parameter(command, "user=", source.settings.text(idokep_user));
  append_parameter(command, "&pass=", source.settings.text(idokep_password));
  command.append("&tipus=NB%d", STATION_TYPE);
  append_known(command, source.live, IDOKEP_PARAMETERS);
  end_get(command);
}

void compose_wetterarchiv(text_buffer& command, const station& source) {
  begin_get(command, endpoint::wetterarchiv, "/interface/http/input.php");
  append_parameter(command, "benutzername=", source.settings.text(wetterarchiv_user));
  append_parameter(command, "&passwort=", source.settings.text(wetterarchiv_password));
  const std::tm& local = source.now.local;
  command.append("&datum=%04d%02d%02d%02d%02d&version=NB%d", local.tm_year + 1900, local.tm_mon + 1,
                 local.tm_mday, local.tm_hour, local.tm_min, STATION_TYPE);
  append_known(command, source.live, WETTERARCHIV_PARAMETERS);
  end_get(command);
}

// Idokep has two words for success; the second is "kész!" in ISO 8859-2.
int judge_idokep(text_buffer& reply, const upload_spec& spec) {
  print_reply(reply.view());
  for (const std::string_view word : {"Feltoltes sikeres", "k\xE9sz!"})
    if (reply.view().find(word) != std::string_view::npos) return 0;
  return fail_with_reply(spec, reply.view());
}

consteval upload_spec idokep_reply(endpoint server) {
  return {.server = server,
          .debug_header = "\nIDOKEP (PUSH)\n%s\n",
          .success = judge_idokep,
          .failure_format = "upload to idokep: %s",
          .no_response_text = "no response from idokep"};
}

constinit const http_network IDOKEP_PRO = {"idokep", compose_idokep, upload_idokep,
                                           idokep_reply(endpoint::idokep_pro)};

}  // namespace

constinit const http_network IDOKEP = {"idokep", compose_idokep, upload_idokep,
                                       idokep_reply(endpoint::idokep)};

constinit const http_network WETTERARCHIV = {"wetterarchiv",
                                             compose_wetterarchiv,
                                             upload_wetterarchiv,
                                             {.server = endpoint::wetterarchiv,
                                              .debug_header = "\nWETTERARCHIV\n%s\n",
                                              .success = "status=SUCCESS",
                                              .failure_format = "upload to wetterarchiv failed: %s",
                                              .no_response_text = "no response from wetterarchiv"}};

const http_network& idokep_service(const settings_record& settings) {
  return settings.integer(idokep_enabled) == IDOKEP_PRO_SERVICE ? IDOKEP_PRO : IDOKEP;
}

int upload_idokep() { return upload_to(idokep_service(station_settings)); }

int upload_wetterarchiv() { return upload_to(WETTERARCHIV); }

}  // namespace skypost
