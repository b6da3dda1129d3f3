// The searches over marked bytes beside the plain ones, in texts next to unreadable pages: from
// each place to the next in steps of random length, as a page is read.
#include "page/marked_bytes.h"

#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "page/tag_scanner.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::internal;  // NOLINT(google-build-using-namespace)

const std::vector<std::string_view> kPieces = {
    "<a",
    "</b",
    " ",
    "\n",
    "/",
    ">",
    "=",
    "\"",
    "'",
    "href",
    "Data",
    "\v",
    "\x01",
    "\xBC",
    "\xC3\xA9",
    "text, without marks ",
    "x=y",
    "<",
    "0123456789012345678901234567890123456789012345678901234567890123456789",
};

template <class Check>
void forEachPlacedText(const Check& check) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = inShortOrDeepRun(1000, 100000); i > 0; --i) {
      const std::string text = random.textOfRuns(kPieces, i % 4 == 0 ? 60 : 8);
      for (const Placement::Kind kind : {Placement::kBeforeGuardPage, Placement::kAfterGuardPage}) {
        Placement place(kind);
        check(place.bytes(text), random);
        if (testing::Test::HasFatalFailure()) return;
      }
    }
  });
}

bool areSame(const ScannedName& found, const ScannedName& plain) {
  return found.end == plain.end && found.key == plain.key;
}

constexpr std::size_t kSearches = 5;

// Whether a search finds what the plain one does.
bool agrees(MarkedBytes& bytes, const char* at, std::size_t search) {
  const char* const end = bytes.end();
  switch (search) {
    case 0:
      return bytes.opening(at) == skipTo(at, end, '<');
    case 1:
      return bytes.quote(at, '"') == skipTo(at, end, '"');
    case 2:
      return bytes.quote(at, '\'') == skipTo(at, end, '\'');
    case 3:
      return areSame(bytes.tagName(at), scanTagName(at, end));
    default:
      return areSame(bytes.attributeName(at), scanAttributeName(at, end));
  }
}

TEST(MarkedBytes, FindWhatPlainOnesFind) {
  forEachPlacedText([](std::string_view text, RandomTexts& random) {
    MarkedBytes bytes(text);
    std::size_t at = 0;
    while (at < text.size()) {
      const std::size_t search = random.number(kSearches);
      ASSERT_TRUE(agrees(bytes, text.data() + at, search))
          << "search " << search << " from " << at << " of\n"
          << text;
      at += random.number(random.number(10) == 0 ? 2000 : 60);
    }
    ASSERT_EQ(bytes.opening(bytes.end()), bytes.end());
    ASSERT_EQ(bytes.quote(bytes.end(), '"'), bytes.end());
  });
}

}  // namespace
}  // namespace pagescan::tests
