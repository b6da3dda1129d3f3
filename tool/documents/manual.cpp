#include "documents/manual.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <string_view>

#include "lines.h"

namespace pagescan::tool {

namespace {

constexpr char kExitStatus[] = R"(.Sh EXIT STATUS
.Bl -tag -width 1n -compact
.It 0
Done.
.It 1
An input could not be read, or not be read whole; the others went through.
Or the output could not be written.
.It 2
Wrong usage: nothing was read or written.
.El
)";

// Text as mdoc prints it unchanged.
std::string escaped(std::string_view text) {
  std::string result;
  if (text.starts_with('.') || text.starts_with('\'')) result = "\\&";
  for (const char byte : text) {
    if (byte == '\\') {
      result += "\\e";
    } else {
      if (byte == '-') result += '\\';
      result += byte;
    }
  }
  return result;
}

std::string inLowerCase(std::string text) {
  text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
  return text;
}

std::string head(const std::string& title, const std::string& name, const std::string& purpose) {
  return ".\\\" Made by pagescan_documents: do not edit.\n.Dd November 21, 2026\n.Dt " + title +
         " 1\n.Os\n.Sh NAME\n.Nm " + name + "\n.Nd " + escaped(inLowerCase(purpose)) +
         "\n.Sh SYNOPSIS\n";
}

// An option as a macro shows it, without the dot: "Fl \-base Ar URL".
std::string shown(const OptionFacts& option) {
  std::string text;
  if (!option.shortName.empty()) text = "Fl " + option.shortName.substr(1) + " | ";
  text += "Fl \\-" + escaped(option.longName.substr(2));
  if (option.label.empty()) return text;
  text += " Ar ";
  forEachPiece(option.label, '|', [&, isFirst = true](std::string_view word) mutable {
    text.append(isFirst ? "" : " Ns | Ns Ar ").append(word);
    isFirst = false;
  });
  return text;
}

std::string synopsis(const CommandFacts& command) {
  std::string text = ".Nm pagescan " + command.name + "\n";
  for (const OptionFacts& option : command.options) {
    if (option.longName == "--help") continue;
    text += (option.isRequired ? "." : ".Op ") + shown(option);
    text += option.mayRepeat ? " ...\n" : "\n";
  }
  const std::string begin = command.isArgumentRequired ? ".Ar " : ".Op Ar ";
  return text + begin + command.argument + (command.mayRepeatArgument ? " ...\n" : "\n");
}

std::string optionList(const CommandFacts& command) {
  std::string text = ".Bl -tag -width Ds\n.It Ar " + command.argument + "\n" +
                     escaped(command.argumentDescription) + ".\n";
  for (const OptionFacts& option : command.options) {
    text += ".It " + shown(option) + "\n" + escaped(option.description) + ".\n";
  }
  return text + ".El\n";
}

// The notes of a command: paragraphs; lines under a heading that ends with ":" are kept as they
// are, and those under "Examples:" are kept for later.
struct Notes {
  std::string text, examples;

  void addParagraph(std::string_view paragraph) {
    const std::size_t firstEnd = paragraph.find(":\n  ");
    if (paragraph.starts_with("Examples:\n")) {
      forEachLine(paragraph.substr(paragraph.find('\n') + 1), [this](std::string_view line) {
        examples += ".Dl " + escaped(line.substr(2)) + "\n";
      });
    } else if (firstEnd != std::string_view::npos && firstEnd < paragraph.find('\n')) {
      const std::string_view lines = paragraph.substr(firstEnd + 2);
      text += ".Pp\n" + escaped(paragraph.substr(0, firstEnd + 1)) + "\n.Bd -literal\n";
      forEachLine(lines, [this](std::string_view line) { text += escaped(line) + "\n"; });
      text += ".Ed\n";
    } else {
      text += ".Pp\n";
      forEachLine(paragraph, [this](std::string_view line) { text += escaped(line) + "\n"; });
    }
  }
};

Notes notesOf(std::string_view footer) {
  Notes notes;
  while (!footer.empty()) {
    const std::size_t end = std::min(footer.find("\n\n"), footer.size());
    notes.addParagraph(footer.substr(0, end));
    footer.remove_prefix(std::min(end + 2, footer.size()));
  }
  return notes;
}

// The program's page, and the other commands of the family.
std::string seeAlso(const CommandFacts& command, const std::vector<CommandFacts>& commands) {
  std::string text = ".Sh SEE ALSO\n.Xr pagescan 1";
  for (const CommandFacts& other : commands) {
    if (other.family == command.family && other.name != command.name) {
      text += " ,\n.Xr pagescan-" + other.name + " 1";
    }
  }
  return text + "\n";
}

std::string upperCase(std::string text) {
  for (char& byte : text) {
    byte = static_cast<char>(std::toupper(static_cast<unsigned char>(byte)));
  }
  return text;
}

}  // namespace

std::string programManual(const CLI::App& app, const std::vector<CommandFacts>& commands) {
  std::string text = head("PAGESCAN", "pagescan", "Find, resolve and clean the URLs of pages") +
                     ".Nm\n.Ar command\n.Op Ar option ...\n.Op Ar argument ...\n"
                     ".Nm\n.Cm help\n.Op Ar command\n"
                     ".Nm\n.Fl \\-help | \\-version\n.Sh DESCRIPTION\n";
  forEachLine(app.get_description(), [&](std::string_view line) { text += escaped(line) + "\n"; });
  text += ".Bl -tag -width inventory\n";
  std::string pages;
  for (const CommandFacts& command : commands) {
    text += ".It Cm " + command.name + "\n" + escaped(command.summary) + ".\n";
    pages += (pages.empty() ? "" : " ,\n") + (".Xr pagescan-" + command.name) + " 1";
  }
  const Notes notes = notesOf(app.get_footer());
  return text + ".El\n" + notes.text + kExitStatus + ".Sh EXAMPLES\n" + notes.examples +
         ".Sh SEE ALSO\n" + pages + "\n";
}

std::string commandManual(const CommandFacts& command, const std::vector<CommandFacts>& commands) {
  const Notes notes = notesOf(command.notes);
  return head("PAGESCAN-" + upperCase(command.name), "pagescan-" + command.name, command.summary) +
         synopsis(command) + ".Sh DESCRIPTION\n" + escaped(command.description) + ".\n" +
         optionList(command) + notes.text + furtherSections(command.name) + kExitStatus +
         ".Sh EXAMPLES\n" + notes.examples + seeAlso(command, commands);
}

}  // namespace pagescan::tool
