// A sequence of operations on strings that share their bytes, beside std::string.

#include <algorithm>
#include <array>
#include <utility>

#include "reference/classic/strings.h"
#include "support/input.h"

namespace {

using fuzz::check;
using fuzz::Input;

struct Pair {
  RWCString string;
  std::string expected;
};

class Sequence {
 public:
  explicit Sequence(Input& input) : input_(input) {}

  void run() {
    while (!input_.isEmpty() && total() < kMostBytes) {
      step();
      for (const Pair& pair : pairs_) {
        check(fuzz::textOf(pair.string) == pair.expected, "a string holds what was put into it");
      }
    }
  }

 private:
  static constexpr std::size_t kMostBytes = 100000;

  std::size_t total() const {
    std::size_t sum = 0;
    for (const Pair& pair : pairs_) sum += pair.expected.size();
    return sum;
  }

  Pair& any() { return pairs_[input_.number(pairs_.size())]; }
  std::size_t placeIn(const Pair& pair) {
    return std::min<std::size_t>(input_.number(256), pair.expected.size());
  }

  void step() {
    Pair& to = any();
    const std::size_t operation = input_.number(12);
    switch (operation) {
      case 0: {
        const std::string_view text = input_.text();
        to = {fuzz::stringOf(text), std::string(text)};
        break;
      }
      case 1: {
        const Pair& from = any();
        to = {from.string, from.expected};
        break;
      }
      case 2: {
        Pair& from = any();
        to.string.swap(from.string);
        to.expected.swap(from.expected);
        break;
      }
      case 3: {
        const fuzz::Block text(input_.text());
        to.string.append(text.data(), text.size());
        to.expected.append(text.data(), text.size());
        break;
      }
      case 4:
        to.string.append(to.string);
        to.expected += std::string(to.expected);
        break;
      case 5: {
        const std::size_t at = placeIn(to);
        const Pair& from = any();
        to.string.insert(at, from.string);
        to.expected.insert(at, std::string(from.expected));
        break;
      }
      case 6: {
        const std::size_t at = placeIn(to);
        const std::size_t count = input_.number(256);
        to.string.remove(at, count);
        to.expected.erase(at, count);
        break;
      }
      case 7: {
        const std::size_t length = input_.number(256);
        to.string.resize(length, '.');
        to.expected.resize(length, '.');
        break;
      }
      case 8:
        writeByte(to);
        break;
      case 9:
        to.string.toLower();
        to.expected = reference::lowered(to.expected);
        break;
      case 10: {
        const auto ends = static_cast<int>(1 + input_.number(3));
        to.string = to.string.strip(static_cast<RWCString::stripType>(ends), 'a');
        to.expected = reference::strip(to.expected, static_cast<reference::Strip>(ends), 'a');
        break;
      }
      default:
        search(to);
    }
  }

  void writeByte(Pair& to) {
    const std::size_t at = placeIn(to);
    if (at == to.expected.size()) return;
    to.string[at] = '#';
    to.expected[at] = '#';
  }

  void search(const Pair& in) {
    const std::string pattern(input_.text());
    const std::size_t start = input_.number(256);
    const RWCString sought = fuzz::stringOf(pattern);
    check(in.string.index(sought, start) == reference::index(in.expected, pattern, start),
          "a search finds the first occurrence");
    check(in.string.index(sought, start, RWCString::ignoreCase) ==
              reference::index(in.expected, pattern, start, reference::Case::ignore),
          "a search that ignores case finds the first occurrence");
    const int order = in.string.compareTo(sought);
    const int expected = in.expected.compare(pattern);
    check((order > 0) == (expected > 0) && (order < 0) == (expected < 0), "strings sort by bytes");
  }

  Input& input_;
  std::array<Pair, 4> pairs_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  Sequence(input).run();
  return 0;
}
