// A host that brings one routine of its own and keeps the stand-alone versions of the others.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "charset.h"
#include "hostroutines.h"
#include "zkutf8.h"

int UTF8ToANSI(int /*reserved*/, const char* /*source*/, int /*sourceLength*/, char* destination,
               int /*destinationSize*/) {
  std::strcpy(destination, "own");
  return 3;
}

namespace {

TEST(HostRoutine, IsReplacedAlone) {
  RWCString utf8("\xc3\xa9");
  ConvertUtf8toAnsi(utf8);
  EXPECT_STREQ(utf8.data(), "own");
  RWCString ansi("\xe9t\xe9");
  ConvertAnsitoUtf8(ansi);
  EXPECT_STREQ(ansi.data(), "\xc3\xa9t\xc3\xa9");
}

TEST(HostRoutine, LeavesErrorsToStandardError) {
  CTQCharSet* const singleton = CTQCharSet::msSingleton;
  CTQCharSet::msSingleton = nullptr;
  testing::internal::CaptureStderr();
  CTQCharSet::fsGetSingleton();
  const std::string message = testing::internal::GetCapturedStderr();
  CTQCharSet::msSingleton = singleton;
  ASSERT_FALSE(message.empty());
  EXPECT_EQ(message.find('\n'), message.length() - 1);
}

}  // namespace
