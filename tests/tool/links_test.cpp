// pagescan links, run as a user would.
#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

constexpr char kBase[] = "http://w1/d/page.html?x";

std::vector<Record> linksOf(const std::string& page) {
  const std::vector<Record> records = recordsOf(outputOf({"links", "--base", kBase}, page));
  expectOffsetsMatch(records, page);
  return records;
}

TEST(Links, WritesOneObjectALineWithItsMembersInOrder) {
  EXPECT_EQ(outputOf({"links", "--base", kBase}, "<img SRC=\"a.gif\">"),
            R"({"file":"-","tag":"IMG","attribute":"src","offset":10,"original":"a.gif",)"
            R"("resolved":"http://w1/d/a.gif"})"
            "\n");
}

TEST(Links, ListsTheAttributesOfATagInTheOrderOfTheTable) {
  const auto records = linksOf("<IMG lowsrc=l.gif src=s.gif><LINK rel=icon href=i>");
  ASSERT_EQ(records.size(), 4U);
  EXPECT_EQ(records[0].at("attribute"), "src");
  EXPECT_EQ(records[1].at("attribute"), "lowsrc");
  EXPECT_EQ(records[2].at("attribute"), "href");
  EXPECT_EQ(records[3].at("attribute"), "rel");
}

TEST(Links, AnAttributeWithoutAValueHasTheOffsetMinusOne) {
  const auto records = linksOf("<img src><frame name=f>");
  ASSERT_EQ(records.size(), 2U);
  for (const Record& record : records) {
    EXPECT_EQ(record.at("offset"), -1);
    EXPECT_EQ(record.at("original"), "");
    EXPECT_EQ(record.at("resolved"), "");
  }
}

TEST(Links, NothingToListGivesNoLines) {
  for (const char* format : {"jsonl", "table"}) {
    EXPECT_EQ(outputOf({"links", "--format", format}, ""), "");
    EXPECT_EQ(outputOf({"links", "--format", format}, "<a href=x><p>text"), "");
    EXPECT_EQ(outputOf({"links", "--format", format},
                       "<!-- <img src=a> --><script>'<img src=b>'"
                       "</script>")
                  .find("img"),
              std::string::npos);
  }
}

TEST(Links, ReadsFilesAndStandardInputInTheOrderGiven) {
  TemporaryFolder folder;
  const std::string first = folder.file("first.html", "<img src=1>");
  const std::string last = folder.file("last.html", "<img src=3>");
  const auto records = recordsOf(outputOf({"links", first, "-", last}, "<img src=2>"));
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].at("file"), first);
  EXPECT_EQ(records[1].at("file"), "-");
  EXPECT_EQ(records[2].at("file"), last);
  EXPECT_EQ(records[1].at("original"), "2");
}

TEST(Links, FileNamesMayHoldAnyBytes) {
  TemporaryFolder folder;
  const std::string path = folder.file("[a,b]\xff \"\n.html", "<img src=1>");
  const auto records = recordsOf(outputOf({"links", path}));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(bytesOfMember(records[0], "file"), path);
}

TEST(Links, EveryByteOfAValueComesBack) {
  std::string value;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '"') value.push_back(static_cast<char>(byte));
  }
  const auto records = linksOf("<img src=\"" + value + "\">");
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(bytesOfMember(records[0], "original"), value);
  EXPECT_EQ(records[0].at("bytes").size(), 2U);
}

TEST(Links, OnlyMembersThatAreNotUtf8AreListedAsBytes) {
  struct {
    const char* value;
    std::vector<std::string> listed;
  } const rows[] = {
      {"ascii", {}},
      {"\xC3\xA9t\xC3\xA9", {}},                         // é, é
      {"\xF0\x9F\x98\x80\xED\x9F\xBF\xEE\x80\x80", {}},  // U+1F600, U+D7FF, U+E000
      {"\xE9", {"original", "resolved"}},                // ISO-8859-1
      {"%E9", {"resolved"}},                             // a byte from an escape
      {"\xC3%A9", {"original"}},                         // only resolving makes it UTF-8
      {"\xC0\xAF", {"original", "resolved"}},            // overlong
      {"\xED\xA0\x80", {"original", "resolved"}},        // a surrogate
      {"\xF4\x90\x80\x80", {"original", "resolved"}},    // above U+10FFFF
      {"\xE2\x82", {"original", "resolved"}},            // cut short
  };
  for (const auto& row : rows) {
    const auto records = linksOf("<img src="s + row.value + ">");
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(bytesOfMember(records[0], "original"), row.value);
    const auto listed = records[0].value("bytes", Record::array());
    EXPECT_EQ(listed, Record(row.listed)) << row.value;
  }
}

TEST(Links, NulBytesFromUnreadableEscapesAreNotLost) {
  const auto records = linksOf("<img src=a%zzb%41>");
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("resolved").get<std::string>(), "http://w1/d/a\0bA"s);
}

TEST(Links, NulBytesFromTheBaseAreNotLost) {
  const auto records =
      recordsOf(outputOf({"links", "--base", "http://w1/d%zz/page.html"}, "<img src=a>"));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("resolved").get<std::string>(), "http://w1/d\0/a"s);
}

// A comment inside a value was blanked by the parser; all else is as the page has it.
TEST(Links, OriginalsHoldThePagesOwnBytesAroundAComment) {
  const std::string pages[] = {"<img src='a\0b<!-- c -->d\0'>"s,
                               "<img src='a<script b</script><!-- c -->d'>"s};
  const std::string originals[] = {"a\0b<p>   </p>d\0"s, "a<script b</script><p>   </p>d"s};
  for (int i = 0; i < 2; ++i) {
    const auto records = recordsOf(pagescanTool({"links", "--base", kBase}, pages[i]).out);
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].at("original").get<std::string>(), originals[i]);
  }
}

TEST(Links, NulBytesOfThePageAreReadAsBlanksWithOneWarning) {
  const std::string page = "\0<img src='a\0b'>\0<img src=c\0d>"s;
  const ProgramResult result = pagescanTool({"links", "--base", kBase}, page);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "pagescan: standard input: 4 NUL bytes taken for blanks, from offset 0 on\n");
  const auto records = recordsOf(result.out);
  ASSERT_EQ(records.size(), 2U);
  expectOffsetsMatch(records, page);
  EXPECT_EQ(records[0].at("original").get<std::string>(), "a\0b"s);
  EXPECT_EQ(records[0].at("resolved"), "http://w1/d/a%20b");
  EXPECT_EQ(records[1].at("original"), "c");
}

TEST(Links, AScriptTagThatWouldNeverEndIsPassedOverWithAWarning) {
  const std::string page =
      "<img src=a><SCRIPT src=x </SCRIPT><img src=b>"
      "<script>document.write('<img src=no>')</script><script src=c></script>";
  const ProgramResult result = pagescanTool({"links", "--base", kBase}, page);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.err,
            "pagescan: standard input: offset 11: <SCRIPT without its \">\" before </SCRIPT> is "
            "not taken for a tag\n");
  const auto records = recordsOf(result.out);
  expectOffsetsMatch(records, page);
  ASSERT_EQ(records.size(), 3U);
  EXPECT_EQ(records[0].at("original"), "a");
  EXPECT_EQ(records[1].at("original"), "b");
  EXPECT_EQ(records[2].at("original"), "c");
}

TEST(Links, ThousandsOfScriptTagsThatWouldNeverEndTakeNoTime) {
  std::string inARow;
  std::string inOne;
  for (int i = 0; i < 100'000; ++i) {
    inARow += "<script </script>";
    inOne += "<script ";
  }
  for (const std::string& scripts : {inARow, inOne + "</script>"}) {
    const std::string page = scripts + "<img src=a>";
    const ProgramResult result = pagescanTool({"links"}, page);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 11);
    EXPECT_NE(result.err.find("and 99990 more of these"), std::string::npos) << result.err;
    const auto records = recordsOf(result.out);
    ASSERT_EQ(records.size(), 1U);
    expectOffsetsMatch(records, page);
  }
}

TEST(Links, UrlsAreListedOnceEach) {
  TemporaryFolder folder;
  const std::string page =
      folder.file("page", "<img src=a><img src=b lowsrc><link href=a rel=icon>");
  EXPECT_EQ(outputOf({"links", "--base", kBase, "--format", "urls", page, page}),
            "http://w1/d/a\nhttp://w1/d/b\nhttp://w1/d/icon\n");
  EXPECT_EQ(outputOf({"links", "--base", kBase, "--format", "urls", "--no-rel", page, page}),
            "http://w1/d/a\nhttp://w1/d/b\n");
}

TEST(Links, RelIsLeftOutOnRequest) {
  const std::string page = "<link rel=icon href=a>";
  EXPECT_EQ(recordsOf(outputOf({"links"}, page)).size(), 2U);
  const auto records = recordsOf(outputOf({"links", "--no-rel"}, page));
  ASSERT_EQ(records.size(), 1U);
  EXPECT_EQ(records[0].at("attribute"), "href");
}

TEST(Links, LinesAreWhatAJsonLibraryWrites) {
  std::string value;
  for (int byte = 1; byte < 128; ++byte) {
    if (byte != '\'')
      value.append(static_cast<std::size_t>(byte % 11), 'x').push_back(static_cast<char>(byte));
  }
  const std::string lines =
      outputOf({"links"}, "<img src='" + value + "'><img src='" + value + "\xE9'>");
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) EXPECT_EQ(Record::parse(line).dump(), line);
}

TEST(Links, TheTableShowsWhatTheRecordsSay) {
  EXPECT_EQ(
      outputOf({"links", "--format", "table", "--base", kBase},
               "<img src='a\t\x1b[2J\\\xE9\xC3\xA9\xE2\x80\xAE' lowsrc>"),
      "  OFFSET  TAG       ATTRIBUTE       AS WRITTEN                                RESOLVED\n"
      "      10  IMG       src             a\\x09\\x1b[2J\\\\\\xe9\xC3\xA9\\xe2\\x80\\xae"
      "           http://w1/d/a\\x1b[2J/\\xe9\xC3\xA9\\xe2\\x80\\xae\n"
      "       -  IMG       lowsrc\n");
}

TEST(Links, TablesOfSeveralInputsAreHeadedByTheirNames) {
  TemporaryFolder folder;
  const std::string first = folder.file("first.html", "<img src=1>");
  const std::string empty = folder.file("empty.html", "");
  const std::string last = folder.file("last.html", "<img src=2>");
  const std::string table = outputOf({"links", "--format", "table", first, empty, last});
  EXPECT_EQ(table.find(first + ":\n  OFFSET"), 0U) << table;
  EXPECT_NE(table.find("\n\n" + last + ":\n  OFFSET"), std::string::npos) << table;
  EXPECT_EQ(table.find(empty), std::string::npos) << table;
}

TEST(Links, OnATerminalTheTableIsTheDefault) {
  const ProgramResult result =
      runProgram({"python3", "-c",
                  "import os, pty, sys\n"
                  "master, slave = pty.openpty()\n"
                  "if os.fork() == 0:\n"
                  "    os.dup2(slave, 1)\n"
                  "    os.execv(sys.argv[1], [sys.argv[1], 'links', sys.argv[2]])\n"
                  "os.wait()\n"
                  "print(os.read(master, 4096).decode().split()[0])\n",
                  PAGESCAN_TOOL_PATH, PAGESCAN_SOURCE_DIR "/examples/sample.html"});
  EXPECT_EQ(result.out, "OFFSET\n") << result.err;
}

TEST(Links, TheSamplePageUsesEveryTagOfTheTable) {
  const std::string path = PAGESCAN_SOURCE_DIR "/examples/sample.html";
  const auto records = recordsOf(outputOf({"links", path}));
  expectOffsetsMatch(records, readFile(path));
  for (const char* tag : {"BASE", "BODY", "TABLE", "TD", "TH", "APPLET", "OBJECT", "EMBED", "FRAME",
                          "IFRAME", "IMG", "SCRIPT", "LINK", "INPUT", "XML", "?IMPORT"}) {
    EXPECT_TRUE(std::any_of(records.begin(), records.end(), [&](const Record& record) {
      return record.at("tag") == tag;
    })) << tag;
  }
}

}  // namespace
}  // namespace pagescan::tests
