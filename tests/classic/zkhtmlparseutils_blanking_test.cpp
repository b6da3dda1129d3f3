#include <gtest/gtest.h>
#include <sys/time.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>

#include "classic/blanking.h"
#include "support/placement.h"
#include "support/texts.h"
#include "zkhtmlparseutils.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

constexpr std::size_t npos = RWCString::npos;

// --- Delimited regions ------------------------------------------------------------------------

struct RegionCase {
  Here here;
  std::string_view open;
  std::string_view close;
  std::string_view text;
  std::string_view expected;
};

void expectBlanked(const RegionCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  const RWCString keeper(text);
  tqOverwriteTagWithBlanks(text, place.string(row.open), place.string(row.close));
  EXPECT_EQ(bytesOf(text), row.expected);
  EXPECT_EQ(text.length(), row.text.size());
  EXPECT_EQ(bytesOf(keeper), row.text);
}

constexpr RegionCase kComments[] = {
    {HERE, "<!--", "-->", ""sv, ""sv},
    {HERE, "<!--", "-->", "no comment"sv, "no comment"sv},
    {HERE, "<!--", "-->", "<!-- x -->"sv, "<p>   </p>"sv},
    {HERE, "<!--", "-->", "a<!--x-->b"sv, "a<p> </p>b"sv},
    {HERE, "<!--", "-->", "<!---->"sv, "<p></p>"sv},
    {HERE, "<!--", "-->", "<!--a--><!--b-->"sv, "<p> </p><p> </p>"sv},
    {HERE, "<!--", "-->", "x<!-- <img src=a.gif> -->y"sv, "x<p>                 </p>y"sv},
    {HERE, "<!--", "-->", "<!-- \0\xFF -->"sv, "<p>    </p>"sv},
    {HERE, "<!--", "-->", "<!-- <!-- -->-"sv, "<p>      </p>-"sv},
    // Too short for "<p></p>": left as they are, and the scan goes on after them.
    {HERE, "<!--", "-->", "<!--->"sv, "<!--->"sv},
    {HERE, "<!--", "-->", "<!-->"sv, "<!-->"sv},
    {HERE, "<!--", "-->", "<!--> x <!-- y -->"sv, "<!--> x <p>   </p>"sv},
    {HERE, "<!--", "-->", "<!---><!--z-->"sv, "<!---><p> </p>"sv},
    // A delimiter is missing.
    {HERE, "<!--", "-->", "<!-- x"sv, "<!-- x"sv},
    {HERE, "<!--", "-->", "<!-"sv, "<!-"sv},
    {HERE, "<!--", "-->", "<!-- a --><!-- b"sv, "<p>   </p><!-- b"sv},
    {HERE, "<!--", "-->", "<!-- a --> --"sv, "<p>   </p> --"sv},
    // A closer before the next opener ends all blanking.
    {HERE, "<!--", "-->", "-->"sv, "-->"sv},
    {HERE, "<!--", "-->", "--> <!-- x -->"sv, "--> <!-- x -->"sv},
    {HERE, "<!--", "-->", "<!-- a --> --> <!-- b -->"sv, "<p>   </p> --> <!-- b -->"sv},
    {HERE, "<!--", "-->", "<!-- a <!-- b --> c --> <!-- d -->"sv,
     "<p>          </p> c --> <!-- d -->"sv},
    {HERE, "<!--", "-->", "<!-- a -->-->"sv, "<p>   </p>-->"sv},
};

TEST(TqOverwriteTagWithBlanks, MakesCommentsEmptyParagraphs) {
  forEachPlacement(kComments, expectBlanked);
}

constexpr std::string_view kLongDelimiter = "a begin that is longer than thirty-two bytes";

constexpr RegionCase kOtherRegions[] = {
    // Delimiters match in either case, the paragraph is always written in lower case.
    {HERE, "<STYLE"sv, "</style>"sv, "<Style>a</STYLE>b"sv, "<p>         </p>b"sv},
    {HERE, "<!doctype"sv, ">"sv, "<!DOCTYPE x>y"sv, "<p>     </p>y"sv},
    {HERE, "<A"sv, "</A>"sv, "<a>1</a><abbr>2</A>"sv, "<p> </p><p>    </p>"sv},
    {HERE, "\xC4"sv, "\xD6"sv, "\xE4 123456 \xF6"sv, "\xE4 123456 \xF6"sv},
    {HERE, "\xC4"sv, "\xD6"sv, "\xC4 123456 \xD6"sv, "<p>   </p>"sv},
    {HERE, "<"sv, ">"sv, "a<b>c<def gh>"sv, "a<b>c<p> </p>"sv},
    // An empty opener is found where the scan stands.
    {HERE, ""sv, ">"sv, "abcdefgh>"sv, "<p>  </p>"sv},
    {HERE, ""sv, ">"sv, "ab>"sv, "ab>"sv},
    {HERE, ""sv, ">"sv, "ab>abcdefgh>"sv, "ab><p>  </p>"sv},
    {HERE, ""sv, ">"sv, ">abcdefgh>"sv, ">abcdefgh>"sv},
    {HERE, ""sv, ">"sv, "abcdef"sv, "abcdef"sv},
    // An empty closer is found where the scan stands, so never after the opener.
    {HERE, "<"sv, ""sv, "<abcdefgh>"sv, "<abcdefgh>"sv},
    {HERE, "<"sv, ""sv, "ab<abcdefgh>"sv, "ab<abcdefgh>"sv},
    {HERE, ""sv, ""sv, "abcdefgh"sv, "abcdefgh"sv},
    {HERE, ""sv, ""sv, ""sv, ""sv},
    // One delimiter for both ends is its own stray closer.
    {HERE, "--"sv, "--"sv, "-- comment --"sv, "-- comment --"sv},
    // Delimiters may overlap: only the closer's place counts.
    {HERE, "<<<"sv, "<<"sv, "<<<    <<"sv, "<<<    <<"sv},
    {HERE, "abcdefg"sv, "bcdefgh"sv, "xabcdefghy"sv, "x<p> </p>y"sv},
    {HERE, "ab"sv, "bc"sv, "abcabc"sv, "abcabc"sv},
    {HERE, "ab"sv, "bc"sv, "abc ab123bc"sv, "abc <p></p>"sv},
    {HERE, "a\0"sv, "\0b"sv, "xa\0 123\0by"sv, "x<p> </p>y"sv},
    // Delimiters that share several bytes, beside texts that hold the shared ones alone.
    {HERE, "!!--a"sv, "!!--b"sv, "!!--c !!--a 12 !!--b !!--"sv, "!!--c <p>       </p> !!--"sv},
    {HERE, "--!"sv, "=--="sv, "--? --! =-- =--="sv, "--? <p>     </p>"sv},
    // Long ones.
    {HERE, kLongDelimiter, ">"sv, "a begin THAT is longer than thirty-two bytes>"sv,
     "<p>                                      </p>"sv},
    {HERE, kLongDelimiter, kLongDelimiter, "x a begin that is longer than thirty-two bytes"sv,
     "x a begin that is longer than thirty-two bytes"sv},
    {HERE, "<"sv, kLongDelimiter, "<a begin that is longer than thirty-two bytes"sv,
     "<p>                                      </p>"sv},
    // The closer no longer fits after the scan's place.
    {HERE, "<"sv, "a closer that is longer than the text"sv, "<x>"sv, "<x>"sv},
};

TEST(TqOverwriteTagWithBlanks, TakesAnyDelimiters) {
  forEachPlacement(kOtherRegions, expectBlanked);
}

constexpr std::size_t kMany = 400000;

TEST(TqOverwriteTagWithBlanks, EndsOnLargeTexts) {
  const auto blanked = [](const std::string& bytes) {
    RWCString text = stringOf(bytes);
    tqOverwriteTagWithBlanks(text, "<!--", "-->");
    return std::string(bytesOf(text));
  };
  const std::string openers = repeated("<!-- ", kMany);
  EXPECT_EQ(blanked(openers), openers);
  EXPECT_EQ(blanked(openers + "-->"), "<p>" + std::string(openers.size() - 4, ' ') + "</p>");
  EXPECT_EQ(blanked(repeated("<!--a-->", kMany)), repeated("<p> </p>", kMany));
  const std::string tooShort = repeated("<!-->", kMany);
  EXPECT_EQ(blanked(tooShort), tooShort);
  const std::string closers = repeated("-->", kMany);
  EXPECT_EQ(blanked(closers), closers);
}

// --- Script bodies ----------------------------------------------------------------------------

struct ScriptCase {
  Here here;
  std::string_view text;
  std::string_view expected;
};
constexpr ScriptCase kScripts[] = {
    {HERE, ""sv, ""sv},
    {HERE, "no script"sv, "no script"sv},
    {HERE, "<script type=x>a<b</script>"sv, "<script type=x>   </script>"sv},
    {HERE, "<SCRIPT></SCRIPT>"sv, "<SCRIPT></SCRIPT>"sv},
    {HERE, "x<ScRiPt>a</sCrIpT>y"sv, "x<ScRiPt> </sCrIpT>y"sv},
    {HERE, "<script>a</script>b<script>cd</script>"sv, "<script> </script>b<script>  </script>"sv},
    {HERE, "<script>\0\n\xFF</script>"sv, "<script>   </script>"sv},
    {HERE, "<script> <script> </script> </script>"sv, "<script>          </script> </script>"sv},
    {HERE, "<script>a<script>b</script>"sv, "<script>          </script>"sv},
    // The first ">" ends the opening tag, inside a quoted value too.
    {HERE, "<SCRIPT src=\"a>b\">x</SCRIPT>"sv, "<SCRIPT src=\"a>    </SCRIPT>"sv},
    {HERE, "<script>></script>"sv, "<script> </script>"sv},
    // Names are matched as prefixes, the closing tag whole.
    {HERE, "<scripts>a</script>"sv, "<scripts> </script>"sv},
    {HERE, "<script>a</scripts>"sv, "<script>a</scripts>"sv},
    {HERE, "<script>a</script >b</script>"sv, "<script>            </script>"sv},
    // The opener of a second element lends its ">" to the first.
    {HERE, "<script <script>a</script>"sv, "<script <script> </script>"sv},
    // A delimiter is missing, or a closing tag comes first.
    {HERE, "a</SCRIPT>b"sv, "a</SCRIPT>b"sv},
    {HERE, "<script>a"sv, "<script>a"sv},
    {HERE, "<script"sv, "<script"sv},
    {HERE, "</script"sv, "</script"sv},
    {HERE, "</script><script>a</script>"sv, "</script><script>a</script>"sv},
    {HERE, "<script>a</script></script><script>b</script>"sv,
     "<script> </script></script><script>b</script>"sv},
    {HERE, "<script>a</script><script>b"sv, "<script> </script><script>b"sv},
    // The closing tag ends before its ">" would be looked for again.
    {HERE, "</script><script</script>"sv, "</script><script</script>"sv},
};

TEST(TqOverwriteScriptWithBlanks, BlanksTheBodiesAlone) {
  forEachPlacement(kScripts, [](const ScriptCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    const RWCString keeper(text);
    EXPECT_EQ(tqFindEndlessScript(text), npos);
    tqOverwriteScriptWithBlanks(text);
    EXPECT_EQ(bytesOf(text), row.expected);
    EXPECT_EQ(text.length(), row.text.size());
    EXPECT_EQ(bytesOf(keeper), row.text);
  });
}

struct EndlessCase {
  Here here;
  std::string_view text;
  std::size_t offset;
};
constexpr EndlessCase kEndless[] = {
    {HERE, "<script</script>"sv, 0},
    {HERE, "<script </script>"sv, 0},
    {HERE, "ab<SCRIPT src=x</SCRIPT>cd>"sv, 2},
    {HERE, "<script>a</script> <script x</script>"sv, 19},
    {HERE, "<script\0</script>"sv, 0},
    {HERE, "<script<script</script>"sv, 0},
    {HERE, "<!-- a --><script x</script>"sv, 10},
    {HERE, "<!--<script x</script>-->"sv, 4},
    {HERE, "--><script x</script>"sv, 3},
};

TEST(TqFindEndlessScript, NamesTheOpeningTagWithoutItsEnd) {
  forEachPlacement(kEndless, [](const EndlessCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    EXPECT_EQ(tqFindEndlessScript(text), row.offset);
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

struct StartCase {
  Here here;
  std::string_view text;
  std::size_t start;
  std::size_t offset;
};
constexpr StartCase kStarts[] = {
    {HERE, "<script</script>"sv, 0, 0},
    {HERE, "<script</script>"sv, 1, npos},
    {HERE, "<script</script>"sv, 16, npos},
    {HERE, "<script</script>"sv, 17, npos},
    {HERE, "<script</script>"sv, npos, npos},
    {HERE, ""sv, 0, npos},
    {HERE, "<script</script><script</script>"sv, 16, 16},
    {HERE, "<script>a</script> <script x</script>"sv, 18, 19},
    // A stray end after the start is one, as it is in blanking.
    {HERE, "<script>a</script> <script x</script>"sv, 9, npos},
};

TEST(TqFindEndlessScript, LooksFromAStartOn) {
  forEachPlacement(kStarts, [](const StartCase& row, Placement& place) {
    EXPECT_EQ(tqFindEndlessScript(place.string(row.text), row.start), row.offset);
  });
}

// Runs in a child process that the timer ends.
void blankUntilTheTimerEndsIt(void (*blank)(RWCString& text), std::string_view text) {
  itimerval limit = {};
  limit.it_value.tv_usec = 200000;
  setitimer(ITIMER_REAL, &limit, nullptr);
  RWCString page = stringOf(text);
  blank(page);
  _exit(0);
}

// Alone, and in one pass with comments as ParseHTML does it.
TEST(TqOverwriteScriptWithBlanksDeathTest, NeverReturnsOnAnEndlessScript) {
  for (auto* blank : {tqOverwriteScriptWithBlanks, blankScriptsAndComments}) {
    forEachRow(kEndless, [&](const EndlessCase& row) {
      EXPECT_EXIT(blankUntilTheTimerEndsIt(blank, row.text), testing::KilledBySignal(SIGALRM), "");
    });
  }
}

TEST(TqOverwriteScriptWithBlanks, EndsOnLargeTexts) {
  const auto blanked = [](const std::string& bytes) {
    RWCString text = stringOf(bytes);
    EXPECT_EQ(tqFindEndlessScript(text), npos);
    tqOverwriteScriptWithBlanks(text);
    return std::string(bytesOf(text));
  };
  const std::string openers = repeated("<script>", kMany);
  EXPECT_EQ(blanked(openers), openers);
  EXPECT_EQ(blanked(openers + "</script>"),
            "<script>" + std::string(openers.size() - 8, ' ') + "</script>");
  EXPECT_EQ(blanked(repeated("<script>a</script>", kMany / 4)),
            repeated("<script> </script>", kMany / 4));
  const std::string unfinished = repeated("<script ", kMany);
  EXPECT_EQ(blanked(unfinished), unfinished);
  const std::string closers = repeated("</script>", kMany);
  EXPECT_EQ(blanked(closers), closers);
}

TEST(TqFindEndlessScript, EndsOnLargeTexts) {
  const std::string many = repeated("<script>a</script>", kMany / 4);
  EXPECT_EQ(tqFindEndlessScript(stringOf(many + "<script</script>")), many.size());
  EXPECT_EQ(tqFindEndlessScript(stringOf(repeated("<script ", kMany) + "</script>")), 0U);
}

}  // namespace
}  // namespace pagescan::tests
