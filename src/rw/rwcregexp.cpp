#include "rw/rwcregexp.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/byte_class.h"
#include "base/search.h"
#include "rw/rwcstring.h"

using pagescan::internal::ByteClass;

namespace {

// One place of a pattern: a byte of the class, which may be left out or come again and again.
// "x+" is kept as "x" and "x*".
struct Item {
  ByteClass bytes;
  bool isOptional = false;
  bool isRepeated = false;
};

struct Match {
  const char* begin;
  const char* end;
};

// Reads a pattern text from left to right.
class Parser {
 public:
  explicit Parser(std::string_view pattern) : rest_(pattern) {}

  bool takeAnchor() { return take('^'); }

  std::vector<Item> takeItems() {
    std::vector<Item> items;
    while (!rest_.empty()) {
      Item item{takeBytes()};
      if (take('+')) {
        items.push_back(item);
        item.isOptional = item.isRepeated = true;
      } else if (take('*')) {
        item.isOptional = item.isRepeated = true;
      } else if (take('?')) {
        item.isOptional = true;
      }
      items.push_back(item);
    }
    return items;
  }

 private:
  bool take(char expected) {
    if (rest_.empty() || rest_.front() != expected) return false;
    rest_.remove_prefix(1);
    return true;
  }

  char takeByte() {
    const char byte = rest_.front();
    rest_.remove_prefix(1);
    return byte;
  }

  // A byte as it stands, or the one that a backslash and the next byte mean.
  char takeLiteral() {
    const char byte = takeByte();
    if (byte != '\\' || rest_.empty()) return byte;
    const char escaped = takeByte();
    switch (escaped) {
      case 't':
        return '\t';
      case 'r':
        return '\r';
      case 'n':
        return '\n';
      default:
        return escaped;
    }
  }

  ByteClass takeBytes() {
    ByteClass bytes;
    if (!take('[')) {
      bytes.add(takeLiteral());
      return bytes;
    }
    while (!rest_.empty() && !take(']')) {
      const char first = takeLiteral();
      const bool isRange = rest_.size() >= 2 && rest_[0] == '-' && rest_[1] != ']';
      if (isRange) takeByte();
      bytes = bytes | ByteClass::range(first, isRange ? takeLiteral() : first);
    }
    return bytes;
  }

  std::string_view rest_;
};

// What can come first from item `from` on.
ByteClass firstBytes(const std::vector<Item>& items, std::size_t from) {
  ByteClass bytes;
  for (std::size_t i = from; i < items.size(); ++i) {
    bytes = bytes | items[i].bytes;
    if (!items[i].isOptional) break;
  }
  return bytes;
}

// Whether taking each item as often as it goes is always right: what may be left out never looks
// like what follows it.
bool isGreedy(const std::vector<Item>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].isOptional && items[i].bytes.intersects(firstBytes(items, i + 1))) return false;
  }
  return true;
}

// Whether a try that fails never passes over many places where another one has to start: what may
// be repeated never looks like the start of a match.
bool isCheapToRetry(const std::vector<Item>& items) {
  const ByteClass start = firstBytes(items, 0);
  return std::none_of(items.begin(), items.end(), [&](const Item& item) {
    return item.isRepeated && item.bytes.intersects(start);
  });
}

}  // namespace

struct RWCRegexp::Program {
  explicit Program(std::string_view pattern) {
    Parser parser(pattern);
    isAnchored = parser.takeAnchor();
    items = parser.takeItems();
    start = firstBytes(items, 0);
    matchesNothing =
        std::all_of(items.begin(), items.end(), [](const Item& item) { return item.isOptional; });
    triesGreedily = isGreedy(items) && (isAnchored || isCheapToRetry(items));
    if (start.size() == 1) onlyStart = soleMember(start);
  }

  std::optional<Match> search(const char* begin, const char* from, const char* end) const {
    if (isAnchored && from != begin) return std::nullopt;
    return triesGreedily ? searchGreedily(from, end) : searchAtOnce(from, end);
  }

 private:
  static char soleMember(const ByteClass& bytes) {
    int byte = 0;
    while (!bytes.contains(static_cast<char>(byte))) ++byte;
    return static_cast<char>(byte);
  }

  const char* nextStart(const char* from, const char* end) const {
    if (matchesNothing) return from;
    return onlyStart ? pagescan::internal::findByte(from, end, *onlyStart)
                     : pagescan::internal::findFirstOf(from, end, start);
  }

  std::optional<Match> searchGreedily(const char* from, const char* end) const {
    if (isAnchored) return matchAt(from, end);
    for (const char* at = nextStart(from, end); at < end || matchesNothing;
         at = nextStart(at + 1, end)) {
      if (const auto match = matchAt(at, end)) return match;
    }
    return std::nullopt;
  }

  std::optional<Match> matchAt(const char* begin, const char* end) const {
    const char* at = begin;
    for (const Item& item : items) {
      if (item.isRepeated) {
        at = pagescan::internal::findFirstNotOf(at, end, item.bytes);
      } else if (at < end && item.bytes.contains(*at)) {
        ++at;
      } else if (!item.isOptional) {
        return std::nullopt;
      }
    }
    return Match{begin, at};
  }

  // Follows every way to match at once: for each number of items passed, the earliest start from
  // which the bytes so far get there.
  std::optional<Match> searchAtOnce(const char* from, const char* end) const {
    std::vector<const char*> starts(items.size() + 1, nullptr);
    std::optional<Match> best;
    for (const char* at = from;; ++at) {
      const bool isIdle =
          std::all_of(starts.begin(), starts.end(), [](const char* s) { return s == nullptr; });
      if (isIdle && (best || (isAnchored && at != from))) break;
      if (isIdle && !isAnchored) at = nextStart(at, end);
      if (!best && starts[0] == nullptr && (!isAnchored || at == from)) starts[0] = at;
      passOptionalItems(starts);
      // Never a later start than the best one: those are dropped.
      if (const char* matched = std::exchange(starts.back(), nullptr)) best = Match{matched, at};
      if (best) dropLaterThan(best->begin, starts);
      if (at == end) break;
      takeByte(*at, starts);
    }
    return best;
  }

  static void keepEarliest(const char*& kept, const char* other) {
    if (other != nullptr && (kept == nullptr || other < kept)) kept = other;
  }

  void passOptionalItems(std::vector<const char*>& starts) const {
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].isOptional) keepEarliest(starts[i + 1], starts[i]);
    }
  }

  static void dropLaterThan(const char* limit, std::vector<const char*>& starts) {
    for (const char*& start : starts) {
      if (start != nullptr && start > limit) start = nullptr;
    }
  }

  // From the last item to the first, so that each start moves by one byte.
  void takeByte(char byte, std::vector<const char*>& starts) const {
    for (std::size_t i = items.size(); i-- > 0;) {
      const char* taken = items[i].bytes.contains(byte) ? starts[i] : nullptr;
      if (!items[i].isRepeated) {
        keepEarliest(starts[i + 1], taken);
        taken = nullptr;
      }
      starts[i] = taken;
    }
  }

  bool isAnchored;
  std::vector<Item> items;
  ByteClass start;
  std::optional<char> onlyStart;
  bool matchesNothing;
  bool triesGreedily;
};

RWCRegexp::RWCRegexp(const char* pattern)
    : program_(std::make_unique<Program>(pattern ? pattern : "")) {}
RWCRegexp::RWCRegexp(const RWCRegexp& other)
    : program_(std::make_unique<Program>(*other.program_)) {}
RWCRegexp::RWCRegexp(RWCRegexp&& other) noexcept = default;
RWCRegexp& RWCRegexp::operator=(RWCRegexp other) noexcept {
  program_.swap(other.program_);
  return *this;
}
RWCRegexp::~RWCRegexp() = default;

std::size_t RWCString::index(const RWCRegexp& pattern, std::size_t* matchLength,
                             std::size_t start) const {
  if (start > length_) return npos;
  const auto match = pattern.program_->search(data_, data_ + start, data_ + length_);
  if (!match) return npos;
  if (matchLength) *matchLength = static_cast<std::size_t>(match->end - match->begin);
  return static_cast<std::size_t>(match->begin - data_);
}

std::size_t RWCString::index(const RWCRegexp& pattern, std::size_t start) const {
  return index(pattern, nullptr, start);
}

RWCString RWCString::operator()(const RWCRegexp& pattern) const {
  std::size_t matchLength = 0;
  const std::size_t at = index(pattern, &matchLength, 0);
  return at == npos ? RWCString() : RWCString(data_ + at, matchLength);
}
