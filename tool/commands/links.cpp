// pagescan links: the records of HTML pages.
#include <memory>
#include <string>

#include "commands/commands.h"
#include "input.h"
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
    "  find . -name '*.html' -print0 | pagescan links --files-from - -0 --format urls\n"
    "  pagescan links --format jsonl *.html | jq -r 'select(.tag == \"IMG\").resolved'\n"
    "  zcat page.html.gz | pagescan links --base http://www.example.com/";

struct Options {
  RecordsOptions records;
  bool leavesOutRel = false;
};

bool listLinks(const std::string& name, const RWCString& page, const Options& options,
               RecordsOutput& records) {
  RWCString copy(page);
  blankNulBytes(name, copy);
  const HiddenScripts hidden(name, copy);

  const std::string& base = options.records.base;
  LinkSink sink(records, base, {page, copy, 0, !options.leavesOutRel});
  CHTMLOffsetParser parser(base.c_str());
  parser.SetDietVirtualQueue(&sink);
  records.beginInput(name);
  parser.ParseHTML(copy.data(), copy.length());
  return true;
}

ExitStatus run(const Options& options, Output& output) {
  RecordsOutput records(output, options.records);
  return forEachText(options.records.files, output, [&](const std::string& name, RWCString& page) {
    return listLinks(name, page, options, records);
  });
}

}  // namespace

void addLinks(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "links", kDescription, kRecordCommands);
  const auto options = std::make_shared<Options>();
  addFlag(command, "--no-rel", options->leavesOutRel,
          "Leave out the attribute rel of LINK, which holds no URL");
  addRecordsOptions(command, options->records);
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
