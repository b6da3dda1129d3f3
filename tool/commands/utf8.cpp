// pagescan utf8: to and from UTF-8 where that is needed.
#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "commands/commands.h"
#include "commands/iconv_routines.h"
#include "input.h"
#include "lines.h"
#include "output/bytes.h"
#include "output/messages.h"
#include "output/utf8_text.h"
#include "zkutf8.h"

namespace pagescan::tool {

namespace {

constexpr char kDescription[] =
    "Converts to or from UTF-8, where the text needs it\n"
    "(ConvertAnsitoUtf8, ConvertUtf8toAnsi)";

constexpr char kNotes[] =
    "Text that looks like UTF-8 (isUtf8) is left alone on the way to UTF-8, and only\n"
    "such text is converted on the way from it. What does not fit, and what is\n"
    "malformed, becomes \"?\". Texts with NUL bytes between them are judged and\n"
    "converted one by one.\n"
    "--check tells ASCII, UTF-8 or \"not UTF-8\", by the rules of Unicode, and adds\n"
    "\", taken for UTF-8\" where a conversion would take malformed text for it.\n"
    "\n"
    "Examples:\n"
    "  pagescan utf8 --check *.html\n"
    "  pagescan utf8 latin1.html > utf8.html\n"
    "  pagescan utf8 --code-page WINDOWS-1251 page.html\n"
    "  pagescan utf8 --to ansi --code-page SHIFT_JIS page.html";

// The library counts a conversion's bytes, three for each one given, in an int.
constexpr std::size_t kLongestText = std::numeric_limits<int>::max() / 3 - 1;

struct Options {
  std::string to = "utf8";
  std::string codePage = "ISO-8859-1";
  bool onlyChecks = false;
  InputFiles files;
};

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return byte >= 0; });
}

// Whether a conversion takes each piece of the text for UTF-8; plain ASCII counts as both.
bool isTakenForUtf8(std::string_view text) {
  bool isTaken = true;
  forEachPiece(text, '\0', [&](std::string_view piece) {
    isTaken = isTaken && (isAscii(piece) || isUtf8(piece.data(), static_cast<int>(piece.size())));
  });
  return isTaken;
}

void check(const std::string& name, std::string_view text, Output& output) {
  const bool isWellFormed = isWellFormedUtf8(text);
  const char* verdict = isAscii(text) ? "ASCII" : isWellFormed ? "UTF-8" : "not UTF-8";
  const char* note = !isWellFormed && isTakenForUtf8(text) ? ", taken for UTF-8" : "";
  output.write(shownName(name) + ": " + verdict + note + "\n");
}

// A conversion ends a text at its first NUL byte; piece by piece nothing is lost.
void convert(const RWCString& bytes, bool toUtf8, Output& output) {
  std::size_t start = 0;
  for (;;) {
    const std::size_t nul = bytes.index('\0', start);
    const std::size_t end = nul == RWCString::npos ? bytes.length() : nul;
    RWCString piece(bytes.data() + start, end - start);
    toUtf8 ? ConvertAnsitoUtf8(piece) : ConvertUtf8toAnsi(piece);
    output.write(bytesOf(piece));
    if (nul == RWCString::npos) return;
    output.write(std::string_view("\0", 1));
    start = nul + 1;
  }
}

ExitStatus run(const Options& options, Output& output) {
  useCodePage(options.codePage);
  return forEachText(options.files, output, [&](const std::string& name, RWCString& bytes) {
    if (bytes.length() > kLongestText) {
      tellAbout(name, "too large to be converted");
      return false;
    }
    if (options.onlyChecks) {
      check(name, bytesOf(bytes), output);
    } else {
      convert(bytes, options.to == "utf8", output);
    }
    return true;
  });
}

std::string checkCodePage(const std::string& name) {
  if (name.empty()) return "the name of the code page is empty";
  return isCodePage(name) ? "" : name + " is no code page of this system ('iconv -l' lists them)";
}

}  // namespace

void addUtf8(CLI::App& app, Job& job) {
  CLI::App& command = addCommand(app, "utf8", kDescription, kCharacterCommands);
  const auto options = std::make_shared<Options>();
  addChoice(command, "--to", options->to, {"utf8", "ansi"},
            "Where to: utf8, the default, or ansi, the code page");
  addText(command, "--code-page", options->codePage, "NAME",
          "The other character set, ISO-8859-1 by default: any\n"
          "that iconv knows and that writes \"A\" as one byte",
          checkCodePage);
  addFlag(command, "--check", options->onlyChecks,
          "Only tell what each input is; write none of it");
  addFiles(command, options->files);
  finishCommand(command, kNotes, [&job, options] {
    job = [options](Output& output) { return run(*options, output); };
  });
}

}  // namespace pagescan::tool
