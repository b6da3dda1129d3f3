#include "reference/classic/charset.h"

#include <cstddef>
#include <limits>

#include "reference/classic/regexp.h"
#include "reference/classic/scannumber.h"
#include "reference/classic/strings.h"

namespace reference {

namespace {

// In code order from byte 161.
const char* const kLatin1Names[] = {
    "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",
    "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",
    "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",
    "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute",
    "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",
    "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave",
    "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",    "ntilde",
    "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave", "uacute",
    "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};

std::map<std::string, char> buildEntityTable() {
  std::map<std::string, char> table = {
      {"nbsp", ' '}, {"quot", '"'}, {"amp", '&'}, {"lt", '<'}, {"gt", '>'}};
  int code = 161;
  for (const char* name : kLatin1Names) table.emplace(name, static_cast<char>(code++));
  return table;
}

}  // namespace

const std::map<std::string, char>& entityTable() {
  static const std::map<std::string, char> table = buildEntityTable();
  return table;
}

void convert(std::string& text) {
  std::size_t start = 0;
  int number = std::numeric_limits<int>::max();  // not yet read: above 255
  while (true) {
    const auto [p, n] = search(text, "&#?[a-zA-Z0-9]+;", start);
    if (p == npos || n < 3) return;
    start = p + 1;
    if (text[p + 1] != '#') {
      const auto entry = entityTable().find(text.substr(p + 1, n - 2));
      if (entry != entityTable().end()) text.replace(p, n, 1, entry->second);
      continue;
    }
    if (toLower(text[p + 2]) == 'x') {
      if (n != 4 && n != 5 && n != 6) continue;
      scanInteger("0x" + text.substr(p + 3, n - 4), number);
    } else {
      scanInteger(text.substr(p + 2, n - 3), number);
      if (number > 255) continue;
    }
    text.replace(p, n, 1, static_cast<char>(number & 0xFF));
  }
}

}  // namespace reference
