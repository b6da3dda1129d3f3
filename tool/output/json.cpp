#include "output/json.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <utility>

#include "output/utf8_text.h"

namespace pagescan::tool {

namespace {

using Word = std::uint64_t;
constexpr Word kOnes = 0x0101'0101'0101'0101;
constexpr Word kTops = 0x80 * kOnes;

// The top bit of each byte that is zero; a byte above one that is zero may be marked falsely.
constexpr Word zeroBytes(Word word) {
  return (word - kOnes) & ~word & kTops;
}

// The same of each byte that a JSON string must escape: below a blank, a quote, a backslash.
constexpr Word escapedBytes(Word word) {
  const Word controls = (word - 0x20 * kOnes) & ~word & kTops;
  return controls | zeroBytes(word ^ '"' * kOnes) | zeroBytes(word ^ '\\' * kOnes);
}

constexpr bool mustBeEscaped(char byte) {
  return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

// The longest escape of one byte.
constexpr std::size_t kLongestEscape = 6;

char* putEscape(char* at, char byte) {
  constexpr char kDigits[] = "0123456789abcdef";
  constexpr std::string_view kShort = "\"\"\\\\\bb\ff\nn\rr\tt";  // pairs: the byte, its letter
  *at++ = '\\';
  for (std::size_t i = 0; i < kShort.size(); i += 2) {
    if (kShort[i] != byte) continue;
    *at++ = kShort[i + 1];
    return at;
  }
  for (const char digit : {'u', '0', '0', kDigits[byte >> 4], kDigits[byte & 0xF]}) *at++ = digit;
  return at;
}

// Copies the text with its escapes, eight bytes at a time. May write a word beyond what it returns.
// The lowest mark of a word is always true.
char* putEscaped(char* at, std::string_view text) {
  const char* from = text.data();
  const char* const end = from + text.size();
  if constexpr (std::endian::native == std::endian::little) {
    for (Word word; end - from >= static_cast<std::ptrdiff_t>(sizeof word);) {
      std::memcpy(&word, from, sizeof word);
      std::memcpy(at, &word, sizeof word);
      const Word marks = escapedBytes(word);
      const int plain = marks == 0 ? 8 : std::countr_zero(marks) / 8;
      at += plain;
      from += plain;
      if (marks != 0) at = putEscape(at, *from++);
    }
  }
  for (; from != end; ++from) {
    if (mustBeEscaped(*from)) {
      at = putEscape(at, *from);
    } else {
      *at++ = *from;
    }
  }
  return at;
}

// What a text is made of.
struct Look {
  bool isPlain;  // nothing is to be escaped
  bool isAscii;
};

template <class Number>
Number numberAt(const char* at) {
  Number number;
  std::memcpy(&number, at, sizeof number);
  return number;
}

// A text of less than eight bytes as a word: some of its bytes twice, and else blanks.
Word shortWord(std::string_view text) {
  const char* const end = text.data() + text.size();
  if (text.size() >= sizeof(std::uint32_t)) {
    return numberAt<std::uint32_t>(text.data()) |
           Word{numberAt<std::uint32_t>(end - sizeof(std::uint32_t))} << 32;
  }
  Word word = ' ' * kOnes;
  for (const char byte : text) word = word << 8 | static_cast<unsigned char>(byte);
  return word;
}

// Eight bytes at a time; the last eight may hold some that were looked at before.
Look lookAt(std::string_view text) {
  Word escaped = 0;
  Word tops = 0;
  const auto take = [&](Word word) {
    escaped |= escapedBytes(word);
    tops |= word;
  };
  if (text.size() < sizeof(Word)) {
    take(shortWord(text));
  } else {
    const char* const last = text.data() + text.size() - sizeof(Word);
    for (const char* at = text.data(); at < last; at += sizeof(Word)) take(numberAt<Word>(at));
    take(numberAt<Word>(last));
  }
  return {escaped == 0, (tops & kTops) == 0};
}

}  // namespace

void JsonWriter::beginLine() {
  at_ = line_.get() + kept_.length;
  separator_ = kept_.length == 0 ? '{' : ',';
  notUtf8_.resize(kept_.notUtf8);
}

void JsonWriter::keepBeginning() {
  kept_ = {static_cast<std::size_t>(at_ - line_.get()), notUtf8_.size()};
}

void JsonWriter::addWords(std::string_view member, const std::vector<std::string_view>& words) {
  addName(member);
  char separator = '[';
  for (const std::string_view word : words) {
    *makeRoom(1) = separator;
    ++at_;
    putString(word);
    separator = ',';
  }
  const std::string_view close = words.empty() ? "[]" : "]";
  at_ = std::copy(close.begin(), close.end(), makeRoom(close.size()));
}

void JsonWriter::endLine() {
  if (!notUtf8_.empty()) addWords("bytes", notUtf8_);
  const std::string_view close = separator_ == '{' ? "{}\n" : "}\n";
  out_.append(line_.get(), at_).append(close);
}

void JsonWriter::putPlain(std::string_view text) {
  char* at = makeRoom(text.size() + 2);
  *at++ = '"';
  at = std::copy(text.begin(), text.end(), at);  // memcpy takes no null of an empty text
  *at++ = '"';
  at_ = at;
}

void JsonWriter::putString(std::string_view text) {
  lookAt(text).isPlain ? putPlain(text) : putWithEscapes(text);
}

// Piece by piece: a long text needs no room for as many escapes.
void JsonWriter::putWithEscapes(std::string_view text) {
  constexpr std::size_t kPiece = 65536;
  *makeRoom(1) = '"';
  ++at_;
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, kPiece);
    at_ = putEscaped(makeRoom(piece.size() * kLongestEscape + sizeof(Word)), piece);
    text.remove_prefix(piece.size());
  }
  *makeRoom(1) = '"';
  ++at_;
}

// Returns whether they are UTF-8.
bool JsonWriter::putBytes(std::string_view bytes) {
  const Look look = lookAt(bytes);
  if (!look.isAscii && !isWellFormedUtf8(bytes)) {
    putString(bytesAsCodePoints(bytes));
    return false;
  }
  look.isPlain ? putPlain(bytes) : putWithEscapes(bytes);
  return true;
}

void JsonWriter::putNumber(std::int64_t number) {
  constexpr std::size_t kMostDigits = 20;
  char* at = makeRoom(kMostDigits);
  at_ = std::to_chars(at, at + kMostDigits, number).ptr;
}

// Keeps what was written of the line.
void JsonWriter::grow(std::size_t size) {
  const auto written = static_cast<std::size_t>(at_ - line_.get());
  const auto capacity = static_cast<std::size_t>(end_ - line_.get());
  const std::size_t wanted = std::max(written + size, 2 * capacity);
  auto grown = std::make_unique_for_overwrite<char[]>(wanted);
  std::copy_n(line_.get(), written, grown.get());
  line_ = std::move(grown);
  at_ = line_.get() + written;
  end_ = line_.get() + wanted;
}

}  // namespace pagescan::tool
