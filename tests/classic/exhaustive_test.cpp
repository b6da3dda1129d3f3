// The library beside its slow twins over every small text of the pieces that matter to a rule.

#include <gtest/gtest.h>

#include <cstddef>
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

std::string decimal(std::size_t number) {
  return std::to_string(number);
}

// Compares `op` over every text of up to `quick` pieces, or `deep` ones in a deep run; argsOf(text)
// makes the arguments.
template <typename ArgsOf>
void compareAll(const char* op, const Pieces& pieces, std::size_t quick, std::size_t deep,
                const ArgsOf& argsOf) {
  Comparison compare(op);
  forEachText(pieces, inShortOrDeepRun(quick, deep),
              [&](const std::string& text) { compare(argsOf(text)); });
}

Texts alone(const std::string& text) {
  return {text};
}

// --- Scanning ---------------------------------------------------------------------------------

void compareSkips(const char* op) {
  Comparison compare(op);
  forEachText({" ", "a", "<", ">", "\f"}, inShortOrDeepRun(5, 7), [&](const std::string& text) {
    for (std::size_t end = 0; end <= text.size() + 1; ++end) {
      for (std::size_t pos = 0; pos <= text.size() + 1; ++pos) {
        compare({text, decimal(end), decimal(pos)});
      }
    }
  });
}

TEST(Exhaustive, SkippingWhiteSpaces) {
  compareSkips("skipws");
}
TEST(Exhaustive, SkippingWords) {
  compareSkips("skipnws");
}

TEST(Exhaustive, ReadingAValue) {
  compareAll("getstr", {"=", "\"", "'", " ", "a", ">", "\t"}, 6, 8, [](const std::string& text) {
    return Texts{text, "old", "0", "77", "2", decimal(text.size())};
  });
}

TEST(Exhaustive, TestingForAnElement) {
  Comparison compare("iselem");
  const Pieces pieces = {"a", "A", "b", ">", " ", "\0"sv, "~"};
  forEachText(pieces, inShortOrDeepRun(5, 6), [&](const std::string& text) {
    for (const char* const name : {"", "a", "ab", "a>"}) {
      for (std::size_t pos = 0; pos <= text.size() + 1; ++pos) {
        for (const char* const terminator : {" ", "~", "", "a"}) {
          compare({name, decimal(std::string_view(name).size()), text, decimal(pos), terminator});
        }
      }
    }
  });
}

const Pieces kTagBytes = {"a", "-", "=", "\"", "'", " ", ">", "/"};

TEST(Exhaustive, FindingTheNextAttribute) {
  compareAll("nextattr", kTagBytes, 6, 8, [](const std::string& text) {
    return Texts{text, "N", "V", "0", "77"};
  });
}

TEST(Exhaustive, FindingAllAttributes) {
  compareAll("findattr", kTagBytes, 6, 8, [](const std::string& text) {
    return Texts{"x" + text, "0"};
  });
}

TEST(Exhaustive, FindingRepeatedAttributes) {
  compareAll("findattr", {" ", "a", "A", "=", "\"", "_", ">"}, 6, 8, [](const std::string& text) {
    return Texts{" " + text + ">", "0"};
  });
}

// --- Blanking and removal ---------------------------------------------------------------------

TEST(Exhaustive, BlankingComments) {
  compareAll("blanktag", {"<!--", "-->", "-", ">", "<", "x"}, 7, 9, [](const std::string& text) {
    return Texts{text, "<!--", "-->"};
  });
}

TEST(Exhaustive, BlankingWithSmallDelimiters) {
  Comparison compare("blanktag");
  const Pieces delimiters = {"", "a", "b", "ab", "ba", "A"};
  forEachText({"a", "b", "B", "xyz"}, inShortOrDeepRun(6, 8), [&](const std::string& text) {
    for (const std::string_view open : delimiters) {
      for (const std::string_view close : delimiters) {
        compare({text, std::string(open), std::string(close)});
      }
    }
  });
}

const Pieces kScriptPieces = {"<script", "</SCRIPT>", ">", "x", "</script"};

TEST(Exhaustive, BlankingScripts) {
  compareAll("blankscript", kScriptPieces, 7, 9, alone);
}

TEST(Exhaustive, FindingEndlessScripts) {
  forEachText(kScriptPieces, inShortOrDeepRun(7, 9), [](const std::string& text) {
    ASSERT_EQ(tqFindEndlessScript(stringOf(text)), reference::tqFindEndlessScript(text)) << text;
  });
}

TEST(Exhaustive, RemovingASingleTag) {
  Comparison compare("remfirst");
  forEachText({"<", "a", "A", ">", "\0"sv}, inShortOrDeepRun(6, 8), [&](const std::string& text) {
    for (const char* const tag : {"", "<a", "a>", ">", "<"}) compare({text, tag});
  });
}

Texts ofElementA(const std::string& text) {
  return {"a", text};
}

TEST(Exhaustive, EmptyingElements) {
  compareAll("skipbody", {"<a", "</a>", "<!--", "-->", ">", "<", "x"}, 6, 8, ofElementA);
}

TEST(Exhaustive, EmptyingElementsByteByByte) {
  compareAll("skipbody", {"<", "/", "a", ">", "!", "-"}, 7, 9, ofElementA);
}

TEST(Exhaustive, DisarmingHandlers) {
  compareAll("onload", {"onload", "onMouseOver", "onmouseout", "=", " ", "\"", "'", "x", ">"}, 5, 7,
             alone);
}

// --- URLs -------------------------------------------------------------------------------------

TEST(Exhaustive, CleaningUrls) {
  for (const char* const decodePercent : {"0", "1"}) {
    compareAll("strip", {" ", "\t", "%", "2", "0", "f", "?", "-"}, 6, 8,
               [&](const std::string& text) {
                 return Texts{text, decodePercent};
               });
  }
}

const Pieces kSchemePieces = {"http", "s", "file", "CLSID", "ftp", ":", "/", "1"};

TEST(Exhaustive, ReadingSchemes) {
  compareAll("proto", kSchemePieces, 5, 7, alone);
}
TEST(Exhaustive, TestingForHttp) {
  compareAll("ishttp", kSchemePieces, 5, 7, alone);
}

TEST(Exhaustive, SplittingBases) {
  for (const char* const split : {"short", "parse"}) {
    compareAll("urlbase", {"http", "HTTPS", ":", "/", "//", "a", "?", "#"}, 5, 6,
               [&](const std::string& text) {
                 return Texts{"set", "http://old/d/f", "parse", "set", text, split, "state"};
               });
  }
}

const Pieces kBases = {"http://w1/d/e/f?q", "https://t", "http://tp/", "", "ftp://h/x", "a/../b"};

TEST(Exhaustive, ResolvingReferences) {
  Comparison compare("urlbase");
  const Pieces pieces = {"../", "./", "/", ".", "a", "?", "#", "\\", ":"};
  forEachText(pieces, inShortOrDeepRun(5, 6), [&](const std::string& text) {
    Texts program;
    for (const std::string_view base : kBases) {
      program.insert(program.end(),
                     {"set", std::string(base), "calc4", text, "old", "1", "1", "state"});
    }
    compare(program);
  });
}

TEST(Exhaustive, ResolvingSchemes) {
  Comparison compare("urlbase");
  const Pieces pieces = {"http:", "file:", "clsid:", "tel:", "/", "\\", "../", "?", "x"};
  forEachText(pieces, inShortOrDeepRun(5, 6), [&](const std::string& text) {
    compare({"set", "http://w1/d/f", "calc4", text, "old", "0", "1", "calc1", text});
  });
}

TEST(Exhaustive, ResolvingLinks) {
  Comparison compare("urlbase");
  const Pieces pieces = {"../", "./", "/", "a", "?", "#", "://", "&amp;", "%41"};
  forEachText(pieces, inShortOrDeepRun(5, 6), [&](const std::string& text) {
    Texts program;
    for (const std::string_view base : kBases) {
      program.insert(program.end(), {"set", std::string(base), "calc1", text, "state"});
    }
    compare(program);
  });
}

// --- Character references ---------------------------------------------------------------------

TEST(Exhaustive, DecodingReferences) {
  compareAll("ent", {"&", "#", "x", "0", "9", "a", ";"}, 7, 8, alone);
}

TEST(Exhaustive, DecodingNamesAndNumbers) {
  compareAll("ent", {"&amp", "&lt;", "&#65;", "&#q;", "&#x4", "&#3", "00", ";"}, 6, 7, alone);
}

// --- Pages and style text ---------------------------------------------------------------------

constexpr const char* kPageUrl = "http://w1/d/page.html?x";

Texts onThePage(const std::string& text) {
  return {kPageUrl, text};
}

TEST(Exhaustive, ParsingImages) {
  compareAll("parsehtml", {"<img", " src", "=", "\"", "'", ">", " ", "x", "lowsrc"}, 5, 7,
             onThePage);
}

TEST(Exhaustive, ParsingTags) {
  compareAll("parsehtml",
             {"<td", "<frame", "<applet ", "background=", "classid=", "src=", ">", "a ", "/", "~"},
             5, 6, onThePage);
}

TEST(Exhaustive, ParsingAroundBlankedText) {
  compareAll("parsehtml", {"<img src=a>", "<!--", "-->", "<script>", "</script>", "\"", " ", ">"},
             5, 7, onThePage);
}

TEST(Exhaustive, ParsingStyleText) {
  compareAll("parsecss", {"url(", ")", "\"", "@import", ";", ":", "/*", "*/", "{", "a", "#"}, 5, 7,
             onThePage);
}

TEST(Exhaustive, ParsingQuotedStyleUrls) {
  compareAll("parsecss", {"url(", ")", "\"", "'", " ", "#", "b:"}, 6, 8, onThePage);
}

}  // namespace
}  // namespace pagescan::tests
