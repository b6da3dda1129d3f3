// Scripts and comments blanked in one pass, beside the two passes one after the other.
#include "classic/blanking.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/texts.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {

using namespace internal;
namespace {

const std::vector<std::string_view> kPieces = {
    "<script", "</SCRIPT>", "<!--", "-->", ">", "-", "<scr", " ", "</s",
};

// With tags that end, or hardly any long text would be one that has to return.
const std::vector<std::string_view> kWholeTags = {
    "<script>", "<Script x='-->'>", "</script>", "<!--", "-->", "x", "-", "<scr", "</span>", "<!",
};

struct PageCase {
  Here here;
  std::string_view page;
  std::string_view expected;
};
constexpr PageCase kPages[] = {
    {HERE, "", ""},
    {HERE, "<!-- a --><script>b</script>", "<p>   </p><script> </script>"},
    // A comment's delimiters in the body of a script are blanked with it, in its tag they count.
    {HERE, "<script><!-- a --></script><!-- b -->", "<script>          </script><p>   </p>"},
    {HERE, "<script <!-->a</script>--> <!-- b -->", "<script <!--> </script>--> <!-- b -->"},
    {HERE, "<script x='-- >'>a</script>", "<script x='-- >   </script>"},
    // Scripts do not mind comments.
    {HERE, "<!-- <script> --> </script> x", "<!-- <script>     </script> x"},
    // In the tag of a script no other one begins, and none ends.
    {HERE, "<script <script <!-- >a</script> -->", "<script <script <p>             </p>"},
    {HERE, "<script </scr <!-- >a</script> -->", "<script </scr <p>             </p>"},
    // A stray or missing end of a script: comments alone are blanked from there on.
    {HERE, "<!--a--></script><!--b--><script>c</script>",
     "<p> </p></script><p> </p><script>c</script>"},
    {HERE, "<!--a--><script>b<!--c-->", "<p> </p><script>b<p> </p>"},
    {HERE, "<!-- a </scripts> --> <script>b", "<p>              </p> <script>b"},
    // A stray end of a comment: scripts alone are blanked from there on.
    {HERE, "<script>a</script>--><!--b--><script>c</script>",
     "<script> </script>--><!--b--><script> </script>"},
    // What only looks like the begin of a delimiter.
    {HERE, "<!- a --b </s </sc <scr <s -- >", "<!- a --b </s </sc <scr <s -- >"},
    {HERE, "<script>a</script> </scriptx> <!", "<script> </script> </scriptx> <!"},
};

// Alone, and within a text of some vectors.
TEST(BlankingScriptsAndComments, BlanksBothInOnePass) {
  forEachKernelLevel([] {
    forEachPlacement(kPages, [](const PageCase& row, Placement& place) {
      for (const std::string& around : {std::string(), repeated("x", 70)}) {
        RWCString& page = place.string(around + std::string(row.page) + around);
        blankScriptsAndComments(page);
        EXPECT_EQ(bytesOf(page), around + std::string(row.expected) + around);
      }
    });
  });
}

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
    for (std::size_t i = randomRuns(5000, 500000); i > 0; --i) {
      expectSame(random.textOfRuns(kWholeTags, 20));
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
