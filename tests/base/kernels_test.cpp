// The kernels that look for tags, mark what matters in them, look for the marks of scripts and
// comments, and for regions, each version beside plain loops, in texts next to unreadable pages.
#include "base/kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/delimiters.h"
#include "base/search.h"
#include "classic/tags_of_interest.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using Pieces = std::vector<std::string_view>;

// Bytes of 128 and above are those of "<td" and "-->" with one bit more.
const Pieces kPieces = {
    "<td>",
    "<TH ",
    "<img ",
    "<Iframe>",
    "<?import ",
    "<xml\n",
    "<~td>",
    "< base>",
    "<b",
    "</td>",
    "<",
    "~",
    ">",
    " ",
    "x",
    "<script",
    "<Script>",
    "</s",
    "</SCRIPT>",
    "<sc",
    "<!--",
    "-->",
    "<!",
    "--",
    "-",
    "\xBCtd",
    "<\xF4\xE4",
    "-\xAD>",
    "\xAD\xAD\xBE",
};

// Calls check(text) for texts of every length that matters, against a page at either end.
template <typename Check>
void forEachPlacedText(const Pieces& pieces, const Check& check) {
  RandomTexts random;
  forEachKernelLevel([&] {
    for (std::size_t i = randomRuns(2000, 200000); i > 0; --i) {
      const std::string text = random.textOfRuns(pieces, 30);
      for (const Placement::Kind kind : {Placement::kBeforeGuardPage, Placement::kAfterGuardPage}) {
        Placement place(kind);
        check(place.bytes(text), random);
      }
    }
  });
}

// The first place from `from` on at which one of the delimiters stands, or the length.
std::size_t firstOf(const Pieces& delimiters, std::string_view text, std::size_t from) {
  for (; from < text.size(); ++from) {
    const bool stands = std::any_of(delimiters.begin(), delimiters.end(), [&](const auto& one) {
      return equalsIgnoringCase(text.substr(from, one.size()), one);
    });
    if (stands) break;
  }
  return from;
}

// The first "<" from `from` on after which a name of interest is read to its end, or the length.
std::size_t firstTag(std::string_view text, std::size_t from) {
  const char* end = text.data() + text.size();
  for (; from < text.size(); ++from) {
    if (text[from] != '<') continue;
    const char* name = findFirstNotOf(text.data() + from, end, kTagNameEnds);
    const char* nameEnd = findFirstOf(name, end, kTagNameEnds);
    const bool isWhole = nameEnd != end;
    if (isWhole && findTagOfInterest({name, static_cast<std::size_t>(nameEnd - name)})) break;
  }
  return from;
}

TEST(FindTagOpening, MissesNoTag) {
  forEachPlacedText(kPieces, [](std::string_view text, RandomTexts&) {
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end; ++at) {
      const auto from = static_cast<std::size_t>(at - text.data());
      at = findTagOpening(at, end);
      ASSERT_LE(static_cast<std::size_t>(at - text.data()), firstTag(text, from)) << text;
      if (at == end) break;
      ASSERT_EQ(*at, '<') << text;
    }
  });
}

TEST(FindMark, MissesNoDelimiter) {
  const Pieces delimiters = {"<script", "</script>", "<!--", "-->"};
  forEachPlacedText(kPieces, [&](std::string_view text, RandomTexts& random) {
    const char* const end = text.data() + text.size();
    const std::size_t limit = random.number(text.size() + 1);
    for (std::size_t from = 0; from < limit; ++from) {
      const std::size_t first = std::min(limit, firstOf(delimiters, text, from));
      const char* found = kernels().findMark(text.data() + from, text.data() + limit, end);
      from = static_cast<std::size_t>(found - text.data());
      ASSERT_LE(from, first) << text;
    }
  });
}

TEST(FindRegion, FindsBothDelimiters) {
  constexpr Delimiters comment("<!--", "-->");
  forEachPlacedText(kPieces, [&](std::string_view text, RandomTexts& random) {
    const std::string_view rest = text.substr(random.number(text.size() + 1));
    const std::size_t open = rest.find("<!--");
    const std::size_t close = rest.find("-->");
    const bool isThere = close != std::string_view::npos && open < close;
    Region region{};
    ASSERT_EQ(comment.find(rest.data(), rest.data() + rest.size(), region), isThere) << rest;
    if (!isThere) return;
    ASSERT_EQ(region.open, rest.data() + open) << rest;
    ASSERT_EQ(region.close, rest.data() + close) << rest;
  });
}

bool isOneOf(char c, std::string_view bytes) {
  return bytes.find(c) != std::string_view::npos;
}

TEST(MarkTags, MarksEachByteThatMatters) {
  const Pieces pieces = {"<a", " ",    "\t",   "\n",   "\f",   "\r",   "/",    ">",   "=\"", "'",
                         "\"", "href", "\v",   "\b",   "\x0E", "\x1F", "!",    ".",   "?",   "#",
                         "<",  "\xA0", "\x89", "\xAF", "\xBC", "\xBD", "\xBE", "\xA2"};
  forEachPlacedText(pieces, [](std::string_view text, RandomTexts& random) {
    const std::size_t blocks = std::min(text.size() / TagMarks::kBlock, TagMarks::kMostBlocks);
    const std::size_t spare = text.size() - blocks * TagMarks::kBlock;
    // Flush against either end: a guard page is there.
    const std::size_t begin = random.number(2) == 0 ? 0 : spare;
    TagMarks marks;
    constexpr std::uint64_t kUntouched = 0x123456789ABCDEF0;
    for (TagMarks::Words* words : {&marks.openings, &marks.nameEnds, &marks.quotes}) {
      words->fill(kUntouched);
    }
    kernels().markTags(text.data() + begin, blocks, marks);
    const auto expectSame = [&](const TagMarks::Words& words, std::string_view bytes) {
      for (std::size_t i = 0; i < blocks * TagMarks::kBlock; ++i) {
        const bool isMarked = (words[i / TagMarks::kBlock] >> i % TagMarks::kBlock & 1) != 0;
        ASSERT_EQ(isMarked, isOneOf(text[begin + i], bytes)) << text << " at " << begin + i;
      }
      ASSERT_EQ(words[blocks], kUntouched);
    };
    expectSame(marks.openings, "<");
    expectSame(marks.nameEnds, "\t\n\f\r />=");
    expectSame(marks.quotes, "\"");
  });
}

}  // namespace
}  // namespace pagescan::tests
