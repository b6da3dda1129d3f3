// pagescan flavour: in whose way a query string is encoded.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "commands/flavours.h"
#include "input.h"
#include "lines.h"
#include "output/bytes.h"
#include "output/json.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Names the flavours of which a query string is the canonical form\n"
    "(UrlEncoding::CheckUrlDecoding)";

constexpr char kNotes[] =
    "The text is all query string, without \"?\": names and values, with \"&\" between\n"
    "the pairs. It is in a flavour's canonical form when encoding what it decodes to\n"
    "gives just the same text. The first line names the flavour that the library\n"
    "reports, none if there is none; the second names all of them. With --lines the\n"
    "two stand in one line with a tab between them.\n"
    "'pagescan encode --help' describes the flavours.\n"
    "\n"
    "Examples:\n"
    "  pagescan flavour 'a=b%20c&d=e'\n"
    "  pagescan flavour < query\n"
    "  pagescan flavour --lines --format jsonl < queries";

struct Options {
  std::optional<std::string> text;
  bool areLines = false;
  std::string format = "text";
};

struct Report {
  std::string_view first;
  std::vector<std::string_view> all;
};

Report reportOn(const RWCString& text) {
  const UrlEncoding::EncodingType first = UrlEncoding::CheckUrlDecoding(text);
  Report report;
  for (const Flavour& row : kFlavours) {
    if (row.type == first) report.first = row.name;
    if (row.type != UrlEncoding::eNone && UrlEncoding::CheckUrlDecoding(text, row.type)) {
      report.all.emplace_back(row.name);
    }
  }
  return report;
}

std::string objectOf(std::string_view text, const Report& report) {
  std::string line;
  JsonWriter json(line);
  json.beginLine();
  json.addBytes("text", text);
  json.addText("first", report.first);
  json.addWords("all", report.all);
  json.endLine();
  return line;
}

std::string textOf(const Report& report, bool isLine) {
  std::string all;
  for (const std::string_view name : report.all) all.append(all.empty() ? "" : " ").append(name);
  const std::string first(report.first);
  if (isLine) return first + "\t" + all + "\n";
  return "first: " + first + "\nall:" + (all.empty() ? "" : " ") + all + "\n";
}

void write(const Options& options, std::string_view text, Output& output) {
  const Report report = reportOn(RWCString(text.data(), text.size()));
  output.write(options.format == "jsonl" ? objectOf(text, report)
                                         : textOf(report, options.areLines));
}

// A line end that closes the input is the shell's, not the query's.
std::string_view withoutLineEnd(std::string_view text) {
  return text.ends_with('\n') ? withoutCr(text.substr(0, text.size() - 1)) : text;
}

ExitStatus run(const Options& options, Output& output) {
  if (options.text) {
    write(options, *options.text, output);
    return kSuccess;
  }
  return forEachInput({}, output, [&](const std::string&, RWCString& input) {
    const std::string_view text = bytesOf(input);
    if (options.areLines) {
      forEachLine(text, [&](std::string_view line) { write(options, line, output); });
    } else {
      write(options, withoutLineEnd(text), output);
    }
    return true;
  });
}

}  // namespace

void addFlavour(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "flavour", kDescription, kUrlCommands);
  const auto options = std::make_shared<Options>();
  CLI::Option* lines = addLinesFlag(command, options->areLines);
  addChoice(command, "--format", options->format, {"text", "jsonl"},
            "How the answer is written: text, the default; jsonl, a\n"
            "JSON object a text with the members text, first, all");
  exclude(lines, addArgument(command, "TEXT",
                             "The query string; without it standard input,\n"
                             "except for one line end at its very end",
                             options->text));
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
