// RWCString beside std::string, in random sequences of operations on strings that share buffers.

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "rw/rwcstring.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

int sign(int value) {
  return (value > 0) - (value < 0);
}

char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string lowered(std::string text) {
  for (char& c : text) c = folded(c);
  return text;
}

// A string and what it has to hold, with a reference to one byte that a host may have kept.
struct Pair {
  RWCString text;
  std::string expected;
  char* reference = nullptr;
  std::size_t referenceAt = 0;

  // The reference is good until the string changes.
  void changed() { reference = nullptr; }
};

class Sequence {
 public:
  explicit Sequence(RandomTexts& random) : random_(random) {}

  void step() {
    switch (random_.number(16)) {
      case 0:
        return assignFresh();
      case 1:
      case 2:
        return copy();
      case 3:
        return move();
      case 4:
        return append();
      case 5:
        return appendOwnBytes();
      case 6:
        return insert();
      case 7:
        return insertOwnBytes();
      case 8:
        return remove();
      case 9:
        return resize();
      case 10:
        return swap();
      case 11:
        return keepReference();
      case 12:
        return writeThroughReference();
      case 13:
        return lowerOrStrip();
      case 14:
        return concatenate();
      default:
        return search();
    }
  }

  void expectAllEqual() const {
    for (const Pair& pair : pairs_) {
      ASSERT_EQ(bytesOf(pair.text), pair.expected);
      ASSERT_EQ(pair.text.data()[pair.text.length()], '\0');
    }
  }

 private:
  Pair& any() { return pairs_[random_.number(pairs_.size())]; }
  std::size_t placeIn(const Pair& pair) { return random_.number(pair.expected.size() + 1); }

  std::string fresh() {
    const std::size_t most = random_.number(10) == 0 ? 100 : 12;
    return random_.text({"a", "B", "\0"sv, "xyz", "  ", "\xE4"}, most);
  }

  void assignFresh() {
    Pair& pair = any();
    pair.expected = fresh();
    pair.text = stringOf(pair.expected);
    pair.changed();
  }

  void copy() {
    Pair& to = any();
    const Pair& from = any();
    to.text = from.text;
    to.expected = from.expected;
    if (&to != &from) to.changed();
  }

  void move() {
    Pair& to = any();
    Pair& from = any();
    if (&to == &from) return;
    to.text = std::move(from.text);
    to.expected = from.expected;
    from.text = RWCString();
    from.expected.clear();
    to.changed();
    from.changed();
  }

  void append() {
    Pair& pair = any();
    const Pair& other = any();
    pair.text += other.text;
    pair.expected += std::string(other.expected);
    pair.changed();
  }

  void appendOwnBytes() {
    Pair& pair = any();
    const std::size_t at = placeIn(pair);
    const std::size_t length = random_.number(pair.expected.size() - at + 1);
    pair.text.append(pair.text.data() + at, length);
    pair.expected += pair.expected.substr(at, length);
    pair.changed();
  }

  void insert() {
    Pair& pair = any();
    const Pair& other = any();
    const std::size_t at = placeIn(pair);
    pair.text.insert(at, other.text);
    pair.expected.insert(at, std::string(other.expected));
    pair.changed();
  }

  void insertOwnBytes() {
    Pair& pair = any();
    const std::size_t at = placeIn(pair);
    const std::size_t from = placeIn(pair);
    const std::size_t length = random_.number(pair.expected.size() - from + 1);
    pair.text.insert(at, pair.text.data() + from, length);
    pair.expected.insert(at, pair.expected.substr(from, length));
    pair.changed();
  }

  void remove() {
    Pair& pair = any();
    const std::size_t at = placeIn(pair);
    const std::size_t count = random_.number(4) == 0 ? RWCString::npos : random_.number(20);
    pair.text.remove(at, count);
    pair.expected.erase(at, count);
    pair.changed();
  }

  void resize() {
    Pair& pair = any();
    const std::size_t length = random_.number(40);
    pair.text.resize(length, '.');
    pair.expected.resize(length, '.');
    pair.changed();
  }

  void swap() {
    Pair& a = any();
    Pair& b = any();
    a.text.swap(b.text);
    std::swap(a.expected, b.expected);
    a.changed();
    b.changed();
  }

  // From here on no copy may share the bytes that the reference can change.
  void keepReference() {
    Pair& pair = any();
    if (pair.expected.empty()) return;
    pair.referenceAt = random_.number(pair.expected.size());
    pair.reference =
        &(random_.number(2) == 0 ? pair.text[pair.referenceAt] : pair.text(pair.referenceAt));
  }

  void writeThroughReference() {
    Pair& pair = any();
    if (pair.reference == nullptr) return;
    const char byte = static_cast<char>('0' + random_.number(10));
    *pair.reference = byte;
    pair.expected[pair.referenceAt] = byte;
  }

  void lowerOrStrip() {
    Pair& pair = any();
    if (random_.number(2) == 0) {
      pair.text.toLower();
      pair.expected = lowered(pair.expected);
    } else {
      pair.text = pair.text.strip(RWCString::both, ' ');
      pair.expected.erase(0, pair.expected.find_first_not_of(' '));
      pair.expected.erase(pair.expected.find_last_not_of(' ') + 1);
    }
    pair.changed();
  }

  void concatenate() {
    Pair& to = any();
    const Pair& a = any();
    const Pair& b = any();
    std::string expected = a.expected + b.expected;
    if (expected.size() > 5000) expected.clear();
    to.text = expected.empty() ? RWCString() : a.text + b.text;
    to.expected = expected;
    to.changed();
  }

  void search() {
    const Pair& text = any();
    const Pair& pattern = any();
    const std::size_t start = random_.number(text.expected.size() + 2);
    ASSERT_EQ(text.text.index(pattern.text, start), text.expected.find(pattern.expected, start));
    ASSERT_EQ(text.text.index(pattern.text, start, RWCString::ignoreCase),
              lowered(text.expected).find(lowered(pattern.expected), start));
    ASSERT_EQ(text.text.index('B', start), text.expected.find('B', start));
    ASSERT_EQ(sign(text.text.compareTo(pattern.text)),
              sign(text.expected.compare(pattern.expected)));
    ASSERT_EQ(text.text == pattern.text, text.expected == pattern.expected);
    if (text.expected == pattern.expected) {
      ASSERT_EQ(text.text.hash(), pattern.text.hash());
    }
  }

  RandomTexts& random_;
  std::array<Pair, 6> pairs_;
};

TEST(RWCStringRandom, HoldsWhatAStandardStringHolds) {
  RandomTexts random;
  const std::size_t sequences = randomRuns(4000, 150000);
  for (std::size_t i = 0; i < sequences && !testing::Test::HasFailure(); ++i) {
    Sequence sequence(random);
    for (int steps = 0; steps < 40 && !testing::Test::HasFailure(); ++steps) {
      sequence.step();
      sequence.expectAllEqual();
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
