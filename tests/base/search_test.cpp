#include "base/search.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {

using namespace internal;
namespace {

constexpr std::string_view kText = "some text";

TEST(FindText, FindsAnEmptyTextAtTheBegin) {
  const char* const end = kText.data() + kText.size();
  EXPECT_EQ(findText(kText.data(), end, ""), kText.data());
  EXPECT_EQ(findText(end, end, ""), end);
  EXPECT_EQ(findIgnoringCase(kText.data(), end, ""), kText.data());
  EXPECT_EQ(findIgnoringCase(end, end, ""), end);
}

TEST(FindText, FindsNothingInARangeThatEndsBeforeItBegins) {
  const char* const end = kText.data() + kText.size();
  EXPECT_EQ(findText(end, kText.data(), "text"), kText.data());
  EXPECT_EQ(findIgnoringCase(end, kText.data(), "text"), kText.data());
  EXPECT_EQ(findByte(end, kText.data(), 't'), kText.data());
}

// Over every version of the kernels, where one vector, several, or less than one fit; the letters
// of the two bytes by which candidates are told fold or do not.
TEST(FindText, FindsWhatStandsAtAnyPlaceOfAnyText) {
  constexpr std::string_view kNeedles[] = {"xQ", "x%", "%Q", "%@", "QxQ%Qx@", "xyz-QQQ-xyz"};
  forEachKernelLevel([&] {
    for (const std::string_view needle : kNeedles) {
      for (const std::size_t length : {0U, 1U, 15U, 16U, 31U, 33U, 64U, 65U, 200U, 700U}) {
        for (std::size_t at = 0; at <= length; at += 1 + length / 40) {
          Placement place(Placement::kBeforeGuardPage);
          std::string bytes = repeated("q", at) + std::string(needle) + repeated("Y", length - at);
          const std::string_view text = place.bytes(bytes);
          const char* const end = text.data() + text.size();
          ASSERT_EQ(findText(text.data(), end, needle), text.data() + at);
          ASSERT_EQ(findText(text.data() + at + 1, end, needle), end);
          std::string lower(needle);
          for (char& c : lower) c = toLower(c);
          ASSERT_EQ(findIgnoringCase(text.data(), end, std::string_view(lower)), text.data() + at);
        }
      }
    }
  });
}

TEST(SkipWhiteSpace, PassesRunsOfEveryLength) {
  forEachKernelLevel([] {
    for (std::size_t length = 0; length <= 300; ++length) {
      Placement place(Placement::kBeforeGuardPage);
      const std::string run = repeated(" \t\r\n", length / 4) + std::string(length % 4, ' ');
      const std::string_view blank = place.bytes(run);
      const std::string_view text = place.bytes(run + "x \v");
      ASSERT_EQ(skipWhiteSpace(blank.data(), blank.data() + length), blank.data() + length);
      ASSERT_EQ(skipWhiteSpace(text.data(), text.data() + text.size()), text.data() + length);
      ASSERT_EQ(skipWhiteSpace(text.data() + length + 1, text.data() + text.size()),
                text.data() + length + 2);
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
