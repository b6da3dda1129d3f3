#include "base/keyed_hash.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::keyedHash;

std::string textOfLength(std::size_t length) {
  std::string text;
  while (text.size() < length) text += static_cast<char>('a' + text.size() % 23);
  return text;
}

TEST(KeyedHash, IsThatOfTheBytesWhereverTheyStand) {
  for (std::size_t length = 0; length <= 100; ++length) {
    const std::string text = textOfLength(length);
    const unsigned hash = keyedHash(text);
    for (const Placement::Kind kind : Placement::kKinds) {
      EXPECT_EQ(keyedHash(Placement(kind).bytes(text)), hash);
    }
  }
}

// A chance of one in four thousand millions each.
TEST(KeyedHash, TellsTextsApartByEachByteAndByTheLength) {
  std::set<unsigned> seen;
  std::size_t texts = 0;
  for (std::size_t length = 0; length <= 50; ++length) {
    std::string text(length, '\0');
    seen.insert(keyedHash(text));
    ++texts;
    for (std::size_t at = 0; at < length; ++at) {
      text[at] = '\1';
      seen.insert(keyedHash(text));
      text[at] = '\0';
      ++texts;
    }
  }
  EXPECT_GE(seen.size() + 2, texts);
}

// A dictionary goes by the low bits.
TEST(KeyedHash, SpreadsItsLowBits) {
  std::set<unsigned> seen;
  for (int i = 0; i < 1024; ++i) seen.insert(keyedHash(std::to_string(i)) % 1024U);
  EXPECT_GT(seen.size(), 500U);
}

}  // namespace
}  // namespace pagescan::tests
