// pagescan save: a page and all that it loads, in a folder that opens offline.
#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "commands/commands.h"
#include "output/messages.h"
#include "output/utf8_text.h"
#include "pagescan/url.h"
#include "save/save_run.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] = "Saves a page and all that it loads: a folder that opens offline";

constexpr char kNotes[] =
    "DIR gets index.html, the page; files/, what it loads; and manifest.jsonl, a line for\n"
    "each URL that was asked for. Copies name one another by relative names, and all\n"
    "else by its absolute URL; the rest stays byte for byte. What would keep a browser\n"
    "from reading copies is taken off and told: integrity, crossorigin, policies in meta.\n"
    "What could not be fetched is told with its place and keeps its absolute URL; the\n"
    "exit status is 1, then.\n"
    "Scripts are saved and not run: what only they ask for is missing.\n"
    "Proxies that the environment names are not used.\n"
    "\n"
    "Examples:\n"
    "  pagescan save https://example.com/a/b.html copy\n"
    "  pagescan save --single-file https://example.com/ copy\n"
    "  pagescan save --url https://example.com/ page.html copy\n"
    "  pagescan save --continue https://example.com/a/b.html copy";

constexpr unsigned kMostSeconds = 1'000'000;
constexpr unsigned kMostNumber = 0xFFFF'FFFF;

// What the options say, in their own words.
struct Given {
  SaveOptions save;
  std::optional<std::string> source, folder;
  std::string url;
  unsigned requestTime = 60, runTime = 900;
  unsigned mostBytes = 1U << 28, mostRunBytes = 1U << 31, most = 10000;
};

bool isHttp(const Url& url) {
  return url.scheme() == "http" || url.scheme() == "https";
}

std::string checkHttpUrl(const std::string& text) {
  const std::optional<Url> url = Url::parse(text);
  return url && isHttp(*url) ? "" : "\"" + text + "\" is no absolute URL of http or https";
}

bool isNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

bool isControl(char c) {
  return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7F;
}

std::string checkHeader(const std::string& line) {
  const std::size_t colon = line.find(':');
  const bool isHeader =
      colon != std::string::npos && colon > 0 &&
      std::all_of(line.begin(), line.begin() + static_cast<long>(colon), isNameCharacter) &&
      std::none_of(line.begin(), line.end(), isControl);
  return isHeader ? "" : "\"" + line + "\" is no header, \"Name: value\"";
}

std::string checkUserAgent(const std::string& text) {
  const bool isRight = std::none_of(text.begin(), text.end(), isControl);
  return isRight ? "" : "a header holds no control characters";
}

ExitStatus run(Given& given, Output& output) {
  SaveOptions& save = given.save;
  if (given.url.empty()) {
    const std::string complaint = checkHttpUrl(*given.source);
    if (!complaint.empty()) {
      tell(printable(complaint) + ": --url goes with a file");
      return kWrongUsage;
    }
  } else {
    save.file = *given.source;
  }
  save.url = Url::parse(given.url.empty() ? *given.source : given.url)->href();
  save.folder = *given.folder;
  save.most = given.most;
  save.fetch.mostBytes = given.mostBytes;
  save.fetch.mostRunBytes = given.mostRunBytes;
  save.fetch.requestTime = std::chrono::seconds(given.requestTime);
  save.fetch.runTime = std::chrono::seconds(given.runTime);
  return runSave(save, output);
}

void addRequestOptions(CLI::App& command, Given& given) {
  FetchOptions& fetch = given.save.fetch;
  fetch.userAgent = "pagescan/" PAGESCAN_VERSION;
  addText(command, "--user-agent", fetch.userAgent, "TEXT", "The User-Agent of the requests",
          checkUserAgent);
  addTexts(command, "--header", fetch.headers, "HEADER",
           "Send this header, \"Name: value\", to the server of the\n"
           "page and no other; may be given several times",
           checkHeader);
  addText(command, "--ca-file", fetch.certificates, "FILE",
          "Trust the certificate authorities in FILE (PEM)\n"
          "instead of the system's");
  addFlag(command, "--allow-private", fetch.allowsPrivate,
          "Connect to addresses that are not public, too: this\n"
          "machine, local networks");
}

void addLimits(CLI::App& command, Given& given) {
  addNumber(command, "--timeout", given.requestTime, 1, kMostSeconds,
            "Seconds that one request may take; 60 by default");
  addNumber(command, "--max-time", given.runTime, 1, kMostSeconds,
            "Seconds that all may take; 900 by default");
  addNumber(command, "--max-size", given.mostBytes, 1, kMostNumber,
            "Bytes that one answer may have, once decompressed;\n"
            "256 MiB by default");
  addNumber(command, "--max-total", given.mostRunBytes, 1, kMostNumber,
            "Bytes that all may have; 2 GiB by default");
  addNumber(command, "--max-count", given.most, 1, kMostNumber,
            "Resources that are asked for; 10,000 by default");
}

}  // namespace

void addSave(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "save", kDescription, kSaveCommands);
  const auto given = std::make_shared<Given>();
  addText(command, "--url", given->url, "URL",
          "The page is in a file or in standard input, and comes\n"
          "from URL",
          checkHttpUrl);
  addFlag(command, "--single-file", given->save.isSingleFile,
          "Write one file, index.html, that holds all as data: URLs");
  addFlag(command, "--continue", given->save.goesOn, "Go on with a run that was stopped");
  addRequestOptions(command, *given);
  addLimits(command, *given);
  require(addArgument(command, "URL|FILE", "The page; with --url a file, or standard input for -",
                      given->source));
  require(addArgument(command, "DIR", "A folder, new or empty", given->folder));
  finishCommand(command, kNotes,
                [&job, given] { job = [given](Output& output) { return run(*given, output); }; });
}

}  // namespace pagescan::tool
