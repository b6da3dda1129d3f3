// pagescan css: the records of style text.
#include <memory>
#include <string>

#include "commands/commands.h"
#include "commands/unread_style.h"
#include "input.h"
#include "output/harmless.h"
#include "output/link_sink.h"
#include "output/messages.h"
#include "rw/rwbounds.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Lists the URLs of style text, url(...) and @import, in the form of\n"
    "links, each as the src of an IMG (CHTMLOffsetParser::ParseCSS)";

constexpr char kNotes[] =
    "Style text that begins with a property's name, \"background:url(a.gif)\", ends\n"
    "the reading at that url(...), with exit status 1; what was found before it is\n"
    "listed. A rule set around the declarations, \"p{background:url(a.gif)}\", avoids\n"
    "it, and --declarations puts one there.\n"
    "A double-quoted string after the last url(...) is taken for a URL. An @import\n"
    "whose URL is in double quotes is not read when a url( follows anywhere, nor is\n"
    "one whose URL holds a \";\" or stands in single quotes; each url( and @import\n"
    "that is not read is told, by its offset.\n"
    "\n"
    "Examples:\n"
    "  pagescan css --base http://www.example.com/a/style.css style.css\n"
    "  echo 'background:url(a.gif)' | pagescan css --declarations --base http://h/";

struct Options {
  RecordsOptions records;
  bool declarations = false;
};

bool parse(CHTMLOffsetParser& parser, const std::string& name, const RWCString& css) {
  try {
    parser.ParseCSS(css);
    return true;
  } catch (const RWBoundsErr&) {
    tellAbout(name,
              "the text begins with a property's name: not read from its first url(...) on "
              "(try --declarations)");
    return false;
  }
}

bool listUrls(const std::string& name, const RWCString& css, const Options& options,
              RecordsOutput& records) {
  RWCString copy(css);
  blankNulBytes(name, copy);
  if (options.declarations) copy = RWCString("{") + copy + "}";

  LinkSink sink(records, options.records.base, {css, copy, options.declarations ? 1 : 0});
  CHTMLOffsetParser parser(options.records.base.c_str());
  parser.SetDietVirtualQueue(&sink);
  records.beginInput(name);
  if (!parse(parser, name, copy)) return false;
  tellUnreadStyle(name, copy, sink.offsets(), options.declarations ? 1 : 0);
  return true;
}

ExitStatus run(const Options& options, Output& output) {
  RecordsOutput records(output, options.records);
  return forEachText(options.records.files, output, [&](const std::string& name, RWCString& css) {
    return listUrls(name, css, options, records);
  });
}

}  // namespace

void addCss(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "css", kDescription, kRecordCommands);
  const auto options = std::make_shared<Options>();
  addFlag(command, "--declarations", options->declarations,
          "The text is bare declarations, as in a style\n"
          "attribute: read it as the inside of a rule set.\n"
          "Offsets are still those of the text.");
  addRecordsOptions(command, options->records);
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
