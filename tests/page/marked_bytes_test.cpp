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

void expectSame(const ScannedName& found, const ScannedName& plain, std::string_view text) {
  ASSERT_EQ(found.end, plain.end) << text;
  ASSERT_EQ(found.key, plain.key) << text;
}

TEST(MarkedBytes, FindWhatPlainOnesFind) {
  forEachPlacedText([](std::string_view text, RandomTexts& random) {
    MarkedBytes bytes(text);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
      switch (random.number(5)) {
        case 0:
          ASSERT_EQ(bytes.opening(at), skipTo(at, end, '<')) << text;
          break;
        case 1:
          ASSERT_EQ(bytes.quote(at, '"'), skipTo(at, end, '"')) << text;
          break;
        case 2:
          ASSERT_EQ(bytes.quote(at, '\''), skipTo(at, end, '\'')) << text;
          break;
        case 3:
          ASSERT_NO_FATAL_FAILURE(expectSame(bytes.tagName(at), scanTagName(at, end), text));
          break;
        default:
          ASSERT_NO_FATAL_FAILURE(
              expectSame(bytes.attributeName(at), scanAttributeName(at, end), text));
      }
      at += random.number(random.number(10) == 0 ? 2000 : 60);
    }
    ASSERT_EQ(bytes.opening(end), end);
    ASSERT_EQ(bytes.quote(end, '"'), end);
  });
}

}  // namespace
}  // namespace pagescan::tests
