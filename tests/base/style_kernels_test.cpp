// The kernels that walk style text, each version beside plain loops, in texts next to unreadable
// pages.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/kernels.h"
#include "base/search.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using Pieces = std::vector<std::string_view>;

// Bytes of 128 and above are those of marks and of their neighbours with one
// bit more.
const Pieces kStylePieces = {
    "\"ab\"", "'c'",   "/*d*/", "@import",  "@n",        "ur",   "image-set(", "url(", "SRC(",
    "-set(",  "not(",  "(",     ")",        "/",         "/*",   "*/",         "*",    "\"",
    "'",      "\\",    "@",     "l",        "C",         "t",    "\n",         "\r",   "\f",
    "\t",     " ",     "\x7F",  "\x1F",     "!",         "~",    "x",          "{",    "\xEC(",
    "l\xA8",  "/\xAA", "\xAF*", "\xA2\xA7", "\xDC",      "\xC0", "\x8A",       "\xFF", ",",
    "`",      "\x02",  "\x0F",  "abcdef",   "color: x;",
};

// Calls check(text) for texts of every length that matters, against a page at either end.
template <typename Check>
void forEachPlacedText(const Pieces& pieces, const Check& check) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = inShortOrDeepRun(2000, 200000); i > 0; --i) {
      const std::string text = random.textOfRuns(pieces, 30);
      for (const Placement::Kind kind : {Placement::kBeforeGuardPage, Placement::kAfterGuardPage}) {
        Placement place(kind);
        check(place.bytes(text), random);
      }
    }
  });
}

bool isOneOf(char c, std::string_view bytes) {
  return bytes.find(c) != std::string_view::npos;
}

// Walks from each mark to the next one with a kernel, beside isMark(text, at): whether a mark
// stands at `at` of a text that is all there is.
template <typename IsMark>
void expectMarks(const char* (*Kernels::*find)(const char*, const char*), const IsMark& isMark) {
  forEachPlacedText(kStylePieces, [&](std::string_view text, RandomTexts&) {
    for (std::size_t from = 0; from <= text.size(); ++from) {
      const std::string_view rest = text.substr(from);
      std::size_t first = 0;
      while (first < rest.size() && !isMark(rest, first)) ++first;
      const char* const found = (kernels().*find)(rest.data(), rest.data() + rest.size());
      ASSERT_EQ(static_cast<std::size_t>(found - rest.data()), first) << rest;
      from += first;
    }
  });
}

// The plain way, byte by byte: what a string or comment holds is passed one by one.
class PlainStyleWalk {
 public:
  PlainStyleWalk(std::string_view text, std::size_t at) : text_(text), at_(at), floor_(at) {}

  void walk() {
    while (at_ < text_.size() && passesOne()) {
    }
  }

  std::size_t at() const { return at_; }
  std::size_t floor() const { return floor_; }

 private:
  bool passesOne() {
    const char c = text_[at_];
    if (c == '\\') return false;
    if (c == '"' || c == '\'') return passesString(c);
    if (text_.substr(at_, 2) == "/*") return passesComment();
    if (c == '@' && at_ + 1 < text_.size() && isOneOf(text_[at_ + 1], "iInN\\")) return false;
    if (c == '(' && followsFunction()) return false;
    ++at_;
    return true;
  }

  bool passesString(char quote) {
    std::size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != quote && !isOneOf(text_[end], "\n\r\f")) ++end;
    if (end == text_.size() || text_[end] != quote || text_[end - 1] == '\\') return false;
    at_ = floor_ = end + 1;
    return true;
  }

  bool passesComment() {
    const std::size_t close = text_.find("*/", at_ + 2);
    at_ = floor_ = close == std::string_view::npos ? text_.size() : close + 2;
    return true;
  }

  bool followsFunction() const {
    if (at_ - floor_ < 3) return false;
    const std::string_view last = text_.substr(at_ - 3, 3);
    return equalsIgnoringCase(last, "url") || equalsIgnoringCase(last, "src") ||
           equalsIgnoringCase(last, "set");
  }

  std::string_view text_;
  std::size_t at_;
  std::size_t floor_;
};

TEST(FindStyleMark, PassesWhatThePlainWalkPasses) {
  forEachPlacedText(kStylePieces, [](std::string_view text, RandomTexts& random) {
    const char* const begin = text.data();
    for (const std::size_t from : {std::size_t{0}, random.number(text.size() + 1)}) {
      PlainStyleWalk plain(text, from);
      plain.walk();
      const StylePlace found =
          kernels().findStyleMark(begin, begin + text.size(), {begin + from, begin + from});
      ASSERT_EQ(static_cast<std::size_t>(found.at - begin), plain.at()) << text << " from " << from;
      ASSERT_EQ(static_cast<std::size_t>(found.floor - begin), plain.floor()) << text;
    }
  });
}

TEST(FindStringMark, FindsEachMark) {
  expectMarks(&Kernels::findStringMark, [](std::string_view text, std::size_t at) {
    return isOneOf(text[at], "\"'\\\n\r\f");
  });
}

TEST(FindUrlMark, FindsEachMark) {
  expectMarks(&Kernels::findUrlMark, [](std::string_view text, std::size_t at) {
    return isOneOf(text[at], "\"'\\()\x7F") || (text[at] >= '\x01' && text[at] <= ' ');
  });
}

// Of a text that holds one mark, at `at`.
void expectMarkAt(std::size_t at, std::string_view text) {
  const char* const begin = text.data();
  const char* const end = begin + text.size();
  ASSERT_EQ(kernels().findStyleMark(begin, end, {begin, begin}).at, begin + at);
  ASSERT_EQ(kernels().findStringMark(begin, end), begin + at);
  ASSERT_EQ(kernels().findUrlMark(begin, end), begin + at);
}

// The rows above hold marks every few bytes; here one stands at each place of a long text alone.
TEST(StyleKernels, FindAMarkAtEveryPlace) {
  constexpr std::size_t kLength = 200;
  forEachKernelLevel([] {
    for (std::size_t at = 0; at < kLength; ++at) {
      std::string text(kLength, 'l');
      text[at] = '\\';
      for (const Placement::Kind kind : {Placement::kBeforeGuardPage, Placement::kAfterGuardPage}) {
        Placement place(kind);
        expectMarkAt(at, place.bytes(text));
      }
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
