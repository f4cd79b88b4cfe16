// Shows the preview's page in Debian's chromium, on a phone and on a desktop: all text must be there, and nothing may
// be wider than the window.

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "live/report_parser.h"
#include "preview/html.h"
#include "sim/report.h"
#include "support/appliance_folder.h"
#include "support/golden.h"
#include "support/station.h"

namespace skypost::testing {
namespace {

// A page with every network, some without a password or sensor, and with long, foreign and hostile texts.
preview_page difficult_page() {
  switch_everything_on(station_settings);
  const std::pair<const text_field&, std::string> TEXTS[] = {
      {sensor_wind, ""},
      {sensor_rain, "rain9"},
      {windfinder_name, "</table><script>document.title='hostile'</script>&lt;"},
      {hamweather_id, std::string(127, 'W')},
      {wetterspiegel_id, std::string(127, 'i')},
      {idokep_user, "id\xc3\xb3k\xc3\xa9p \xb0 \x1b[2J"},
      {weatherbug_password, ""},
      {wedaal_user, "w"},
  };
  for (const auto& [field, text] : TEXTS) station_settings.set_text(field, text);
  const std::string report = sim::lifelike_report(spring_morning().seconds);
  load_live_record(report.c_str());
  return {"/home/nimbulog/nimbulog.conf",
          "the data server, 127.0.0.1:5558",
          "2012-05-06 07:08:09 CEST",
          {},
          make_previews({.source = {station_settings, live_record, spring_morning(), ORDINARY_BOARD},
                         .report = report.c_str(),
                         .last_run_age = 300,
                         .with_secrets = false},
                        {})};
}

// Shows the page in a frame of each width; the script measures and reads it.
constexpr char FRAMES[] = R"(<!DOCTYPE html><meta charset="utf-8">
<iframe src="page.html" style="width:360px;height:800px;border:0"></iframe>
<iframe src="page.html" style="width:1200px;height:800px;border:0"></iframe>
<pre></pre>
<script>
onload = () => {
  let found = '';
  for (const frame of document.querySelectorAll('iframe')) {
    const root = frame.contentDocument.documentElement;
    const wide = [...root.querySelectorAll('body *')].filter(one => one.scrollWidth > one.clientWidth &&
        getComputedStyle(one).display != 'inline' && one.clientWidth > 0);
    found += `width ${root.clientWidth} of ${root.scrollWidth}, title ${frame.contentDocument.title}\n` +
        `file ${JSON.stringify(root.querySelector('pre').textContent.slice(0, 6))}\n` + wide.map(one => `wide: ${one.outerHTML}\n`).join('') + root.innerText + '\n';
  }
  document.querySelector('pre').textContent = found;
};
</script>)";

TEST(page_in_a_browser, is_all_there_and_fits_a_phone_and_a_desk) {
  const appliance_folder folder;
  std::ostringstream page;
  print_html(page, difficult_page());
  folder.write("/page.html", page.str());
  folder.write("/frames.html", FRAMES);
  const std::string seen_path = folder.path("/seen");
  const std::string command =
      "timeout 120 chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run"
      " --disable-background-networking --disable-component-update --disable-sync --hide-scrollbars"
      " --disable-dev-shm-usage --allow-file-access-from-files --window-size=1300,2000"
      " --virtual-time-budget=5000 --dump-dom --user-data-dir=" +
      folder.path("/browser/profile").string() + " file://" + folder.path("/frames.html").string() +
      " 2>/dev/null >" + seen_path;
  ASSERT_EQ(std::system(command.c_str()), 0) << command;
  std::string seen = read_whole_file(seen_path);
  seen.erase(0, seen.find("<pre>"));
  seen.erase(std::min(seen.find("</pre>"), seen.size()));
  EXPECT_EQ(seen.find("wide: "), std::string::npos) << seen.substr(seen.find("wide: "), 500);
  for (const char* const part :
       {"width 360 of 360, title What skypost sends\n", "width 1200 of 1200, title What skypost sends\n",
        "Settings\n/home/nimbulog/nimbulog.conf\n", "Weather Underground, rapid fire", "PASSWORD\t***\n",
        "file \"\\n11.2\\n\"\n", "Not sent: wedaal_user: it has fewer than two characters, so ",
        "PASSWORD\t(empty)\n", "Warning: weatherbug_password: it is not set, but WeatherBug needs ",
        " with a warning, ", "Wedaal not sent\n", "sensor_wind\tno sensor selected\n",
        "name\t&lt;/table&gt;&lt;script&gt;document.title='hostile'&lt;/script&gt;&amp;lt;\n",
        "user\tid\xc3\xb3k\xc3\xa9p \\xb0 \\x1b[2J\n", "User DL1ABC-13 pass *** vers nimbulog\n"})
    EXPECT_NE(seen.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace skypost::testing
