// The program under test, and what its output says.
#ifndef PAGESCAN_TESTS_TOOL_TOOL_H
#define PAGESCAN_TESTS_TOOL_TOOL_H

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace pagescan::tests {

inline ProgramResult pagescanTool(std::vector<std::string> arguments, const std::string& input = "",
                                  const char* outputFile = nullptr) {
  arguments.insert(arguments.begin(), PAGESCAN_TOOL_PATH);
  return runProgram(arguments, input, outputFile);
}

// Expects a run without any complaint, and returns its output.
inline std::string outputOf(const std::vector<std::string>& arguments,
                            const std::string& input = "") {
  const ProgramResult result = pagescanTool(arguments, input);
  EXPECT_EQ(result.status, 0) << testing::PrintToString(arguments);
  EXPECT_EQ(result.err, "") << testing::PrintToString(arguments);
  return result.out;
}

using Record = nlohmann::ordered_json;

// Expects every line to be a JSON object of its own.
inline std::vector<Record> recordsOf(const std::string& lines) {
  std::vector<Record> records;
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) records.push_back(Record::parse(line));
  EXPECT_TRUE(lines.empty() || lines.back() == '\n');
  return records;
}

// The bytes that a member stands for, as docs/tool.md tells to read it.
inline std::string bytesOfMember(const Record& record, const std::string& member) {
  const auto text = record.at(member).get<std::string>();
  const Record listed = record.value("bytes", Record::array());
  if (std::find(listed.begin(), listed.end(), member) == listed.end()) return text;
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      bytes.push_back(text[i]);
    } else {  // a code point from U+0080 to U+00FF
      bytes.push_back(static_cast<char>((byte & 3) << 6 | (text.at(++i) & 0x3F)));
    }
  }
  return bytes;
}

// Expects the bytes of the input at each record's offset to be the value as written.
inline void expectOffsetsMatch(const std::vector<Record>& records, const std::string& input) {
  for (const Record& record : records) {
    const auto offset = record.at("offset").get<long>();
    const std::string original = bytesOfMember(record, "original");
    if (offset < 0) {
      EXPECT_EQ(original, "") << record;
      continue;
    }
    ASSERT_LE(static_cast<std::size_t>(offset), input.size()) << record;
    EXPECT_EQ(input.substr(static_cast<std::size_t>(offset), original.size()), original) << record;
  }
}

}  // namespace pagescan::tests

#endif
