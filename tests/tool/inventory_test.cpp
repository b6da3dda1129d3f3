// pagescan inventory, run as a user would.
#include <filesystem>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

using namespace std::string_literals;

constexpr char kUrl[] = "http://h.test/d/p.html?q#f";
constexpr char kCases[] = PAGESCAN_SHARED_DIR "/golden/inventory/cases.jsonl";
constexpr char kPages[] = PAGESCAN_SHARED_DIR "/golden/inventory/pages";
constexpr char kPageFolder[] = PAGESCAN_SHARED_DIR "/golden/pages/";

std::vector<Record> inventoryOf(std::vector<std::string> options, const std::string& page) {
  options.insert(options.begin(), {"inventory", "--format", "jsonl"});
  return recordsOf(outputOf(options, page));
}

// The bytes of a text in which each code point is one.
std::string bytesOfCodePoints(const std::string& text) {
  return bytesOfMember({{"text", text}, {"bytes", {"text"}}}, "text");
}

// A reference that can be compared: without the name of its input, its flags in order.
Record comparable(Record reference) {
  reference.erase("file");
  if (reference.contains("flags")) {
    std::sort(reference["flags"].begin(), reference["flags"].end());
  }
  // The order of the members says nothing.
  return Record::parse(nlohmann::json::parse(reference.dump()).dump());
}

void expectInventory(const std::vector<Record>& references, const std::vector<Record>& expected) {
  EXPECT_EQ(references.size(), expected.size());
  for (std::size_t i = 0; i < std::min(references.size(), expected.size()); ++i) {
    EXPECT_EQ(comparable(references[i]), comparable(expected[i])) << "reference " << i;
  }
}

std::vector<std::string> optionsOf(const Record& row) {
  std::vector<std::string> options = {"--scripting", row.at("scripting")};
  for (const char* name : {"url", "charset"}) {
    if (!row.at(name).is_null()) options.insert(options.end(), {"--"s + name, row.at(name)});
  }
  for (const Record& profile : row.at("profiles")) {
    options.insert(options.end(), {"--profile", profile});
  }
  return options;
}

TEST(Inventory, IsTheExpectedOneForMadeUpPages) {
  if (!std::filesystem::exists(kCases)) GTEST_SKIP() << "no cases at hand";
  for (const Record& row : recordsOf(readFile(kCases))) {
    SCOPED_TRACE(row.at("name"));
    const std::string page = bytesOfCodePoints(row.at("page"));
    expectInventory(inventoryOf(optionsOf(row), page), row.at("want"));
  }
}

TEST(Inventory, IsTheExpectedOneForRealPages) {
  if (!std::filesystem::exists(kPages)) GTEST_SKIP() << "no pages at hand";
  for (const auto& entry : std::filesystem::directory_iterator(kPages)) {
    const std::string name = entry.path().stem();  // NAME.on or NAME.off
    SCOPED_TRACE(name);
    const std::size_t dot = name.rfind('.');
    const std::vector<std::string> options = {
        "--scripting", name.substr(dot + 1), "--url",
        "https://www.example.com/section/article.html?id=1#top"};
    expectInventory(inventoryOf(options, readFile(kPageFolder + name.substr(0, dot))),
                    recordsOf(readFile(entry.path())));
  }
}

TEST(Inventory, JsonLinesHaveTheirMembersInOrder) {
  EXPECT_EQ(outputOf({"inventory", "--url", kUrl}, "<p>\r\n<img src=\"a&amp;\xE9\">"),
            R"({"file":"-","start":15,"end":22,"line":2,"column":11,"element":"img",)"
            R"("attribute":"src","kind":"load","slot":"url","raw":"a&amp;)"
            "\xC3\xA9"
            R"(","value":"a&)"
            "\xC3\xA9"
            R"(","url":"http://h.test/d/a&%C3%A9","bytes":["raw"]})"
            "\n");
  const auto flagged =
      inventoryOf({"--url", kUrl}, "<noscript><img src=a loading=lazy></noscript>");
  ASSERT_EQ(flagged.size(), 1U);
  EXPECT_EQ(flagged[0].at("flags"), Record({"noscript"}));
  EXPECT_EQ(flagged[0].at("parent"), 0);
}

TEST(Inventory, LinesAreWhatAJsonLibraryWrites) {
  std::string value;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '\'') value.append(1, 'x').push_back(static_cast<char>(byte));
  }
  const std::string lines =
      outputOf({"inventory"}, "<img src='" + value + "'><a href='" + value.substr(0, 200) + "'>");
  EXPECT_EQ(recordsOf(lines).size(), 2U);
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) EXPECT_EQ(Record::parse(line).dump(), line);
}

TEST(Inventory, WithoutAUrlOnlyAbsoluteOnesResolve) {
  const auto references = inventoryOf({}, "<img src=a><img src=http://o/b>");
  ASSERT_EQ(references.size(), 2U);
  EXPECT_FALSE(references[0].contains("url"));
  EXPECT_EQ(references[1].at("url"), "http://o/b");
}

TEST(Inventory, TheTableShowsPlacesAndUrls) {
  EXPECT_EQ(outputOf({"inventory", "--format", "table", "--url", kUrl},
                     "<img src=a>\n<style>@import 'b'</style><a href='http://['>"),
            "  LINE:COL  KIND        PLACE                 URL (OR THE VALUE)\n"
            "      1:10  load        img src               http://h.test/d/a\n"
            "      2:17  load        style                 http://h.test/d/b\n"
            "      2:36  navigation  a href                (http://[)\n");
}

TEST(Inventory, NothingInATableActsOnTheTerminal) {
  const std::string table =
      outputOf({"inventory", "--format", "table", "--charset", "utf-8"},
               "<a href='//[\x1b[2J\\\xC2\x9B\xE2\x80\xAE'><img\x1b[2J src=b><img src='//[\x07'>");
  for (const char byte : {'\x1b', '\x07', '\x9B', '\xAE'}) {
    EXPECT_EQ(table.find(byte), std::string::npos) << table;
  }
  EXPECT_NE(table.find("\\x1b[2J"), std::string::npos) << table;
}

TEST(Inventory, UrlsAreListedOnceEachOverAllInputs) {
  TemporaryFolder folder;
  const std::string page =
      folder.file("page", "<img src=a><img src=b><a href=a><a href='http://['>");
  const std::string other = folder.file("other", "<img src=c><img src=a>");
  for (const char* jobs : {"1", "4"}) {
    EXPECT_EQ(
        outputOf({"inventory", "--format", "urls", "--url", kUrl, "--jobs", jobs, page, other}),
        "http://h.test/d/a\nhttp://h.test/d/b\nhttp://h.test/d/c\n");
  }
}

TEST(Inventory, KindsAreChosen) {
  const std::string page = "<a href=a><img src=b><form action=c>";
  EXPECT_EQ(
      outputOf({"inventory", "--format", "urls", "--url", kUrl, "--kind", "load", "--kind", "form"},
               page),
      "http://h.test/d/b\nhttp://h.test/d/c\n");
}

TEST(Inventory, ProfilesAddPlaces) {
  const std::string page = "<img data-src=a><meta property=og:image content=b>";
  const auto urls = [&](std::vector<std::string> options) {
    options.insert(options.begin(), {"inventory", "--format", "urls", "--url", kUrl});
    return outputOf(options, page);
  };
  EXPECT_EQ(urls({}), "");
  EXPECT_EQ(urls({"--profile", "standard"}), "");
  EXPECT_EQ(urls({"--profile", "lazy"}), "http://h.test/d/a\n");
  EXPECT_EQ(urls({"--profile", "lazy", "--profile", "meta"}),
            "http://h.test/d/a\nhttp://h.test/d/b\n");
}

TEST(Inventory, PlacesOfAUserAreRead) {
  TemporaryFolder folder;
  const std::string places = folder.file("places", "standard\thtml\timg\tdata-zoom\turl\tload\t\n");
  EXPECT_EQ(outputOf({"inventory", "--places", places, "--format", "urls", "--url", kUrl},
                     "<img data-zoom=a>"),
            "http://h.test/d/a\n");
}

TEST(Inventory, AWrongTableOfPlacesEndsItWithItsLine) {
  TemporaryFolder folder;
  const std::string places = folder.file("places", "# mine\nstandard\thtml\timg\n");
  const ProgramResult wrong = pagescanTool({"inventory", "--places", places}, "<img src=a>");
  EXPECT_EQ(wrong.status, 2);
  EXPECT_EQ(wrong.out, "");
  EXPECT_EQ(wrong.err.find("pagescan: " + places + ": line 2: "), 0U) << wrong.err;
  const ProgramResult missing = pagescanTool({"inventory", "--places", "/none"}, "<img src=a>");
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.err, "pagescan: /none: No such file or directory\n");
}

TEST(Inventory, AWrongTableOfPlacesCannotActOnTheTerminal) {
  TemporaryFolder folder;
  const std::string places = folder.file("places", "\x1B[31m\thtml\timg\tsrc\turl\tload\n");
  EXPECT_EQ(pagescanTool({"inventory", "--places", places}, "").err,
            "pagescan: " + places + ": line 1: unknown profile \"\\x1b[31m\"\n");
}

TEST(Inventory, StyleSheetsAreReadOnRequest) {
  const auto references = inventoryOf({"--css", "--url", "http://h.test/s/a.css"},
                                      "@import \"b.css\";\np{background:url(c.png)}");
  ASSERT_EQ(references.size(), 2U);
  EXPECT_EQ(references[0].at("url"), "http://h.test/s/b.css");
  EXPECT_EQ(references[0].at("element"), "");
  EXPECT_EQ(references[0].at("attribute"), "");
  EXPECT_EQ(references[1].at("line"), 2);
  EXPECT_EQ(references[1].at("flags"), Record({"conditional"}));
}

TEST(Inventory, PagesOfUtf16AreRead) {
  const auto references =
      inventoryOf({"--url", kUrl}, "\xFF\xFE<\0i\0m\0g\0 \0s\0r\0c\0=\0a\0>\0"s);
  ASSERT_EQ(references.size(), 1U);
  EXPECT_EQ(references[0].at("start"), 20);
  EXPECT_EQ(references[0].at("url"), "http://h.test/d/a");
}

// Pages and inputs that fail, in a row that several threads share.
struct ManyInputs {
  TemporaryFolder folder;
  std::vector<std::string> arguments = {"inventory", "--url", kUrl};
  std::string err;

  ManyInputs() {
    for (int i = 0; i < 120; ++i) {
      const std::string name = std::to_string(i);
      std::string page;
      for (int links = 0; links < (i % 7 == 0 ? 4000 : 3); ++links) page += "<a href=" + name + ">";
      if (i % 10 == 3) page = "\x1F\x8B\x08";
      arguments.push_back(i % 10 == 4 ? folder.path() + "/none" + name : folder.file(name, page));
      if (i % 10 == 3) fails("not read: it looks like gzip (zcat unpacks it)");
      if (i % 10 == 4) fails("No such file or directory");
    }
  }

 private:
  void fails(const std::string& reason) {
    err += "pagescan: " + arguments.back() + ": " + reason + "\n";
  }
};

TEST(Inventory, OutputAndMessagesStayInOrderWhateverTheJobs) {
  const ManyInputs inputs;
  for (const char* format : {"jsonl", "table", "urls"}) {
    std::string expected;
    for (const char* jobs : {"1", "2", "7", "256"}) {
      auto arguments = inputs.arguments;
      arguments.insert(arguments.end(), {"--format", format, "--jobs", jobs});
      const ProgramResult result = pagescanTool(arguments);
      EXPECT_EQ(result.status, 1);
      EXPECT_EQ(result.err, inputs.err);
      if (expected.empty()) expected = result.out;
      EXPECT_TRUE(result.out == expected) << format << " " << jobs;
    }
  }
}

TEST(Inventory, AnOutputThatIsFullEndsAllJobs) {
  const ManyInputs inputs;
  for (const char* jobs : {"1", "5"}) {
    auto arguments = inputs.arguments;
    arguments.insert(arguments.end(), {"--jobs", jobs});
    const ProgramResult result = pagescanTool(arguments, "", "/dev/full");
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("cannot write the output: No space left on device\n"),
              std::string::npos);
  }
}

TEST(Inventory, LongWorkShowsItsProgressOnATerminal) {
  const ProgramResult result = runProgram(
      {"python3", "-c",
       "import os, pty, subprocess, sys, time\n"
       "master, slave = pty.openpty()\n"
       "run = subprocess.Popen([sys.argv[1], 'inventory', '-', sys.argv[2]], stderr=slave,\n"
       "                       stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)\n"
       "time.sleep(1.5)\n"
       "run.stdin.close()\n"
       "run.wait()\n"
       "print(repr(os.read(master, 4096)))\n",
       PAGESCAN_TOOL_PATH, PAGESCAN_SOURCE_DIR "/examples/gallery.html"});
  EXPECT_EQ(result.out, "b'\\r\\x1b[K1 of 2 inputs\\r\\x1b[K'\n") << result.err;
}

TEST(Inventory, WrongNumbersOfJobsAreRefused) {
  for (const char* jobs : {"0", "257", "-1", "x", ""}) {
    EXPECT_EQ(pagescanTool({"inventory", "--jobs", jobs}).status, 2) << jobs;
  }
}

TEST(Inventory, FourGibibytesAreRefused) {
  TemporaryFolder folder;
  const std::string large = folder.file("large", "");
  std::filesystem::resize_file(large, std::uintmax_t{1} << 32);
  const std::string good = folder.file("good", "<img src=a>");
  const ProgramResult result = pagescanTool({"inventory", large, good});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "pagescan: " + large + ": too large: 4 GiB or more\n");
  EXPECT_EQ(result.out, outputOf({"inventory", good}));
}

TEST(Inventory, TheSamplePageShowsItsPlaces) {
  const std::string path = PAGESCAN_SOURCE_DIR "/examples/gallery.html";
  const std::string page = readFile(path);
  const auto references =
      recordsOf(outputOf({"inventory", "--url", kUrl, "--profile", "meta", path}));
  for (const Record& reference : references) {
    const auto start = reference.at("start").get<std::size_t>();
    const auto end = reference.at("end").get<std::size_t>();
    EXPECT_EQ(page.substr(start, end - start), bytesOfMember(reference, "raw"));
  }
  for (const char* kind :
       {"load", "navigation", "form", "ping", "connection", "base", "metadata", "fragment"}) {
    EXPECT_TRUE(std::any_of(references.begin(), references.end(), [&](const Record& reference) {
      return reference.at("kind") == kind;
    })) << kind;
  }
}

}  // namespace
}  // namespace pagescan::tests
