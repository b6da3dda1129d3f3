// pagescan resolve: the URL Standard on the command line.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "commands/absolute_url.h"
#include "commands/commands.h"
#include "input.h"
#include "lines.h"
#include "output/bytes.h"
#include "output/json.h"
#include "output/messages.h"
#include "output/utf8_text.h"
#include "pagescan/url.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Resolves URLs as browsers do, by the URL Standard: one line each, or\n"
    "the components as JSON (pagescan::Url)";

constexpr char kNotes[] =
    "Standard input, read for - or without an argument, holds a URL a line. What is\n"
    "no URL is named, and the exit status is 1; the others are written.\n"
    "A JSON line has the members input, url, scheme, path, and where the URL has\n"
    "them username, password, host, port, query and fragment, as they stand in url.\n"
    "\n"
    "Examples:\n"
    "  pagescan resolve --base https://example.com/a/b ../c '?d' //e\n"
    "  pagescan resolve --format jsonl 'HTTP://EXAMPLE.com:80/%7Ea/./b?c#d'\n"
    "  pagescan resolve --base https://example.com/ < links";

struct Options {
  std::string base;
  std::string encoding = "UTF-8";
  std::string format = "url";
  Names texts;
};

std::string objectOf(std::string_view input, const Url& url) {
  std::string line;
  JsonWriter json(line);
  const auto add = [&](std::string_view member, std::optional<std::string_view> part) {
    if (part) json.addText(member, *part);
  };
  const auto unlessEmpty = [](std::string_view part) {
    return part.empty() ? std::nullopt : std::optional(part);
  };
  json.beginLine();
  json.addBytes("input", input);
  json.addText("url", url.href());
  json.addText("scheme", url.scheme());
  add("username", unlessEmpty(url.username()));
  add("password", unlessEmpty(url.password()));
  add("host", url.host());
  add("port", url.port());
  json.addText("path", url.path());
  add("query", url.query());
  add("fragment", url.fragment());
  json.endLine();
  return line;
}

// Resolves one text after the other.
class Resolver {
 public:
  Resolver(const Options& options, Output& output)
      : options_(options),
        output_(output),
        base_(options.base.empty() ? std::nullopt : Url::parse(options.base)) {}

  void resolve(std::string_view text) {
    const std::optional<Url> url =
        base_ ? Url::parse(text, *base_, options_.encoding) : Url::parse(text, options_.encoding);
    if (!url) {
      tell("\"" + printable(text) + "\": no " + (base_ ? "URL" : "absolute URL"));
      isWhole_ = false;
    } else {
      output_.write(options_.format == "jsonl" ? objectOf(text, *url) : url->href() + "\n");
    }
  }

  // Whether all were URLs.
  bool isWhole() const { return isWhole_; }

 private:
  const Options& options_;
  Output& output_;
  std::optional<Url> base_;
  bool isWhole_ = true;
};

ExitStatus run(const Options& options, Output& output) {
  Resolver resolver(options, output);
  ExitStatus status = kSuccess;
  for (const std::string& text : options.texts.empty() ? Names{"-"} : options.texts) {
    if (text != "-") {
      resolver.resolve(text);
      continue;
    }
    status = std::max(status, forEachInput({}, output, [&](const std::string&, RWCString& lines) {
                        forEachLine(bytesOf(lines),
                                    [&](std::string_view line) { resolver.resolve(line); });
                        return true;
                      }));
  }
  return resolver.isWhole() ? status : kFailed;
}

}  // namespace

void addResolve(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "resolve", kDescription, kUrlCommands);
  const auto options = std::make_shared<Options>();
  addText(command, "--base", options->base, "URL",
          "What they are resolved against; without it only\n"
          "absolute URLs are URLs",
          checkAbsoluteUrl);
  addText(command, "--encoding", options->encoding, "LABEL",
          "The encoding of the page that they stand in, in which\n"
          "queries are written; UTF-8 by default");
  addChoice(command, "--format", options->format, {"url", "jsonl"},
            "How the result is written: url, the default; jsonl, a\n"
            "JSON object a line with the components");
  addArguments(command, "URL", "URLs, one result a line; standard input for - or none",
               options->texts);
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
