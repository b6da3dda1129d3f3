// The public suites and data, where they are there: html5lib's cases of encodings, and the indexes
// that the generated tables were made from.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/byte_class.h"
#include "encoding/decoder.h"
#include "encoding/sniffing.h"
#include "encoding/utf8.h"
#include "encodings.h"

namespace pagescan::tests {

using namespace internal;
namespace {

const std::filesystem::path kSuites = std::filesystem::path(PAGESCAN_SHARED_DIR) / "suites";

std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Case {
  std::string data;
  std::string encoding;
};

// "#data", the bytes, "#encoding", a label; the line end before a heading belongs to neither.
std::vector<Case> casesOf(const std::string& text) {
  constexpr std::string_view kData = "#data\n";
  constexpr std::string_view kEncoding = "\n#encoding\n";
  std::vector<Case> cases;
  for (std::size_t at = text.find(kData); at != std::string::npos; at = text.find(kData, at)) {
    at += kData.size();
    const std::size_t heading = text.find(kEncoding, at);
    if (heading == std::string::npos) break;
    const std::size_t label = heading + kEncoding.size();
    const std::size_t end = std::min(text.find('\n', label), text.size());
    cases.push_back({text.substr(at, heading - at), text.substr(label, end - label)});
    at = end;
  }
  return cases;
}

// Pages whose meta stands after the first 1,024 bytes: only the tree has it. The page reader's
// tests run these.
bool needsTheTree(const Case& one) {
  return one.data.size() > 1024;
}

TEST(Html5libEncodings, AreWhatThePrescanFinds) {
  std::size_t count = 0;
  std::size_t left = 0;
  if (!std::filesystem::exists(kSuites / "html5lib/encoding")) GTEST_SKIP() << "no suite";
  for (const char* const name : {"tests1.dat", "tests2.dat", "test-yahoo-jp.dat"}) {
    for (const Case& one : casesOf(contentOf(kSuites / "html5lib/encoding" / name))) {
      ++count;
      const std::optional<ByteOrderMark> mark = bomOf(one.data);
      const std::optional<Encoding> found = mark ? mark->encoding : prescan(one.data);
      const bool isRight = found.value_or(Encoding::windows1252) == encodingForLabel(one.encoding);
      if (!isRight && needsTheTree(one)) {
        ++left;
        continue;
      }
      EXPECT_TRUE(isRight) << name << ": " << one.data << "\nexpected " << one.encoding
                           << ", found " << nameOrNone(found);
    }
  }
  EXPECT_EQ(count, 82U);
  EXPECT_EQ(left, 7U) << "cases that need the tree";
}

// Where the lead and trail bytes of an index begin.
struct Layout {
  const char* index;
  Encoding encoding;
  unsigned row;
  std::string (*bytesOf)(unsigned pointer);
};

std::string two(unsigned lead, unsigned trail) {
  return {static_cast<char>(lead), static_cast<char>(trail)};
}

const Layout kLayouts[] = {
    {"big5", Encoding::big5, 157,
     [](unsigned p) { return two(p / 157 + 0x81, p % 157 + (p % 157 < 0x3F ? 0x40 : 0x62)); }},
    {"euc-kr", Encoding::eucKr, 190,
     [](unsigned p) { return two(p / 190 + 0x81, p % 190 + 0x41); }},
    {"gb18030", Encoding::gb18030, 190,
     [](unsigned p) { return two(p / 190 + 0x81, p % 190 + (p % 190 < 0x3F ? 0x40 : 0x41)); }},
    {"jis0208", Encoding::shiftJis, 188,
     [](unsigned p) {
       return two(p / 188 + (p / 188 < 0x1F ? 0x81 : 0xC1),
                  p % 188 + (p % 188 < 0x3F ? 0x40 : 0x41));
     }},
    {"jis0212", Encoding::eucJp, 94,
     [](unsigned p) { return "\x8F" + two(p / 94 + 0xA1, p % 94 + 0xA1); }},
};

void expectDecoded(const std::string& bytes, Encoding encoding, const nlohmann::json& codePoint) {
  if (codePoint.is_null()) return;  // the twin's tests say what comes of these
  std::string decoded;
  appendDecoded(decoded, bytes, encoding);
  std::string expected;
  appendUtf8(expected, codePoint.get<char32_t>());
  ASSERT_EQ(decoded, expected) << nameOf(encoding) << testing::PrintToString(bytes);
}

TEST(StandardIndexes, AreWhatTheDecodersRead) {
  if (!std::filesystem::exists(kSuites / "encoding")) GTEST_SKIP() << "no data";
  const auto indexes = nlohmann::json::parse(contentOf(kSuites / "encoding/indexes.json"));
  for (const Layout& layout : kLayouts) {
    unsigned pointer = 0;
    for (const auto& codePoint : indexes.at(layout.index)) {
      expectDecoded(layout.bytesOf(pointer++), layout.encoding, codePoint);
    }
  }
  for (const Encoding encoding : kAllEncodings) {
    std::string name(nameOf(encoding));
    std::transform(name.begin(), name.end(), name.begin(), toLower);
    if (!isSingleByte(encoding) || !indexes.contains(name)) continue;
    unsigned byte = 0x80;
    for (const auto& codePoint : indexes.at(name)) {
      expectDecoded(std::string(1, static_cast<char>(byte++)), encoding, codePoint);
    }
  }
}

TEST(StandardLabels, AreAllKnown) {
  if (!std::filesystem::exists(kSuites / "encoding")) GTEST_SKIP() << "no data";
  const auto groups = nlohmann::json::parse(contentOf(kSuites / "encoding/encodings.json"));
  std::size_t count = 0;
  for (const auto& group : groups) {
    for (const auto& encoding : group.at("encodings")) {
      for (const auto& label : encoding.at("labels")) {
        ++count;
        EXPECT_EQ(nameOrNone(encodingForLabel(label.get<std::string>())), encoding.at("name"));
      }
    }
  }
  EXPECT_EQ(count, 228U);
}

}  // namespace
}  // namespace pagescan::tests
