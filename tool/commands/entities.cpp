// pagescan entities: character references to bytes.
#include <memory>
#include <string>

#include "charset.h"
#include "command_line.h"
#include "commands/commands.h"
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
    "\n"
    "Examples:\n"
    "  pagescan entities page.html > decoded.html\n"
    "  echo 'caf&eacute;' | pagescan entities | pagescan utf8";

ExitStatus run(const Names& files, Output& output) {
  return forEachInput(files, output, [&](const std::string&, RWCString& text) {
    CTQCharSet::fsGetSingleton()->convert(text);
    output.write(bytesOf(text));
    return true;
  });
}

}  // namespace

void addEntities(CLI::App& app, Job& job) {
  CLI::App* command = app.add_subcommand("entities", kDescription)->group(kCharacterCommands);
  const auto files = std::make_shared<Names>();
  addFiles(*command, *files);
  command->footer(kNotes);
  command->callback(
      [&job, files] { job = [files](Output& output) { return run(*files, output); }; });
}

}  // namespace pagescan::tool
