// pagescan entities: character references to bytes.
#include <memory>
#include <string>

#include "charset.h"
#include "commands/commands.h"
#include "commands/references_utf8.h"
#include "input.h"
#include "output/bytes.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Decodes character references to ISO-8859-1 bytes\n"
    "(CTQCharSet::convert)";

constexpr char kNotes[] =
    "Known are the names of HTML 4's Latin-1 set, quot, amp, lt and gt, and numbers\n"
    "up to 255; all other references stay. &nbsp; is the ordinary blank, and a number\n"
    "that begins with 0 is octal.\n"
    "The bytes are those of ISO-8859-1 whatever the page's character set: a page of\n"
    "UTF-8 needs --utf8.\n"
    "\n"
    "Examples:\n"
    "  pagescan entities page.html > decoded.html\n"
    "  echo 'caf&eacute;' | pagescan entities --utf8";

struct Options {
  bool toUtf8 = false;
  InputFiles files;
};

ExitStatus run(const Options& options, Output& output) {
  return forEachText(options.files, output, [&](const std::string&, RWCString& text) {
    if (options.toUtf8) {
      output.write(referencesToUtf8(bytesOf(text)));
    } else {
      CTQCharSet::fsGetSingleton()->convert(text);
      output.write(bytesOf(text));
    }
    return true;
  });
}

}  // namespace

void addEntities(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "entities", kDescription, kCharacterCommands);
  const auto options = std::make_shared<Options>();
  addFlag(command, "--utf8", options->toUtf8,
          "Write what is decoded in UTF-8; all other bytes stay\n"
          "as they are");
  addFiles(command, options->files);
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
