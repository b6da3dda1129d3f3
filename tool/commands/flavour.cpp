// pagescan flavour: in whose way a query string is encoded.
#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string>

#include "command_line.h"
#include "commands/commands.h"
#include "commands/flavours.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Names the flavours of which a query string is the canonical form\n"
    "(UrlEncoding::CheckUrlDecoding)";

constexpr char kNotes[] =
    "The text is all query string, without \"?\": names and values, with \"&\" between\n"
    "the pairs. It is in a flavour's canonical form when encoding what it decodes to\n"
    "gives just the same text. The first line names the flavour that the library\n"
    "reports, none if there is none; the second names all of them.\n"
    "'pagescan encode --help' describes the flavours.\n"
    "\n"
    "Examples:\n"
    "  pagescan flavour 'a=b%20c&d=e'\n"
    "  pagescan flavour < query";

const char* nameOf(UrlEncoding::EncodingType type) {
  return std::find_if(std::begin(kFlavours), std::end(kFlavours),
                      [&](const Flavour& row) { return row.type == type; })
      ->name;
}

// A line end that closes the input is the shell's, not the query's.
void dropLineEnd(RWCString& text) {
  const auto endsWith = [&](char byte) {
    return text.length() != 0 && text.data()[text.length() - 1] == byte;
  };
  if (!endsWith('\n')) return;
  text.resize(text.length() - 1);
  if (endsWith('\r')) text.resize(text.length() - 1);
}

void report(const RWCString& text, Output& output) {
  output.write(std::string("first: ") + nameOf(UrlEncoding::CheckUrlDecoding(text)) + "\nall:");
  for (const Flavour& row : kFlavours) {
    if (row.type != UrlEncoding::eNone && UrlEncoding::CheckUrlDecoding(text, row.type)) {
      output.write(std::string(" ") + row.name);
    }
  }
  output.write("\n");
}

ExitStatus run(const std::optional<std::string>& argument, Output& output) {
  if (argument) {
    report(RWCString(argument->data(), argument->size()), output);
    return kSuccess;
  }
  return forEachInput({}, output, [&](const std::string&, RWCString& text) {
    dropLineEnd(text);
    report(text, output);
    return true;
  });
}

}  // namespace

void addFlavour(CLI::App& app, Job& job) {
  CLI::App* command = app.add_subcommand("flavour", kDescription)->group(kUrlCommands);
  const auto text = std::make_shared<std::optional<std::string>>();
  const CLI::callback_t keep = [text](const CLI::results_t& given) {
    *text = given.front();
    return true;
  };
  command
      ->add_option("TEXT", keep,
                   "The query string; without it standard input, but\n"
                   "for one line end at its very end")
      ->option_text(" ");
  command->footer(kNotes);
  command->callback([&job, text] { job = [text](Output& output) { return run(*text, output); }; });
}

}  // namespace pagescan::tool
