#include "support/golden_cases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <stdexcept>

namespace pagescan::tests {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// The URL that the records of the pages were made for.
constexpr const char* kPageUrl = "https://www.example.com/section/article.html?id=1#top";

constexpr const char* kRecordsSuffix = ".records.jsonl";

// They are made up, and stand in the tests.
fs::path caseFile() {
  return fs::path(PAGESCAN_SOURCE_DIR) / "tests" / "classic" / "golden" / "cases.jsonl";
}

fs::path pageFolder(const std::string& sharedDir) {
  return fs::path(sharedDir) / "golden" / "pages";
}

std::string readFile(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot read " + path.string());
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A JSON string stands for bytes: its code points 0 to 255 are their values.
std::string bytesOf(const json& value) {
  const auto& utf8 = value.get_ref<const std::string&>();
  std::string bytes;
  for (std::size_t i = 0; i < utf8.length(); ++i) {
    const unsigned lead = static_cast<unsigned char>(utf8[i]);
    if (lead < 0x80) {
      bytes += utf8[i];
    } else if ((lead == 0xC2 || lead == 0xC3) && i + 1 < utf8.length()) {
      const unsigned next = static_cast<unsigned char>(utf8[++i]);
      bytes += static_cast<char>(((lead & 0x03) << 6) | (next & 0x3F));
    } else {
      throw std::runtime_error("a code point above 255 is no byte");
    }
  }
  return bytes;
}

Texts textsOf(const json& values) {
  Texts texts;
  for (const json& value : values) texts.push_back(bytesOf(value));
  return texts;
}

GoldenRecord recordOf(const json& value) {
  GoldenRecord record{bytesOf(value.at("tag")), {}};
  for (const json& attribute : value.at("attributes")) {
    record.attributes.push_back({bytesOf(attribute.at("name")), bytesOf(attribute.at("value")),
                                 bytesOf(attribute.at("original")),
                                 attribute.at("offset").get<int>()});
  }
  return record;
}

// Calls use(value, line number) for each line of a JSON Lines file.
template <typename Use>
void forEachLine(const fs::path& path, const Use& use) {
  std::istringstream lines(readFile(path));
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) use(json::parse(line), number);
}

// Printable ASCII as it is, all else as \xNN.
std::string escaped(const std::string& text) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string shown = "\"";
  for (const char c : text) {
    const unsigned byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      shown += '\\';
      shown += c;
    } else if (byte >= 0x20 && byte < 0x7F) {
      shown += c;
    } else {
      shown += "\\x";
      shown += kDigits[byte / 16];
      shown += kDigits[byte % 16];
    }
  }
  return shown + '"';
}

std::string escaped(const Texts& texts) {
  std::string shown = "[";
  for (const std::string& text : texts) {
    if (shown.length() > 1) shown += ", ";
    shown += escaped(text);
  }
  return shown + "]";
}

std::string escaped(const GoldenRecord& record) {
  std::string shown = escaped(record.tag);
  for (const GoldenAttribute& attribute : record.attributes) {
    shown += " " + escaped(Texts{attribute.name, attribute.value, attribute.original}) + "@" +
             std::to_string(attribute.offset);
  }
  return shown;
}

void checkCase(const GoldenCase& golden, const Operation& operation) {
  Texts got;
  try {
    got = operation(golden.args);
  } catch (const std::exception& error) {
    got = {std::string("threw: ") + error.what()};
  }
  if (got == golden.want) return;
  ADD_FAILURE() << golden.op << ", case at line " << golden.line
                << "\n  args: " << escaped(golden.args) << "\n  want: " << escaped(golden.want)
                << "\n  got:  " << escaped(got);
}

void checkPage(const GoldenPage& page, const std::vector<GoldenRecord>& got) {
  const std::size_t both = std::min(got.size(), page.records.size());
  for (std::size_t i = 0; i < both; ++i) {
    if (got[i] == page.records[i]) continue;
    ADD_FAILURE() << page.name << ", record " << i << "\n  want: " << escaped(page.records[i])
                  << "\n  got:  " << escaped(got[i]);
    return;
  }
  EXPECT_EQ(got.size(), page.records.size()) << page.name << ": number of records";
}

}  // namespace

std::vector<GoldenCase> readGoldenCases() {
  std::vector<GoldenCase> cases;
  forEachLine(caseFile(), [&](const json& value, int line) {
    cases.push_back({line, value.at("op").get<std::string>(), textsOf(value.at("args")),
                     textsOf(value.at("want"))});
  });
  return cases;
}

std::vector<GoldenPage> readGoldenPages(const std::string& sharedDir) {
  std::vector<GoldenPage> pages;
  for (const auto& entry : fs::directory_iterator(pageFolder(sharedDir))) {
    const std::string name = entry.path().filename().string();
    const fs::path records = entry.path().string() + kRecordsSuffix;
    if (!fs::exists(records)) continue;
    GoldenPage page{name, readFile(entry.path()), {}};
    forEachLine(records, [&](const json& value, int) { page.records.push_back(recordOf(value)); });
    pages.push_back(std::move(page));
  }
  std::sort(pages.begin(), pages.end(),
            [](const GoldenPage& a, const GoldenPage& b) { return a.name < b.name; });
  return pages;
}

void checkGoldenCases(const std::string& op, const Operation& operation) {
  int count = 0;
  for (const GoldenCase& golden : readGoldenCases()) {
    if (golden.op != op) continue;
    ++count;
    checkCase(golden, operation);
  }
  EXPECT_GT(count, 0) << "no case of " << op;
}

void checkEveryOperationIsRun(const OperationTable& table) {
  std::set<std::string> missing;
  for (const GoldenCase& golden : readGoldenCases()) {
    if (table.count(golden.op) == 0) missing.insert(golden.op);
  }
  EXPECT_EQ(missing, std::set<std::string>{});
}

void checkGoldenPages(const std::string& sharedDir, const PageParser& parse) {
  if (!fs::exists(pageFolder(sharedDir))) GTEST_SKIP() << "no " << pageFolder(sharedDir);
  const std::vector<GoldenPage> pages = readGoldenPages(sharedDir);
  EXPECT_FALSE(pages.empty());
  for (const GoldenPage& page : pages) checkPage(page, parse(kPageUrl, page.bytes));
}

unsigned long asUnsigned(const std::string& decimal) {
  return std::stoul(decimal);
}
int asInt(const std::string& decimal) {
  return std::stoi(decimal);
}
bool asBool(const std::string& zeroOrOne) {
  return asInt(zeroOrOne) != 0;
}

Texts recordOutputs(const std::vector<GoldenRecord>& records, bool boundsError) {
  Texts out = {std::to_string(records.size())};
  for (const GoldenRecord& record : records) {
    std::vector<GoldenAttribute> sorted = record.attributes;
    std::sort(sorted.begin(), sorted.end(),
              [](const GoldenAttribute& a, const GoldenAttribute& b) { return a.name < b.name; });
    out.push_back(record.tag);
    out.push_back(std::to_string(sorted.size()));
    for (const GoldenAttribute& attribute : sorted) {
      out.insert(out.end(), {attribute.name, attribute.value, attribute.original,
                             std::to_string(attribute.offset)});
    }
    out.push_back(record.attributes.empty() ? "" : record.attributes.front().name);
  }
  out.push_back(output(boundsError));
  return out;
}

Texts runUrlProgram(UrlBaseUnderTest& base, const Texts& program) {
  Texts out;
  auto at = program.begin();
  const auto next = [&] {
    if (at == program.end()) throw std::runtime_error("a step lacks an argument");
    return *at++;
  };
  while (at != program.end()) {
    const std::string step = next();
    if (step == "set") {
      out.push_back(output(base.setBase(next())));
    } else if (step == "short") {
      out.push_back(output(base.shortParse()));
    } else if (step == "parse") {
      out.push_back(output(base.parse()));
    } else if (step == "calc1") {
      std::string url = next();
      const std::string result = base.calcUrl(url);
      out.insert(out.end(), {result, url});
    } else if (step == "calc4") {
      std::string in = next();
      std::string result = next();
      const bool resolveEmpty = asBool(next());
      const bool decodePercent = asBool(next());
      base.calcUrl(in, result, resolveEmpty, decodePercent);
      out.insert(out.end(), {result, in});
    } else if (step == "state") {
      const Texts state = base.state();
      out.insert(out.end(), state.begin(), state.end());
    } else {
      throw std::runtime_error("unknown step " + step);
    }
  }
  return out;
}

}  // namespace pagescan::tests
