// Scripts and comments blanked in one pass, beside the two passes one after the other.
#include "blanking.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/generated_texts.h"
#include "support/placement.h"
#include "zkhtmlparseutils.h"

namespace pagescan {
namespace {

const std::vector<std::string_view> kPieces = {
    "<script", "</SCRIPT>", "<!--", "-->", ">", "-", "<scr", " ", "</s",
};

// With tags that end, or hardly any long text would be one that has to return.
const std::vector<std::string_view> kWholeTags = {
    "<script>", "<Script x='-->'>", "</script>", "<!--", "-->", "x", "-", "<scr", "</span>", "<!",
};

void expectSame(const std::string& text) {
  RWCString page = stringOf(text);
  if (tqFindEndlessScript(page) != RWCString::npos) return;
  RWCString twin = page;
  tqOverwriteScriptWithBlanks(twin);
  tqOverwriteTagWithBlanks(twin, "<!--", "-->");
  blankScriptsAndComments(page);
  ASSERT_EQ(bytesOf(page), bytesOf(twin)) << text;
}

TEST(BlankingScriptsAndComments, IsTheSameInOnePassForSmallTexts) {
  forEachKernelLevel([] { forEachText(kPieces, inShortOrDeepRun(5, 6), expectSame); });
}

TEST(BlankingScriptsAndComments, IsTheSameInOnePassForLongTexts) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = inShortOrDeepRun(5000, 500000); i > 0; --i) {
      expectSame(random.textOfRuns(kWholeTags, 20));
    }
  });
}

}  // namespace
}  // namespace pagescan
