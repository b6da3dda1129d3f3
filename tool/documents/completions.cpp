#include "documents/completions.h"

#include <string_view>

namespace pagescan::tool {

namespace {

constexpr char kHead[] = " completion for pagescan. Made by pagescan_documents: do not edit.\n";
constexpr char kCodePages[] = "iconv -l 2>/dev/null | sed 's,//.*,,'";

// What a shell offers for a value.
enum class Offer { nothing, words, files, urls, codePages };

Offer offerOf(const OptionFacts& option) {
  if (!option.words.empty()) return Offer::words;
  if (option.longName == "--code-page") return Offer::codePages;
  if (option.label == "FILE") return Offer::files;
  return option.label == "URL" ? Offer::urls : Offer::nothing;
}

std::string joined(const Names& words) {
  std::string text;
  for (const std::string& word : words) text.append(text.empty() ? "" : " ").append(word);
  return text;
}

std::string namesOf(const std::vector<CommandFacts>& commands) {
  Names names;
  for (const CommandFacts& command : commands) names.push_back(command.name);
  return joined(names);
}

// The text between single quotes, for any of the shells.
std::string shellQuoted(std::string_view text) {
  std::string result = "'";
  for (const char byte : text) result.append(byte == '\'' ? "'\\''" : std::string(1, byte));
  return result + "'";
}

// --- bash ---

std::string bashOffer(const OptionFacts& option) {
  switch (offerOf(option)) {
    case Offer::words:
      return "words=" + shellQuoted(joined(option.words));
    case Offer::codePages:
      return std::string("words=$(") + kCodePages + ")";
    case Offer::files:
      return "_pagescan_files && return";
    default:
      return "return";
  }
}

std::string bashValues(const CommandFacts& command) {
  std::string rows;
  for (const OptionFacts& option : command.options) {
    if (option.label.empty()) continue;
    rows += "    " + shellQuoted(command.name + " " + option.longName) + ") " + bashOffer(option) +
            " ;;\n";
  }
  return rows;
}

std::string bashOptions(const CommandFacts& command) {
  Names names;
  for (const OptionFacts& option : command.options) {
    if (!option.shortName.empty()) names.push_back(option.shortName);
    names.push_back(option.longName);
  }
  return "      " + command.name + ") words=" + shellQuoted(joined(names)) + " ;;\n";
}

constexpr char kBashBegin[] = R"(
_pagescan_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_pagescan() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} words=
)";

constexpr char kBashOffer[] = R"(  if [[ -n $words ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    return
  fi
)";

constexpr char kBashEnd[] = R"(}

complete -F _pagescan pagescan
)";

// --- zsh ---

// In what zsh's _arguments takes, colons and brackets separate an option from its description.
std::string zshText(std::string_view text) {
  std::string result;
  for (const char byte : text) {
    if (byte == ':' || byte == '[' || byte == ']') result += '\\';
    result += byte;
  }
  return result;
}

std::string zshOffer(const OptionFacts& option) {
  switch (offerOf(option)) {
    case Offer::words:
      return "(" + joined(option.words) + ")";
    case Offer::codePages:
      return "_pagescan_code_pages";
    case Offer::files:
      return "_files";
    case Offer::urls:
      return "_urls";
    default:
      return " ";
  }
}

std::string zshOption(const OptionFacts& option) {
  const std::string summary = "[" + zshText(option.summary) + "]";
  if (!option.shortName.empty()) {  // a flag of two names
    return shellQuoted("(" + option.shortName + " " + option.longName + ")") + "{" +
           option.shortName + "," + option.longName + "}" + shellQuoted(summary);
  }
  const std::string begin = (option.mayRepeat ? "*" : "") + option.longName;
  if (option.label.empty()) return shellQuoted(begin + summary);
  const std::string value = option.words.empty() ? option.label : option.longName.substr(2);
  return shellQuoted(begin + "=" + summary + ":" + value + ":" + zshOffer(option));
}

std::string zshCommand(const CommandFacts& command) {
  std::string text = "    " + command.name + ")\n      _arguments";
  for (const OptionFacts& option : command.options) text += " \\\n        " + zshOption(option);
  const std::string offer = command.takesFiles() ? "_files" : " ";
  const bool areMany = command.mayRepeatArgument || command.argument.find(' ') != std::string::npos;
  const std::string repeat = areMany ? "*" : "";
  return text + " \\\n        " + shellQuoted(repeat + ":" + command.argument + ":" + offer) +
         "\n      ;;\n";
}

// --- fish ---

std::string fishOffer(const OptionFacts& option) {
  switch (offerOf(option)) {
    case Offer::words:
      return " -x -a " + shellQuoted(joined(option.words));
    case Offer::codePages:
      return std::string(" -x -a \"(") + kCodePages + ")\"";
    case Offer::files:
      return " -r -F";
    default:
      return option.label.empty() ? "" : " -x";
  }
}

std::string fishCommand(const CommandFacts& command) {
  const std::string begin =
      "complete -c pagescan -n " + shellQuoted("__fish_seen_subcommand_from " + command.name);
  std::string text = "\ncomplete -c pagescan -n __fish_use_subcommand -a " + command.name + " -d " +
                     shellQuoted(command.summary) + "\n";
  if (command.takesFiles()) text += begin + " -F\n";
  for (const OptionFacts& option : command.options) {
    text += begin;
    if (!option.shortName.empty()) text += " -s " + option.shortName.substr(1);
    text += " -l " + option.longName.substr(2) + fishOffer(option) + " -d " +
            shellQuoted(option.summary) + "\n";
  }
  return text;
}

}  // namespace

std::string bashCompletion(const std::vector<CommandFacts>& commands) {
  std::string values;
  std::string options;
  std::string readers;
  for (const CommandFacts& command : commands) {
    values += bashValues(command);
    options += bashOptions(command);
    if (command.takesFiles()) readers += (readers.empty() ? "" : " | ") + command.name;
  }
  const std::string all = namesOf(commands);
  return std::string("# bash") + kHead + kBashBegin +  //
         "\n  if ((COMP_CWORD == 1)); then words=" +
         shellQuoted(all + " help --help --version") +  //
         "; fi\n"
         "  if ((COMP_CWORD == 2)) && [[ $command == help ]]; then words=" +
         shellQuoted(all) + "; fi\n" +                                 //
         "  case \"$command $previous\" in\n" + values + "  esac\n" +  //
         "  if [[ -z $words && $current == -* ]]; then\n" +            //
         "    case $command in\n" + options + "    esac\n  fi\n" +     //
         kBashOffer +                                                  //
         "  case $command in\n    " + readers + ") _pagescan_files ;;\n  esac\n" + kBashEnd;
}

std::string zshCompletion(const std::vector<CommandFacts>& commands) {
  std::string text = std::string("#compdef pagescan\n# zsh") + kHead;
  text += std::string("\n_pagescan_code_pages() {\n  local -a pages\n  pages=(${(f)\"$(") +
          kCodePages + ")\"})\n  _describe 'character set' pages\n}\n";
  text += "\n_pagescan() {\n  local -a commands\n  commands=(\n";
  for (const CommandFacts& command : commands) {
    text += "    " + shellQuoted(command.name + ":" + zshText(command.summary)) + "\n";
  }
  text += R"(    'help:Prints the help of a command'
  )

  if ((CURRENT == 2)) || [[ CURRENT -eq 3 && $words[2] == help ]]; then
    _describe 'command' commands
    ((CURRENT == 2)) && _arguments '(-h --help)'{-h,--help}'[Print this help and exit]' \
      '--version[Print the version and exit]'
    return
  fi

  local command=$words[2]
  shift words
  ((CURRENT--))
  case $command in
)";
  for (const CommandFacts& command : commands) text += zshCommand(command);
  return text + "  esac\n}\n\n_pagescan \"$@\"\n";
}

std::string fishCompletion(const std::vector<CommandFacts>& commands) {
  std::string text = std::string("# fish") + kHead;
  text += R"(
complete -c pagescan -f
complete -c pagescan -n __fish_use_subcommand -s h -l help -d 'Print this help and exit'
complete -c pagescan -n __fish_use_subcommand -l version -d 'Print the version and exit'
complete -c pagescan -n __fish_use_subcommand -a help -d 'Prints the help of a command'
complete -c pagescan -n '__fish_seen_subcommand_from help' -a )" +
          shellQuoted(namesOf(commands)) + "\n";
  for (const CommandFacts& command : commands) text += fishCommand(command);
  return text;
}

}  // namespace pagescan::tool
