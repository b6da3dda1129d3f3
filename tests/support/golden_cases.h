// Runs expected answers: those of single calls, which stand in tests/classic/golden, and those of
// whole pages in a folder beside the project.
//
// A test fills an OperationTable with its own functions and has each operation's cases run; twins
// and library share the reading, the shape of the outputs and the messages. Texts are bytes.
// Where the folder is missing, the test of the pages is skipped.
#ifndef PAGESCAN_TESTS_SUPPORT_GOLDEN_CASES_H
#define PAGESCAN_TESTS_SUPPORT_GOLDEN_CASES_H

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace pagescan::tests {

using Texts = std::vector<std::string>;

struct GoldenCase {
  int line = 0;  // in cases.jsonl, from 1
  std::string op;
  Texts args;
  Texts want;
};

// Names and values as the records' getters show them: up to the first NUL.
struct GoldenAttribute {
  std::string name;
  std::string value;     // resolved
  std::string original;  // as written
  int offset = -1;
  bool operator==(const GoldenAttribute&) const = default;
};

struct GoldenRecord {
  std::string tag;
  std::vector<GoldenAttribute> attributes;  // in the record's own order
  bool operator==(const GoldenRecord&) const = default;
};

struct GoldenPage {
  std::string name;
  std::string bytes;
  std::vector<GoldenRecord> records;
};

// Both throw std::exception on a file that does not read as it should.
std::vector<GoldenCase> readGoldenCases();
std::vector<GoldenPage> readGoldenPages(const std::string& sharedDir);

// From a case's args to its outputs.
using Operation = std::function<Texts(const Texts& args)>;
using OperationTable = std::map<std::string, Operation>;

// Fails the test for each case of the operation that gives another answer, and when there is none.
void checkGoldenCases(const std::string& op, const Operation& operation);

// Fails the test for each operation of the case file that the table lacks.
void checkEveryOperationIsRun(const OperationTable& table);

// Fails the test at the first record of each page that differs.
using PageParser =
    std::function<std::vector<GoldenRecord>(const std::string& pageUrl, const std::string& page)>;
void checkGoldenPages(const std::string& sharedDir, const PageParser& parse);

// ---- for the functions in a table

unsigned long asUnsigned(const std::string& decimal);
int asInt(const std::string& decimal);
bool asBool(const std::string& zeroOrOne);

inline std::string output(const std::string& text) {
  return text;
}
inline std::string output(bool value) {
  return value ? "1" : "0";
}
inline std::string output(int value) {
  return std::to_string(value);
}
inline std::string output(unsigned long value) {
  return std::to_string(value);
}

// The outputs of one call in order: outputs(result, text, position).
template <typename... Values>
Texts outputs(const Values&... values) {
  return {output(values)...};
}

// The outputs of the parsing operations.
Texts recordOutputs(const std::vector<GoldenRecord>& records, bool boundsError);

// One base URL under test, for the programs of the operation "urlbase".
class UrlBaseUnderTest {
 public:
  UrlBaseUnderTest() = default;
  UrlBaseUnderTest(const UrlBaseUnderTest&) = delete;
  UrlBaseUnderTest& operator=(const UrlBaseUnderTest&) = delete;
  virtual ~UrlBaseUnderTest() = default;

  virtual bool setBase(const std::string& url) = 0;
  virtual int shortParse() = 0;
  virtual int parse() = 0;
  virtual std::string calcUrl(std::string& url) = 0;
  virtual void calcUrl(std::string& in, std::string& out, bool resolveEmpty,
                       bool decodePercent) = 0;

  // fullUrl, baseNoQuery, protocol, host, dirPath, fileName, dirDepth, parsed.
  virtual Texts state() = 0;
};

// Throws std::runtime_error on a step that it does not know.
Texts runUrlProgram(UrlBaseUnderTest& base, const Texts& program);

}  // namespace pagescan::tests

#endif
