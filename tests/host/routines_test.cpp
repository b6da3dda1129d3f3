// A host that brings routines of its own: the library calls these instead of its stand-alone ones,
// linked as a shared library and as a static one.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "charset.h"
#include "hostroutines.h"
#include "zkurlencoding.h"
#include "zkutf8.h"

namespace {

struct Call {
  std::string routine;
  int reserved;
  std::string source;
  int sourceLength;
  int destinationSize;

  bool operator==(const Call& other) const {
    return routine == other.routine && reserved == other.reserved && source == other.source &&
           sourceLength == other.sourceLength && destinationSize == other.destinationSize;
  }
};

void PrintTo(const Call& call, std::ostream* out) {
  *out << call.routine << "(" << call.reserved << ", " << testing::PrintToString(call.source)
       << ", " << call.sourceLength << ", " << call.destinationSize << ")";
}

std::vector<Call> calls;
std::vector<std::string> errors;

// Forgets what the tests before left.
class HostRoutines : public testing::Test {
 protected:
  HostRoutines() {
    calls.clear();
    errors.clear();
  }
};

std::string bytesOf(const RWCString& text) {
  return std::string(text.data(), text.length());
}

int answer(const char* result, char* destination) {
  std::strcpy(destination, result);
  return static_cast<int>(std::strlen(result));
}

}  // namespace

int UTF8ToANSI(int reserved, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  calls.push_back({"UTF8ToANSI", reserved, source, sourceLength, destinationSize});
  return answer("ansi", destination);
}

int ANSIToUTF8(int reserved, const char* source, int sourceLength, char* destination,
               int destinationSize) {
  calls.push_back({"ANSIToUTF8", reserved, source, sourceLength, destinationSize});
  return answer("utf8", destination);
}

void pagescanLogError(const char* message) {
  errors.emplace_back(message);
}

namespace {

TEST_F(HostRoutines, ConvertFromUtf8) {
  RWCString text("\xc3\xa9t\xc3\xa9");
  const char* data = ConvertUtf8toAnsi(text);
  EXPECT_EQ(bytesOf(text), "ansi");
  EXPECT_EQ(data, text.data());
  EXPECT_EQ(calls, (std::vector<Call>{{"UTF8ToANSI", 0, "\xc3\xa9t\xc3\xa9", -1, 16}}));
}

TEST_F(HostRoutines, ConvertToUtf8) {
  RWCString text("\xe9t\xe9");
  const char* data = ConvertAnsitoUtf8(text);
  EXPECT_EQ(bytesOf(text), "utf8");
  EXPECT_EQ(data, text.data());
  EXPECT_EQ(calls, (std::vector<Call>{{"ANSIToUTF8", 0, "\xe9t\xe9", -1, 10}}));
}

TEST_F(HostRoutines, GetPlainAsciiForUtf8Alone) {
  RWCString text("plain");
  ConvertUtf8toAnsi(text);
  EXPECT_EQ(bytesOf(text), "plain");
  EXPECT_TRUE(calls.empty());
  ConvertAnsitoUtf8(text);
  EXPECT_EQ(bytesOf(text), "utf8");
  EXPECT_EQ(calls, (std::vector<Call>{{"ANSIToUTF8", 0, "plain", -1, 16}}));
}

TEST_F(HostRoutines, AreNotCalledWithoutNeed) {
  RWCString empty;
  ConvertUtf8toAnsi(empty);
  ConvertAnsitoUtf8(empty);
  RWCString utf8("\xc3\xa9");
  ConvertAnsitoUtf8(utf8);
  RWCString ansi("\xe9t\xe9");
  ConvertUtf8toAnsi(ansi);
  EXPECT_EQ(bytesOf(empty), "");
  EXPECT_EQ(bytesOf(utf8), "\xc3\xa9");
  EXPECT_EQ(bytesOf(ansi), "\xe9t\xe9");
  EXPECT_TRUE(calls.empty());
}

TEST_F(HostRoutines, GetTheTextUpToItsFirstNul) {
  RWCString text("a\0b", 3);
  ConvertAnsitoUtf8(text);
  EXPECT_EQ(calls, (std::vector<Call>{{"ANSIToUTF8", 0, "a", -1, 10}}));
}

TEST_F(HostRoutines, ReceiveErrors) {
  CTQCharSet* const singleton = CTQCharSet::msSingleton;
  CTQCharSet::msSingleton = nullptr;
  EXPECT_EQ(CTQCharSet::fsGetSingleton(), nullptr);
  CTQCharSet::msSingleton = singleton;
  ASSERT_EQ(errors.size(), 1U);
  EXPECT_EQ(errors[0].find('\n'), std::string::npos);
  EXPECT_EQ(CTQCharSet::fsGetSingleton(), singleton);
  EXPECT_EQ(errors.size(), 1U);
}

// A host may encode before main, whatever is initialised first.
struct EarlyEncoder {
  EarlyEncoder() {
    RWCString source("@ /");
    UrlEncoding::EncodeString(source, encoded, UrlEncoding::eBrowserSign);
  }
  RWCString encoded;
};
[[gnu::init_priority(101)]] EarlyEncoder earlyEncoder;

TEST_F(HostRoutines, NeedNotWaitForTheTables) {
  EXPECT_EQ(bytesOf(earlyEncoder.encoded), "%40+%2F");
}

}  // namespace
