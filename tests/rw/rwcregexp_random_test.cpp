// RWCRegexp beside its backtracking twin: all small patterns over all small texts, and random ones.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "reference/classic/regexp.h"
#include "rw/rwcregexp.h"
#include "rw/rwcstring.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

using Pieces = std::vector<std::string_view>;

void expectSameMatch(const RWCRegexp& regexp, const std::string& pattern, const std::string& text,
                     std::size_t start) {
  const reference::Match expected = reference::search(text, pattern, start);
  std::size_t length = 0;
  const std::size_t position = stringOf(text).index(regexp, &length, start);
  ASSERT_EQ(position, expected.position)
      << pattern << " in " << testing::PrintToString(text) << " from " << start;
  if (position != RWCString::npos) {
    ASSERT_EQ(length, expected.length) << pattern << " in " << testing::PrintToString(text);
  }
}

// Every byte or class with every operator.
Pieces itemsOf() {
  return {"a", "a*", "a+", "a?", "b", "b*", "b+", "b?", "[ab]", "[ab]*", "[a-c]+", "[bc]?"};
}

void compareAllSmall(std::size_t items, std::size_t textLength) {
  std::vector<std::string> texts;
  forEachText({"a", "b", "c"}, textLength, [&](const std::string& text) { texts.push_back(text); });
  std::size_t matches = 0;
  forEachText(itemsOf(), items, [&](const std::string& body) {
    for (const char* const anchor : {"", "^"}) {
      const std::string pattern = anchor + body;
      const RWCRegexp regexp(pattern.c_str());
      for (const std::string& text : texts) {
        for (std::size_t start = 0; start <= 2; ++start, ++matches) {
          expectSameMatch(regexp, pattern, text, start);
        }
      }
      if (testing::Test::HasFatalFailure()) return;
    }
  });
  std::cout << matches << " matches compared" << std::endl;
}

TEST(RWCRegexpTwin, AgreesOnSmallPatternsAndTexts) {
  compareAllSmall(2, inShortOrDeepRun(5, 7));
}

TEST(RWCRegexpTwin, AgreesOnLongerPatterns) {
  compareAllSmall(3, inShortOrDeepRun(3, 5));
}

constexpr const char* kLibraryPatterns[] = {
    "[>\t\r\n ]",
    "[oO][nN][lL][oO][aA][dD][\n\r\t ]*=",
    "[oO][nN][mM][oO][uU][sS][eE][oO][vV][eE][rR][\n\r\t ]*=",
    "[oO][nN][mM][oO][uU][sS][eE][oO][uU][tT][\n\r\t ]*=",
    "^[a-zA-Z]+:",
    "&#?[a-zA-Z0-9]+;",
};

TEST(RWCRegexpTwin, AgreesOnTheLibrarysPatterns) {
  const Pieces pieces = {"onload", "oNmOuSeOver", "onmouseout", "on",   "=",
                         " ",      "\t",          "\n",         "&",    "#",
                         ";",      "a",           "Z",          "09",   ":",
                         ">",      "\0"sv,        "/",          "\xE4", "text and more text"};
  RandomTexts random;
  const std::size_t count = randomRuns(20000, 500000);
  for (const char* const pattern : kLibraryPatterns) {
    const RWCRegexp regexp(pattern);
    for (std::size_t i = 0; i < count && !testing::Test::HasFailure(); ++i) {
      const std::string text = random.number(4) == 0
                                   ? random.mutated(random.textOfRuns(pieces, 6), 4)
                                   : random.text(pieces, 10);
      expectSameMatch(regexp, pattern, text, random.number(text.size() + 2));
    }
  }
}

TEST(RWCRegexpTwin, AgreesOnRandomPatterns) {
  Pieces items = itemsOf();
  items.insert(items.end(), {"[\\t\\n ]*", "=", "[^]", "[A-Za-z0-9]+", "\xE4?", "[b-]*", "\\n",
                             "\\^*", "[\\-b]"});
  RandomTexts random;
  const std::size_t count = randomRuns(3000, 100000);
  for (std::size_t i = 0; i < count && !testing::Test::HasFailure(); ++i) {
    std::string pattern = random.text(items, 6);
    if (random.number(5) == 0) pattern.insert(0, "^");
    const RWCRegexp regexp(pattern.c_str());
    for (int texts = 0; texts < 20; ++texts) {
      const std::string text =
          random.textOfRuns({"a", "b", "c", "=", " ", "\n", "^", "-", "\xE4", "Q7"}, 6);
      if (text.size() > 60) continue;  // the twin tries everything
      expectSameMatch(regexp, pattern, text, random.number(4));
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
