// pagescan scrub, run as a user would.
#include <random>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

TEST(Scrub, DoesWhatEachOptionSays) {
  const struct {
    std::vector<std::string> options;
    const char* page;
    const char* expected;
  } rows[] = {
      {{"--scripts"}, "<script type=x>a<b</script>c", "<script type=x>   </script>c"},
      {{"--comments"}, "a<!-- x -->b", "a<p>   </p>b"},
      {{"--handlers"}, "<body onload=\"init()\">", "<body onload=\"\">"},
      {{"--tag", "b"}, "<b x>y</b><B>z</B>", "<b></b><b></b>"},
      {{"--tag", "b", "--tag", "i"}, "<b>y</b><i>z</i>", "<b></b><i></i>"},
      {{"--comments", "--scripts"},
       "<script><!-- x --></script><!-- y -->",
       "<script>          </script><p>   </p>"},
      {{"--tag", "p", "--comments"}, "<!-- y -->", "<p></p>"},
  };
  for (const auto& row : rows) {
    std::vector<std::string> arguments = {"scrub"};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    EXPECT_EQ(outputOf(arguments, row.page), row.expected);
    EXPECT_EQ(outputOf(arguments, ""), "");
  }
}

TEST(Scrub, ATagTakesOneNameAndLeavesTheFiles) {
  TemporaryFolder folder;
  const std::string file = folder.file("page.html", "<b>x</b>\n");
  EXPECT_EQ(outputOf({"scrub", "--tag", "b", file, "-"}, "<b>y</b>"), "<b></b>\n<b></b>");
}

TEST(Scrub, TheLongestNameIsTaken) {
  const std::string name(254, 'x');
  EXPECT_EQ(outputOf({"scrub", "--tag", name}, "<" + name + ">y</" + name + ">"),
            "<" + name + "></" + name + ">");
}

TEST(Scrub, KeepsEveryByteThatItDoesNotBlank) {
  EXPECT_EQ(outputOf({"scrub", "--scripts", "--comments"}, "\0\xFF\r\n<script>\0</script>\0"s),
            "\0\xFF\r\n<script> </script>\0"s);
}

TEST(Scrub, LeavesAScriptTagThatWouldNeverEndAndBlanksTheOthers) {
  const ProgramResult result =
      pagescanTool({"scrub", "--scripts"}, "<Script x</script>y<script>z</script>");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out, "<Script x</script>y<script> </script>");
  EXPECT_EQ(result.err,
            "pagescan: standard input: offset 0: <SCRIPT without its \">\" before </SCRIPT> is not "
            "taken for a tag\n");
}

TEST(Scrub, TellsAboutScriptsThatStay) {
  const struct {
    const char* page;
    std::vector<int> offsets;
  } rows[] = {
      {"<script>a</script></script><script>b</script> <script>c</script>", {27, 46}},
      {"x<script>a", {1}},
      {"<script> \n</script></script><script>\t</script>", {}},
      {"<script src=a", {}},
  };
  for (const auto& row : rows) {
    std::string expected;
    for (const int offset : row.offsets) {
      expected += "pagescan: standard input: offset " + std::to_string(offset) +
                  ": this script stays as it is\n";
    }
    const ProgramResult result = pagescanTool({"scrub", "--scripts"}, row.page);
    EXPECT_EQ(result.status, 0) << row.page;
    EXPECT_EQ(result.err, expected) << row.page;
  }
}

TEST(Scrub, NamesAreComparedByTheirBeginning) {
  EXPECT_EQ(outputOf({"scrub", "--tag", "b"}, "<body>x<b>y</b>z</body>"), "<b></b>z</body>");
}

TEST(Scrub, BlankingScriptsAlwaysReturnsAndKeepsTheLength) {
  const unsigned seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  const char* const kPieces[] = {"<script", "</script>", ">", "x", "<", "<SCRIPT>", "\0"};
  const std::string longGap(2000, 'y');
  TemporaryFolder folder;
  std::vector<std::string> arguments = {"scrub", "--scripts"};
  std::size_t length = 0;
  for (int i = 0; i < 500; ++i) {
    std::string page;
    for (auto pieces = random() % 12; pieces != 0; --pieces) {
      page += random() % 8 == 0 ? longGap : kPieces[random() % std::size(kPieces)];
    }
    length += page.size();
    arguments.push_back(folder.file(std::to_string(i), page));
  }
  const ProgramResult result = pagescanTool(arguments);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.size(), length);
}

}  // namespace
}  // namespace pagescan::tests
