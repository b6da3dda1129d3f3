#include "reference/classic/regexp.h"

#include <bitset>
#include <limits>
#include <optional>
#include <vector>

namespace reference {

namespace {

using Bytes = std::bitset<256>;

// One byte out of a set, at least `least` and at most `most` times.
struct Item {
  Bytes bytes;
  std::size_t least = 1;
  std::size_t most = 1;
};

struct Program {
  bool anchored = false;
  std::vector<Item> items;
};

unsigned char unsignedByte(char c) {
  return static_cast<unsigned char>(c);
}

// Reads one byte at `at` and steps over it; a backslash and the byte after it are one.
unsigned char readByte(const std::string& pattern, std::size_t& at) {
  const char c = pattern[at++];
  if (c != '\\' || at == pattern.length()) return unsignedByte(c);
  const char escaped = pattern[at++];
  switch (escaped) {
    case 't':
      return '\t';
    case 'r':
      return '\r';
    case 'n':
      return '\n';
    default:
      return unsignedByte(escaped);
  }
}

// Reads the class whose "[" stands before `at` and steps over its "]".
Bytes readClass(const std::string& pattern, std::size_t& at) {
  Bytes bytes;
  while (at < pattern.length() && pattern[at] != ']') {
    const unsigned first = readByte(pattern, at);
    unsigned last = first;
    const bool range =
        byteAt(pattern, at) == '-' && at + 1 < pattern.length() && pattern[at + 1] != ']';
    if (range) last = readByte(pattern, ++at);
    for (unsigned c = first; c <= last; ++c) bytes.set(c);
  }
  ++at;
  return bytes;
}

void readPostfix(const std::string& pattern, std::size_t& at, Item& item) {
  constexpr std::size_t kUnbounded = std::numeric_limits<std::size_t>::max();
  const char postfix = byteAt(pattern, at);
  if (postfix != '*' && postfix != '+' && postfix != '?') return;
  ++at;
  item.least = postfix == '+' ? 1 : 0;
  item.most = postfix == '?' ? 1 : kUnbounded;
}

Program compile(const std::string& pattern) {
  Program program;
  std::size_t at = 0;
  if (byteAt(pattern, 0) == '^') {
    program.anchored = true;
    at = 1;
  }
  while (at < pattern.length()) {
    Item item;
    if (pattern[at] == '[') {
      item.bytes = readClass(pattern, ++at);
    } else {
      item.bytes.set(readByte(pattern, at));
    }
    readPostfix(pattern, at, item);
    program.items.push_back(item);
  }
  return program;
}

// The furthest end that the items from `next` on can reach from offset `at`: every number of
// repetitions of each item is tried.
std::optional<std::size_t> longestEnd(const Program& program, std::size_t next,
                                      const std::string& text, std::size_t at) {
  if (next == program.items.size()) return at;
  const Item& item = program.items[next];
  std::optional<std::size_t> best;
  for (std::size_t count = 0; count <= item.most; ++count) {
    if (count >= item.least) {
      const auto end = longestEnd(program, next + 1, text, at + count);
      if (end && (!best || *end > *best)) best = end;
    }
    if (at + count >= text.length()) break;
    if (!item.bytes.test(unsignedByte(text[at + count]))) break;
  }
  return best;
}

}  // namespace

Match search(const std::string& text, const std::string& pattern, std::size_t start) {
  const Program program = compile(pattern);
  for (std::size_t at = start; at <= text.length(); ++at) {
    if (program.anchored && at > 0) break;
    const auto end = longestEnd(program, 0, text, at);
    if (end) return {at, *end - at};
  }
  return {};
}

}  // namespace reference
