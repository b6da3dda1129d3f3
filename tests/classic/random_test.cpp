// The library beside its slow twins over random texts, made of the pieces that matter, and over
// pages with random changes.

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "reference/classic/zkhtmlparseutils.h"
#include "support/comparison.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

using Pieces = std::vector<std::string_view>;

const Pieces kMarkup = {
    "<",         ">",         "</",          "/>",         "<img",
    "<IMG ",     "<frame",    "<iframe ",    "<script",    "<SCRIPT>",
    "</script>", "<body ",    "<td ",        "<applet ",   "<object ",
    "<link ",    "<?import ", "<base ",      "<a ",        "</a>",
    "<select",   "</SELECT>", "<!--",        "-->",        "<!",
    "--",        " src=",     " HREF",       "lowsrc=",    "code=",
    "classid=",  "rel=",      " dynsrc =",   "background", "implementation=",
    "archive",   "onload",    "onMouseOver", "onmouseout", "=",
    "\"",        "'",         " ",           "\t",         "\n",
    "\r",        "\f",        "~",           "a",          "Z",
    "x.gif",     "-",         "_",           "/",          "\0"sv,
    "\xE4",      "\xFF",      "&amp;",       "&#65;",      "%41",
    "%",         "&",         "<p>",         "../",        "a long run of words "};

const Pieces kUrlPieces = {"http",
                           "https",
                           "HTTP:",
                           "://",
                           ":",
                           "/",
                           "//",
                           "../",
                           "./",
                           "..",
                           ".",
                           "?",
                           "#",
                           "\\",
                           "\\\\",
                           "%2e",
                           "%2E%2e/",
                           "%20",
                           "%",
                           "%4",
                           "%zz",
                           "%-1",
                           " ",
                           "\t",
                           "\n",
                           "w1",
                           "a",
                           "t",
                           "tp",
                           "javascript:",
                           "file:",
                           "clsid:",
                           "mailto:",
                           "ftp",
                           "&amp;",
                           "&#47;",
                           "\0"sv,
                           "\xE4",
                           "x.html",
                           "&nbsp;",
                           "dir/",
                           "tel:",
                           "host.example.com"};

const Pieces kStylePieces = {"url(", "URL(",  ")",   "@import", "@IMPORT ",   "\"", "'", ";",
                             ":",    "/*",    "*/",  "{",       "}",          " ",  "a", "#",
                             "\n",   "b.gif", "../", "\0"sv,    "color:red;", "*",  "/", "u"};

const Pieces kReferencePieces = {"&",           "#",
                                 "x",           "X",
                                 ";",           "0",
                                 "1",           "255;",
                                 "&amp;",       "&lt",
                                 "nbsp;",       "eacute",
                                 "9",           "f",
                                 "2147483648",  "-",
                                 " ",           "a",
                                 "0x",          "0b",
                                 "&#",          "&#x",
                                 "\0"sv,        "\xE4",
                                 "4294967361;", "text without any reference"};

const Pieces kEncodedPieces = {"%",   "%41",    "%3",       "%zz",        "+",   " ",    "&",
                               "=",   "a",      "~",        "&#25;",      "&#2", "\0"sv, "%00",
                               "%-1", "%c3%a9", "\xC3\xA9", "*",          "'",   "(",    "%7E",
                               ",",   "@",      "%%",       "name=value", "%20", "!",    "\x7F"};

const Pieces kUtf8Pieces = {"\xC3\xA9",
                            "\xE2\x82\xAC",
                            "\xF0\x9F\x98\x80",
                            "\xC3",
                            "\x80",
                            "a",
                            "\xFF",
                            "a run of plain text that is wide",
                            " ",
                            "\xC2\x80",
                            "\xED\xA0\x80",
                            "\xC0\x80",
                            "\0"sv};

// Mostly short texts, some long ones.
std::string textOf(RandomTexts& random, const Pieces& pieces) {
  switch (random.number(8)) {
    case 0:
      return random.bytes(20);
    case 1:
      return random.textOfRuns(pieces, 10);
    case 2:
      return random.mutated(random.text(pieces, 40), 6);
    case 3:
      return random.text(pieces, 120);
    default:
      return random.text(pieces, 12);
  }
}

std::string decimal(std::size_t number) {
  return std::to_string(number);
}

// A place in the text, sometimes after its end, rarely far after.
std::string placeIn(RandomTexts& random, const std::string& text) {
  if (random.number(50) == 0) return decimal(std::numeric_limits<std::size_t>::max());
  return decimal(random.number(text.size() + 3));
}

std::string bit(RandomTexts& random) {
  return decimal(random.number(2));
}

std::string pieceOf(RandomTexts& random, const Pieces& pieces) {
  return std::string(pieces[random.number(pieces.size())]);
}

// --- Arguments, one function for each operation -----------------------------------------------

using ArgsMaker = Texts (*)(RandomTexts& random);

template <const Pieces& pieces>
Texts oneText(RandomTexts& random) {
  return {textOf(random, pieces)};
}

Texts skipArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  return {text, placeIn(random, text), placeIn(random, text)};
}

Texts valueArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  return {text,
          "old",
          placeIn(random, text),
          "77",
          placeIn(random, text),
          random.number(2) == 0 ? decimal(text.size()) : placeIn(random, text)};
}

Texts elementArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  const Pieces names = {"a", "img", "IMG", "select", "?import", "x.gif", "", "\xE4"};
  const std::string name = pieceOf(random, names);
  return {name, decimal(random.number(name.size() + 1)), text, placeIn(random, text),
          pieceOf(random, {" ", "~", ">", "", "=", "\t"})};
}

Texts attributeArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  return {text, "N", "V", placeIn(random, text), "77"};
}

Texts finderArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  return {text, placeIn(random, text)};
}

Texts blankingArgs(RandomTexts& random) {
  const std::string text = textOf(random, kMarkup);
  if (random.number(2) == 0) return {text, "<!--", "-->"};
  return {text, pieceOf(random, kMarkup), pieceOf(random, kMarkup)};
}

Texts removalArgs(RandomTexts& random) {
  return {textOf(random, kMarkup), pieceOf(random, kMarkup)};
}

Texts bodyArgs(RandomTexts& random) {
  return {pieceOf(random, {"a", "A", "select", "script", "i", "img", "", "/a", "!", "b\0"sv}),
          textOf(random, kMarkup)};
}

Texts pageArgs(RandomTexts& random) {
  return {"http://w1/d/page.html?x", textOf(random, kMarkup)};
}

Texts styleArgs(RandomTexts& random) {
  return {textOf(random, kUrlPieces), textOf(random, kStylePieces)};
}

Texts stripArgs(RandomTexts& random) {
  return {textOf(random, kUrlPieces), bit(random)};
}

Texts rankArgs(RandomTexts& random) {
  const Pieces levels = {"0", "1", "-1", "7", "2147483647", "-2147483648", "1073741823"};
  Texts args = {pieceOf(random, levels)};
  while (args.size() < 9) args.push_back(bit(random));
  return args;
}

Texts urlProgram(RandomTexts& random) {
  Texts program;
  for (std::size_t count = 1 + random.number(5); count > 0; --count) {
    switch (random.number(6)) {
      case 0:
        program.insert(program.end(), {"set", textOf(random, kUrlPieces)});
        break;
      case 1:
        program.insert(program.end(), {"set", "http://w1/d/e/" + random.text(kUrlPieces, 3)});
        break;
      case 2:
        program.push_back(random.number(2) == 0 ? "short" : "parse");
        break;
      case 3:
        program.insert(program.end(), {"calc1", textOf(random, kUrlPieces)});
        break;
      default:
        program.insert(program.end(),
                       {"calc4", textOf(random, kUrlPieces), "old", bit(random), bit(random)});
    }
  }
  program.push_back("state");
  return program;
}

std::string flavour(RandomTexts& random) {
  return std::to_string(static_cast<int>(random.number(12)) - 1);
}

Texts encodeArgs(RandomTexts& random) {
  return {flavour(random), textOf(random, kEncodedPieces), random.text(kEncodedPieces, 3)};
}

Texts flavourArgs(RandomTexts& random) {
  return {flavour(random), textOf(random, kEncodedPieces)};
}

Texts sliceArgs(RandomTexts& random) {
  const std::string slice = random.text({"a", "B", "b", "_", "\0"sv, "\xE4"}, 6);
  const std::string other = random.text({"a", "B", "b", "_", "\0"sv, "\xE4"}, 6);
  return {slice, random.number(2) == 0 ? random.mutated(slice, 2) : other, bit(random)};
}

struct RandomCase {
  const char* op;
  ArgsMaker makeArgs;
  std::size_t quick;
  std::size_t deep;
};
const RandomCase kOperations[] = {
    {"skipws", skipArgs, 40000, 1000000},
    {"skipnws", skipArgs, 40000, 1000000},
    {"getstr", valueArgs, 40000, 1000000},
    {"iselem", elementArgs, 40000, 1000000},
    {"nextattr", attributeArgs, 60000, 2000000},
    {"findattr", finderArgs, 60000, 2000000},
    {"blanktag", blankingArgs, 60000, 2000000},
    {"blankscript", oneText<kMarkup>, 60000, 2000000},
    {"remfirst", removalArgs, 40000, 1000000},
    {"skipbody", bodyArgs, 60000, 2000000},
    {"onload", oneText<kMarkup>, 40000, 1000000},
    {"checksum", oneText<kMarkup>, 20000, 500000},
    {"parsehtml", pageArgs, 60000, 2000000},
    {"printhtml", pageArgs, 500, 5000},
    {"parsecss", styleArgs, 60000, 2000000},
    {"strip", stripArgs, 60000, 2000000},
    {"proto", oneText<kUrlPieces>, 40000, 1000000},
    {"ishttp", oneText<kUrlPieces>, 40000, 1000000},
    {"rank", rankArgs, 10000, 100000},
    {"urlbase", urlProgram, 60000, 2000000},
    {"ent", oneText<kReferencePieces>, 60000, 2000000},
    {"enc", encodeArgs, 40000, 1000000},
    {"dec", flavourArgs, 40000, 1000000},
    {"chk", flavourArgs, 20000, 500000},
    {"chkany", oneText<kEncodedPieces>, 10000, 200000},
    {"unread", oneText<kEncodedPieces>, 20000, 500000},
    {"isutf8", oneText<kUtf8Pieces>, 40000, 1000000},
    {"u2a", oneText<kUtf8Pieces>, 20000, 500000},
    {"a2u", oneText<kUtf8Pieces>, 20000, 500000},
    {"buffcmp", sliceArgs, 40000, 1000000},
};

class Random : public testing::TestWithParam<RandomCase> {};

TEST_P(Random, TextsGiveWhatTheTwinGives) {
  const RandomCase& row = GetParam();
  RandomTexts random;
  Comparison compare(row.op);
  const std::size_t count = randomRuns(row.quick, row.deep);
  for (std::size_t i = 0; i < count; ++i) compare(row.makeArgs(random));
}

INSTANTIATE_TEST_SUITE_P(Operations, Random, testing::ValuesIn(kOperations),
                         [](const auto& row) { return std::string(row.param.op); });

TEST(RandomTwins, FindEndlessScriptsAlike) {
  RandomTexts random;
  const Pieces pieces = {"<script", "<SCRIPT>", "</script>", "</Script", ">", "x", "<", "\0"sv};
  const std::size_t count = randomRuns(60000, 2000000);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string text = textOf(random, pieces);
    ASSERT_EQ(tqFindEndlessScript(stringOf(text)), reference::tqFindEndlessScript(text))
        << testing::PrintToString(text);
  }
}

// Delimiters of the same few bytes, so that they overlap and share some.
TEST(RandomTwins, BlankingBetweenDelimitersOfTheSameBytes) {
  RandomTexts random;
  Comparison compare("blanktag");
  const Pieces bytes = {"-", "-", "!", "<", ">", "x"};
  const Pieces delimiters = {"<!--", "-->", "--", "-!-", "!--", "->", "<->", "x-!", "-x-->"};
  const std::size_t count = randomRuns(60000, 2000000);
  for (std::size_t i = 0; i < count; ++i) {
    const std::string plain(random.number(150), 'x');
    const std::string text = random.text(bytes, 12) + plain + random.text(bytes, 100);
    compare({text, pieceOf(random, delimiters), pieceOf(random, delimiters)});
  }
}

// --- A whole page -----------------------------------------------------------------------------

std::string samplePage() {
  std::ifstream file(PAGESCAN_SOURCE_DIR "/examples/sample.html", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The operations that take a page, with the arguments around it.
struct PageCase {
  const char* op;
  Texts (*argsOf)(const std::string& page);
};
const PageCase kPageOperations[] = {
    {"parsehtml",
     [](const std::string& page) {
       return Texts{"http://w1/d/page.html?x", page};
     }},
    {"parsecss",
     [](const std::string& page) {
       return Texts{"http://w1/d/page.html?x", page};
     }},
    {"blanktag",
     [](const std::string& page) {
       return Texts{page, "<!--", "-->"};
     }},
    {"blankscript", [](const std::string& page) { return Texts{page}; }},
    {"skipbody",
     [](const std::string& page) {
       return Texts{"a", page};
     }},
    {"onload", [](const std::string& page) { return Texts{page}; }},
    {"findattr",
     [](const std::string& page) {
       return Texts{page, "0"};
     }},
    {"strip",
     [](const std::string& page) {
       return Texts{page, "1"};
     }},
    {"ent", [](const std::string& page) { return Texts{page}; }},
};

class SamplePage : public testing::TestWithParam<PageCase> {};

TEST_P(SamplePage, GivesWhatTheTwinGivesForEveryPrefix) {
  const std::string page = samplePage();
  ASSERT_FALSE(page.empty());
  Comparison compare(GetParam().op);
  for (std::size_t length = 0; length <= page.size(); ++length) {
    compare(GetParam().argsOf(page.substr(0, length)));
  }
}

TEST_P(SamplePage, GivesWhatTheTwinGivesWithRandomChanges) {
  const std::string page = samplePage();
  RandomTexts random;
  Comparison compare(GetParam().op);
  const std::size_t count = randomRuns(1000, 40000);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t begin = random.number(page.size());
    const std::size_t length = random.number(4) == 0 ? page.size() : random.number(400);
    compare(GetParam().argsOf(random.mutated(page.substr(begin, length), 12)));
  }
}

INSTANTIATE_TEST_SUITE_P(Operations, SamplePage, testing::ValuesIn(kPageOperations),
                         [](const auto& row) { return std::string(row.param.op); });

}  // namespace
}  // namespace pagescan::tests
