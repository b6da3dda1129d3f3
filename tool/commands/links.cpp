// pagescan links: the records of HTML pages.
#include <memory>
#include <string>

#include "commands/commands.h"
#include "output/harmless.h"
#include "output/link_sink.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Lists the URL-bearing attributes of pages, one a line: byte offset,\n"
    "tag, attribute, value as written, resolved value\n"
    "(CHTMLOffsetParser::ParseHTML)";

constexpr char kNotes[] =
    "Tags: BASE BODY TABLE TD TH APPLET OBJECT EMBED FRAME IFRAME IMG SCRIPT LINK\n"
    "INPUT XML ?IMPORT. Script bodies and comments are passed over; a BASE tag is\n"
    "listed but does not change the base. The offset is that of the value's first\n"
    "byte in the page, -1 for an attribute without a value.\n"
    "\n"
    "Examples:\n"
    "  pagescan links --base http://www.example.com/a/b.html page.html\n"
    "  pagescan links --format jsonl *.html | jq -r 'select(.tag == \"IMG\").resolved'\n"
    "  zcat page.html.gz | pagescan links --base http://www.example.com/";

bool listLinks(const std::string& name, const RWCString& page, const std::string& base,
               RecordsOutput& records) {
  RWCString copy(page);
  blankNulBytes(name, copy);
  const HiddenScripts hidden(name, copy);

  LinkSink sink(records, base, {page, copy});
  CHTMLOffsetParser parser(base.c_str());
  parser.SetDietVirtualQueue(&sink);
  records.beginInput(name);
  parser.ParseHTML(copy.data(), copy.length());
  return true;
}

ExitStatus run(const RecordsOptions& options, Output& output) {
  RecordsOutput records(output, options);
  return forEachInput(options.files, output, [&](const std::string& name, RWCString& page) {
    return listLinks(name, page, options.base, records);
  });
}

}  // namespace

void addLinks(CLI::App& app, Job& job) {
  CLI::App* command = app.add_subcommand("links", kDescription)->group(kRecordCommands);
  const auto options = std::make_shared<RecordsOptions>();
  addRecordsOptions(*command, *options);
  command->footer(kNotes);
  command->callback(
      [&job, options] { job = [options](Output& output) { return run(*options, output); }; });
}

}  // namespace pagescan::tool
