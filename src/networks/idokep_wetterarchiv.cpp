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

void append_idokep(text_buffer& query, const station& source) {
  append_parameter(query, "user=", source.settings.text(idokep_user));
  append_parameter(query, "&pass=", source.settings.text(idokep_password));
  query.append("&tipus=NB%d", STATION_TYPE);
  append_known(query, source.live, IDOKEP_PARAMETERS);
}

void append_wetterarchiv(text_buffer& query, const station& source) {
  append_parameter(query, "benutzername=", source.settings.text(wetterarchiv_user));
  append_parameter(query, "&passwort=", source.settings.text(wetterarchiv_password));
  const std::tm& local = source.now.local;
  query.append("&datum=%04d%02d%02d%02d%02d&version=NB%d", local.tm_year + 1900, local.tm_mon + 1,
               local.tm_mday, local.tm_hour, local.tm_min, STATION_TYPE);
  append_known(query, source.live, WETTERARCHIV_PARAMETERS);
}

// Idokep has two words for success; the second is "kész!" in ISO 8859-2.
int judge_idokep(text_buffer& reply, const upload_spec& spec) {
  print_reply(reply.view());
  for (const std::string_view word : {"Feltoltes sikeres", "k\xE9sz!"})
    if (reply.view().find(word) != std::string_view::npos) return 0;
  return fail_with_reply(spec, reply.view());
}

endpoint idokep_service(const settings_record& settings) {
  return settings.integer(idokep_enabled) == IDOKEP_PRO_SERVICE ? endpoint::idokep_pro : endpoint::idokep;
}

}  // namespace

constinit const http_network IDOKEP = {sent_by_get<IDOKEP>("idokep"),
                                       idokep_service,
                                       "/sendws.php",
                                       append_idokep,
                                       {.debug_header = "\nIDOKEP (PUSH)\n%s\n",
                                        .success = judge_idokep,
                                        .failure_format = "upload to idokep: %s",
                                        .no_response_text = "no response from idokep"}};

constinit const http_network WETTERARCHIV = {sent_by_get<WETTERARCHIV>("wetterarchiv"),
                                             endpoint::wetterarchiv,
                                             "/interface/http/input.php",
                                             append_wetterarchiv,
                                             {.debug_header = "\nWETTERARCHIV\n%s\n",
                                              .success = "status=SUCCESS",
                                              .failure_format = "upload to wetterarchiv failed: %s",
                                              .no_response_text = "no response from wetterarchiv"}};

}  // namespace skypost
