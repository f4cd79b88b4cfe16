#include "common/request_parts.h"

#include <gtest/gtest.h>

namespace skypost::testing {
namespace {

// All parts in one text, for the table.
std::string in_one_text(const request_parts& parts) {
  std::string text = parts.method + ' ' + parts.server + ' ' + parts.path;
  for (const request_parameter& part : parts.login) text += " [" + part.name + ':' + part.value() + ']';
  for (const request_parameter& parameter : parts.parameters) {
    text += " <" + parameter.name;
    for (const std::string& field : parameter.fields) text += '|' + field;
    text += '>';
  }
  return text;
}

TEST(RequestParts, AreWhatTheNetworkReads) {
  const struct {
    const char* what;
    const char* command;
    const char* parts;
  } CASES[] = {
      {"a query",
       R"(wget -O /dev/stdout "http://h.org:81/b.php?id=x&n&v=b=c@d&p=%26%23+%2b%zz%4&b=" 2>/dev/stdout)",
       "GET http://h.org:81 /b.php <id|x> <n|> <v|b=c@d> <p|&# +%zz%4> <b|>"},
      {"no path", R"(wget --post-data="a=1" "https://h.org" 2>/dev/stdout | tail -n 1)",
       "POST https://h.org  <a|1>"},
      {"options in a value", R"(wget "http://h/?a=\"\$\`\\ --post-data=x --http-user=y http://z/")",
       "GET http://h / <a|\"$`\\ --post-data=x --http-user=y http://z/>"},
      {"login options", R"(wget --http-user="u ser" --http-password="p\"%41+" --post-data="a=1" "https://h")",
       "POST https://h  [(login) user:u ser] [(login) password:p\"%41+] <a|1>"},
      {"a login in the URL", R"(wget --post-data="a=1" "http://%75:m%40t%3Ae+%2Fo@h:8080")",
       "POST http://h:8080  [(login) user:u] [(login) password:m@t:e+/o] <a|1>"},
      {"a record", R"(wget "http://h/?v=1;2;3;4;5;6;7;8;9;10;11")",
       "GET http://h / <v|1|2|3|4|5|6|7|8|9|10|11>"},
      {"a record of encoded commas", R"(wget "http://h/?v=%2C2%2C%2C%2C%2C%2C%2C%2C%2C%2C")",
       "GET http://h / <v||2|||||||||>"},
      {"some semicolons", R"(wget "http://h/?v=a;b;c")", "GET http://h / <v|a;b;c>"},
  };
  for (const auto& row : CASES) EXPECT_EQ(in_one_text(take_apart(row.command)), row.parts) << row.what;
}

}  // namespace
}  // namespace skypost::testing
