// pagescan links on real pages, where these are at hand.
#include <filesystem>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

constexpr char kPages[] = PAGESCAN_SHARED_DIR "/golden/pages";
constexpr char kCorpus[] = PAGESCAN_SHARED_DIR "/corpus";

std::vector<std::string> filesOf(const std::string& folder, const std::string& extension) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() == extension) files.push_back(entry.path());
  }
  return files;
}

// Code points from U+0000 to U+00FF as the bytes of these values.
std::string bytesOfCodePoints(const Record& record, const std::string& member) {
  Record asBytes = record;
  asBytes["bytes"] = {member};
  return bytesOfMember(asBytes, member);
}

// One line for each attribute, as links lists them.
std::string expectedLines(const std::string& recordsFile) {
  std::ostringstream lines;
  for (const Record& record : recordsOf(readFile(recordsFile))) {
    for (const Record& attribute : record.at("attributes")) {
      lines << record.at("tag") << attribute.at("name") << attribute.at("offset")
            << bytesOfCodePoints(attribute, "original") << '\0'
            << bytesOfCodePoints(attribute, "value") << '\n';
    }
  }
  return lines.str();
}

std::string listedLines(const std::vector<Record>& records) {
  std::ostringstream lines;
  for (const Record& record : records) {
    lines << record.at("tag") << record.at("attribute") << record.at("offset")
          << bytesOfMember(record, "original") << '\0' << bytesOfMember(record, "resolved") << '\n';
  }
  return lines.str();
}

TEST(RealPages, AreListedAsExpected) {
  if (!std::filesystem::exists(kPages)) GTEST_SKIP() << "no pages at hand";
  for (const std::string& page : filesOf(kPages, ".html")) {
    SCOPED_TRACE(page);
    const auto records = recordsOf(outputOf(
        {"links", "--base", "https://www.example.com/section/article.html?id=1#top", page}));
    expectOffsetsMatch(records, readFile(page));
    EXPECT_EQ(listedLines(records), expectedLines(page + ".records.jsonl"));
  }
}

TEST(RealPages, OffsetsPointAtTheValuesAsWritten) {
  if (!std::filesystem::exists(kCorpus)) GTEST_SKIP() << "no pages at hand";
  for (const auto& [command, folder, extension] :
       {std::tuple("links", "/pages", ".html"), std::tuple("css", "/css", ".css")}) {
    for (const std::string& file : filesOf(std::string(kCorpus) + folder, extension)) {
      SCOPED_TRACE(file);
      const ProgramResult result = pagescanTool({command, "--base", "http://h/d/f", file});
      EXPECT_EQ(result.status, 0) << result.err;
      expectOffsetsMatch(recordsOf(result.out), readFile(file));
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
