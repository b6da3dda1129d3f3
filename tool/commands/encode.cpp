// pagescan encode, pagescan decode: percent encoding in the flavours of browsers and servers.
#include <algorithm>
#include <iterator>
#include <memory>
#include <string>

#include "commands/commands.h"
#include "commands/flavours.h"
#include "input.h"
#include "lines.h"
#include "output/bytes.h"

namespace pagescan::tool {

namespace {

constexpr char kEncodeDescription[] = "Percent-encodes text (UrlEncoding::EncodeString)";
constexpr char kEncodeNotes[] =
    "The placeholder &#25; that decoding leaves becomes % again.\n"
    "\n"
    "Examples:\n"
    "  pagescan encode --flavour browser 'a b' 'c&d'    gives a+b and c%26d\n"
    "  pagescan encode --flavour uri < text             all of it, newlines too\n"
    "  pagescan encode --flavour uri --lines < words    each line for itself\n"
    "  pagescan encode --flavour escape -- --text--     text that begins with -";

constexpr char kDecodeDescription[] = "Decodes percent-encoded text (UrlEncoding::DecodeString)";
constexpr char kDecodeNotes[] =
    "A % that would give a control byte, or that no hexadecimal number follows,\n"
    "becomes the placeholder &#25;, which encoding turns back into %.\n"
    "\n"
    "Examples:\n"
    "  pagescan decode --flavour browser 'a+b%26'    gives a b&\n"
    "  pagescan decode --flavour siebel < query      no newline is added or dropped\n"
    "  pagescan decode --flavour uri --lines < log   each line for itself";

using Convert = RWCString (*)(RWCString& text, UrlEncoding::EncodingType type);

RWCString encode(RWCString& text, UrlEncoding::EncodingType type) {
  RWCString result;
  UrlEncoding::EncodeString(text, result, type);
  return result;
}

RWCString decode(RWCString& text, UrlEncoding::EncodingType type) {
  UrlEncoding::DecodeString(text, type);
  return text;
}

struct Options {
  std::string flavour;
  bool areLines = false;
  Names texts;
};

UrlEncoding::EncodingType typeOf(const std::string& flavour) {
  return std::find_if(std::begin(kFlavours), std::end(kFlavours),
                      [&](const Flavour& row) { return row.name == flavour; })
      ->type;
}

ExitStatus run(const Options& options, Convert convert, Output& output) {
  const UrlEncoding::EncodingType type = typeOf(options.flavour);
  const auto writeLine = [&](std::string_view line) {
    RWCString text(line.data(), line.size());
    output.write(bytesOf(convert(text, type)));
    output.write("\n");
  };
  if (!options.texts.empty()) {
    for (const std::string& text : options.texts) writeLine(text);
    return kSuccess;
  }
  return forEachInput({}, output, [&](const std::string&, RWCString& text) {
    if (options.areLines) {
      forEachLine(bytesOf(text), writeLine);
    } else {
      output.write(bytesOf(convert(text, type)));
    }
    return true;
  });
}

Names flavourNames() {
  Names names;
  for (const Flavour& row : kFlavours) names.emplace_back(row.name);
  return names;
}

std::string flavourTable() {
  std::string table = "Flavours:\n";
  for (const Flavour& row : kFlavours) table += helpRow(row.name, row.description);
  return table;
}

void addConversion(CLI::App& command, const std::string& notes, Convert convert, Job& job) {
  const auto options = std::make_shared<Options>();
  require(addChoice(command, "--flavour", options->flavour, flavourNames(),
                    "Whose way of encoding it is (required): see below", "NAME"));
  CLI::Option* lines = addLinesFlag(command, options->areLines);
  CLI::Option* texts = addArguments(command, "TEXT",
                                    "Texts, one result a line; without any, standard\n"
                                    "input is one text, whose result gets no newline",
                                    options->texts);
  exclude(lines, texts);
  finishCommand(command, flavourTable() + "\n" + notes, [&job, options, convert] {
    job = [options, convert](Output& output) { return run(*options, convert, output); };
  });
}

}  // namespace

void addEncode(CLI::App& app, Job& job) {
  addConversion(addCommand(app, "encode", kEncodeDescription, kUrlCommands), kEncodeNotes, encode,
                job);
}

void addDecode(CLI::App& app, Job& job) {
  addConversion(addCommand(app, "decode", kDecodeDescription, kUrlCommands), kDecodeNotes, decode,
                job);
}

}  // namespace pagescan::tool
