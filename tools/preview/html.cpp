#include "preview/html.h"

#include <algorithm>
#include <ostream>
#include <string_view>

#include "common/printable.h"

namespace skypost {
namespace {

// The policy blocks all scripts and resources, so even markup that slipped through could not run.
constexpr char HEAD[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta name="robots" content="noindex">
<title>What skypost sends</title>
<style>
:root {
  color-scheme: light dark;
  --page: #f4f6f8; --card: #fff; --text: #1c2733; --quiet: #5a6876; --line: #dfe5ea;
  --good: #1b6e3c; --bad: #a8261b; --link: #1a5fa8;
}
@media (prefers-color-scheme: dark) {
  :root {
    --page: #12181f; --card: #1b232c; --text: #e4eaf0; --quiet: #9aa8b5; --line: #2f3a46;
    --good: #6fce93; --bad: #ff9d92; --link: #86bdf5;
  }
}
* { box-sizing: border-box; }
body {
  margin: 0 auto; padding: 1rem; max-width: 60rem; background: var(--page); color: var(--text);
  font: 1rem/1.5 system-ui, sans-serif; overflow-wrap: anywhere;
}
h1 { font-size: 1.5rem; margin: .5rem 0; }
h2 { font-size: 1.15rem; margin: 0; }
h2 small { font-weight: normal; }
small { color: var(--quiet); }
h3 { font-size: .9rem; margin: 1rem 0 .25rem; color: var(--quiet); }
p { margin: .25rem 0; }
a { color: var(--link); }
dl { display: grid; grid-template-columns: max-content 1fr; gap: 0 1rem; margin: .5rem 0 1rem; font-size: .875rem; }
dt { color: var(--quiet); }
dd { margin: 0; }
nav ul { display: flex; flex-wrap: wrap; gap: .25rem 1rem; list-style: none; margin: 0; padding: 0; }
section {
  margin: 1rem 0; padding: 1rem; background: var(--card); border: 1px solid var(--line);
  border-radius: .5rem;
}
table { width: 100%; border-collapse: collapse; margin: .75rem 0 0; }
th, td { padding: .2rem .5rem .2rem 0; border-top: 1px solid var(--line); text-align: left; vertical-align: top; }
th { width: 40%; font-size: .875rem; font-weight: normal; color: var(--quiet); }
td, pre, .where { font-family: ui-monospace, monospace; font-size: .875rem; }
pre {
  margin: .75rem 0 0; padding-top: .5rem; border-top: 1px solid var(--line); white-space: pre-wrap;
}
.where { color: var(--quiet); }
.good { color: var(--good); }
.bad { color: var(--bad); }
em { color: var(--quiet); }
</style>
</head>
<body>
)";

std::string escaped(const std::string& text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      case '\'':
        result += "&#39;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

// Use this for all text that is not the page's own.
std::string shown(const std::string& text) { return escaped(printable(text)); }

std::string shown_name(const std::string& name) {
  std::string result;
  for (const char character : shown(name)) {
    result += character;
    if (character == '_') result += "<wbr>";
  }
  return result;
}

std::string shown_value(const std::string& text) { return text.empty() ? "<em>(empty)</em>" : shown(text); }

std::string shown_source(const std::string& source) {
  return source.empty() ? "" : " <small>" + shown_name(source) + "</small>";
}

void print_row(std::ostream& out, const std::string& name, const std::string& value) {
  out << "<tr><th scope=\"row\">" << name << "</th><td>" << value << "</td></tr>\n";
}

void print_request(std::ostream& out, const request_parts& request) {
  if (request.login.empty() && request.parameters.empty()) return;
  out << "<table>\n";
  for (const auto* const part : {&request.login, &request.parameters})
    for (const table_row& row : rows_of(*part))
      print_row(out, shown(row.name), shown_value(row.value) + shown_source(row.source));
  out << "</table>\n";
}

void print_lines(std::ostream& out, const std::string& text) {
  if (text.empty()) return;
  out << "<pre>\n";  // HTML ignores this newline
  for (const std::string& line : printable_lines(text)) out << escaped(line) << '\n';
  out << "</pre>\n";
}

void print_missing(std::ostream& out, const std::vector<missing_value>& missing) {
  if (missing.empty()) return;
  out << "<h3>Missing values</h3>\n<table>\n";
  for (const missing_value& value : missing) print_row(out, shown_name(value.name), shown(value.reason));
  out << "</table>\n";
}

void print_warning(std::ostream& out, const char* title, const std::string& text) {
  out << "<p class=\"bad\"><strong>" << title << ":</strong> " << shown(text) << "</p>\n";
}

void print_state(std::ostream& out, const step_preview& step) {
  if (step.would_be_sent()) out << "<p class=\"good\"><strong>Would be sent</strong></p>\n";
  for (const network_fault& fault : step.faults)
    print_warning(out, fault.weight == network_fault::stops ? "Not sent" : "Warning", fault.text);
}

void print_step(std::ostream& out, const step_preview& step) {
  out << "<section id=\"" << shown(step.id) << "\">\n<h2>" << shown(step.network) << " <small>"
      << shown(step.name) << "</small></h2>\n";
  for (const std::string& place : step.where)
    out << "<p class=\"where\">" << shown(step.how) << ' ' << shown(place) << "</p>\n";
  if (!step.position.empty()) out << "<p class=\"where\">Position " << shown(step.position) << "</p>\n";
  print_state(out, step);
  print_request(out, step.request);
  print_lines(out, step.text);
  print_missing(out, step.missing);
  out << "</section>\n";
}

// The marks are words, because not everyone can see the colours.
constexpr std::string_view WARNED = "warning";
constexpr std::string_view SKIPPED = "not sent";

std::string_view mark_of(const step_preview& step) {
  if (step.faults.empty()) return {};
  return step.faults[0].weight == network_fault::stops ? SKIPPED : WARNED;
}

std::ptrdiff_t count_of(std::string_view mark, const std::vector<step_preview>& steps) {
  return std::count_if(steps.begin(), steps.end(),
                       [&](const step_preview& step) { return mark_of(step) == mark; });
}

void print_contents(std::ostream& out, const std::vector<step_preview>& steps) {
  out << "<nav>\n<p>" << steps.size() << " uploads: " << count_of(WARNED, steps) << " with a warning, "
      << count_of(SKIPPED, steps) << " not sent</p>\n<ul>\n";
  for (const step_preview& step : steps) {
    out << "<li><a href=\"#" << shown(step.id) << "\">" << shown(step.network) << "</a>";
    if (const std::string_view mark = mark_of(step); !mark.empty())
      out << " <strong class=\"bad\">" << mark << "</strong>";
    out << "</li>\n";
  }
  out << "</ul></nav>\n";
}

}  // namespace

void print_html(std::ostream& out, const preview_page& page) {
  out << HEAD << "<header>\n<h1>What skypost sends</h1>\n<dl>\n"
      << "<dt>Settings</dt><dd>" << shown(page.settings) << "</dd>\n"
      << "<dt>Report</dt><dd>" << shown(page.report) << "</dd>\n"
      << "<dt>Time</dt><dd>" << shown(page.time) << "</dd>\n</dl>\n";
  if (!page.fault.empty()) print_warning(out, "Nothing to show", page.fault);
  for (const std::string& warning : page.warnings) print_warning(out, "Warning", warning);
  if (page.steps.size() > 1) print_contents(out, page.steps);
  out << "</header>\n<main>\n";
  if (page.steps.empty() && page.fault.empty()) out << "<p>No network is switched on.</p>\n";
  for (const step_preview& step : page.steps) print_step(out, step);
  out << "</main>\n</body>\n</html>\n";
}

}  // namespace skypost
