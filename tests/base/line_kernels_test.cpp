// The kernel that counts lines, each version beside a plain loop, in texts next to unreadable
// pages.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/kernels.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

const std::vector<std::string_view> kPieces = {
    "\n", "\r", "\r\n", "\n\r", "a", "\x8A", "\x8D", "\f", "\v", "abcdefghijklmnopqrstuvwxyz"};

LineEnds plainCount(std::string_view text, std::size_t begin, std::size_t end) {
  LineEnds found = {0, nullptr};
  for (std::size_t at = begin; at < end; ++at) {
    const bool isLoneCr = text[at] == '\r' && text.substr(at, 2) != "\r\n";
    if (text[at] == '\n' || isLoneCr) found = {found.count + 1, text.data() + at};
  }
  return found;
}

TEST(CountLineEnds, CountsThoseOfAPlainLoop) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = inShortOrDeepRun(2000, 200000); i > 0; --i) {
      const std::string mutableText = random.textOfRuns(kPieces, 30);
      for (const Placement::Kind kind : {Placement::kBeforeGuardPage, Placement::kAfterGuardPage}) {
        Placement place(kind);
        const std::string_view text = place.bytes(mutableText);
        const std::size_t begin = random.number(text.size() + 1);
        const std::size_t end = begin + random.number(text.size() - begin + 1);
        const LineEnds expected = plainCount(text, begin, end);
        const char* const bytes = text.data();
        const LineEnds found =
            kernels().countLineEnds(bytes + begin, bytes + end, bytes + text.size());
        ASSERT_EQ(found.count, expected.count) << text << begin << "-" << end;
        ASSERT_EQ(found.last, expected.last) << text << begin << "-" << end;
      }
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
