// The URLs of CSS: by tables, and beside the plain reading of the twin.
#include "page/style_text.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "base/kernels.h"
#include "reference/page/style_references.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using internal::decodeCssValue;
using internal::DecodedText;
using internal::readStyle;
using internal::StyleForm;
using internal::StyleReference;

// "span kind [flags] slot=value", a line each.
std::string lineOf(std::uint32_t begin, std::uint32_t end, const std::string& kind,
                   bool isCandidate, bool isConditional, bool isString, const std::string& value) {
  return std::to_string(begin) + "-" + std::to_string(end) + " " + kind +
         (isCandidate ? " candidate" : "") + (isConditional ? " conditional" : "") +
         (isString ? " \"" : " (") + value + "\n";
}

std::string found(std::string_view css, StyleForm form) {
  std::vector<StyleReference> references;
  readStyle(css, form, references);
  std::string lines;
  DecodedText value;
  for (const StyleReference& reference : references) {
    const Span span = reference.span;
    decodeCssValue(css.substr(span.begin, span.end - span.begin), reference.slot, value);
    lines += lineOf(span.begin, span.end, std::string(nameOf(reference.kind)),
                    (reference.flags & kCandidate) != 0, (reference.flags & kConditional) != 0,
                    reference.slot == Slot::cssString, std::string(value.text()));
  }
  return lines;
}

std::string expected(const std::string& css, StyleForm form) {
  constexpr reference::page::StyleForm kForms[] = {reference::page::StyleForm::sheet,
                                                   reference::page::StyleForm::declarations,
                                                   reference::page::StyleForm::value};
  std::string lines;
  for (const auto& reference : reference::page::styleReferences(reference::page::fromUtf8(css),
                                                                kForms[static_cast<int>(form)])) {
    lines += lineOf(reference.begin, reference.end, reference.kind, reference.isCandidate,
                    reference.isConditional, reference.isString, toUtf8(reference.value));
  }
  return lines;
}

constexpr StyleForm kForms[] = {StyleForm::sheet, StyleForm::declarations, StyleForm::value};

// Makes one version of the kernels after the other the active one.
void useNextKernels() {
  using internal::KernelLevel;
  constexpr KernelLevel kLevels[] = {KernelLevel::portable, KernelLevel::sse2, KernelLevel::avx2,
                                     KernelLevel::avx512};
  static std::size_t next = 0;
  internal::useKernels(kLevels[next++ % std::size(kLevels)]);
}

// Fails once for each text on which the two differ.
void compare(const std::string& css) {
  for (const StyleForm form : kForms) {
    EXPECT_EQ(found(css, form), expected(css, form))
        << "form " << static_cast<int>(form) << " of: " << testing::PrintToString(css);
  }
}

// What CSS gives a meaning, and what stands beside it.
const std::vector<std::string> kPieces = {
    "url(",      "URL(",   "\\75rl(", "src(",      "image-set(", "-webkit-image-set(",
    "supports(", "(",      ")",       "[",         "]",          "{",
    "}",         ";",      ":",       "\"",        "'",          "\"a\"",
    "'#b'",      "/*",     "*/",      "/",         "\\",         "\n",
    "\r\n",      "\f",     " ",       "@import ",  "@namespace", "@layer",
    "@charset",  "@",      "#",       "-",         "--x",        "--",
    "x",         "1",      "5e3",     ".",         "+",          "%",
    "<!--",      "-->",    "<",       "!",         "\xC3\xA9",   "\xC3\x97",
    "\\29 ",     "\\0",    "\\\n",    ",",         "#f",         std::string(1, '\0'),
    "\x01",      "l",      "ur",      "t(",        "@\\69mport", "layer(",
    "\\72 ",     "\\\r\n", "_",       "@import\"",
};

TEST(StyleText, ReadsAllPairsAndTriplesOfPiecesAsTheTwinDoes) {
  for (const std::string& first : kPieces) {
    for (const std::string& second : kPieces) {
      compare(first + second + "x)");
      for (const std::string& third : kPieces) compare(first + second + third + "y");
      if (HasFailure()) return;
    }
  }
}

TEST(StyleText, ReadsTextsOfManyPiecesAsTheTwinDoes) {
  std::mt19937 random(20261121);
  for (int count = 0; count < 60000 && !HasFailure(); ++count) {
    std::string css;
    for (std::size_t pieces = 3 + random() % 20; pieces > 0; --pieces) {
      css += kPieces[random() % kPieces.size()];
    }
    useNextKernels();
    compare(css);
  }
}

// Long runs of bytes that mean nothing put what does at all places of a vector.
TEST(StyleText, ReadsLongTextsAsTheTwinDoes) {
  std::mt19937 random(1121);
  for (int count = 0; count < 6000 && !HasFailure(); ++count) {
    std::string css = "a{}";
    for (std::size_t pieces = 1 + random() % 8; pieces > 0; --pieces) {
      css += kPieces[random() % kPieces.size()] + std::string(random() % 80, "xt-;"[random() % 4]);
    }
    useNextKernels();
    compare(css);
  }
}

// The new line after the digits of an escape belongs to it; any other one breaks the string.
TEST(StyleText, ReadsEscapesAndNewLinesInStringsAsTheTwinDoes) {
  const std::vector<std::string> pieces = {"\\", "\\4",  "\\E9", "1",  "00041",    "f", "\n",  "\r",
                                           "\f", "\r\n", " ",    "\"", "\xC3\xA9", "x", "\\\n"};
  std::mt19937 random(1921);
  for (int count = 0; count < 60000 && !HasFailure(); ++count) {
    std::string css = "url(\"";
    for (std::size_t i = 1 + random() % 8; i > 0; --i) css += pieces[random() % pieces.size()];
    useNextKernels();
    compare(css + "\")");
  }
}

struct Row {
  Here here;
  std::string_view css;
  std::string_view found;
};

constexpr Row kSheets[] = {
    {HERE, "@import 'a';b{c:url( d )}", "9-10 load \"a\n21-22 load conditional (d\n"},
    {HERE, "a{}@import 'b'", "12-13 load conditional \"b\n"},
    {HERE, "a{b:image-set('c' 1x,url(#d))}",
     "15-16 load candidate conditional \"c\n25-27 fragment candidate conditional (#d\n"},
    {HERE, "@namespace p url(q)", "17-18 identifier conditional (q\n"},
    {HERE, "/**/a{}/***/b:url(\"x", "19-20 load conditional \"x\n"},
    {HERE, "a{b:url(", ""},
    {HERE, "a{}/*", ""},
    {HERE, "a{}/", ""},
    {HERE, "a{}\\", ""},
    {HERE, "url(\"\\41\nb", "5-10 load conditional \"Ab\n"},
    {HERE, "url(\"\\41\r\nb", "5-11 load conditional \"Ab\n"},
    {HERE, "url(\"\\41\n\n", ""},
    {HERE, "url(\"\\41 \n", ""},
    {HERE, "url(\"\\4142434\n", ""},
    {HERE, "a{}url(\\", "7-8 load conditional (\xEF\xBF\xBD\n"},
};

TEST(StyleText, ReadsNothingOutsideTheText) {
  forEachPlacement(kSheets, [](const Row& row, Placement& placement) {
    useNextKernels();
    EXPECT_EQ(found(placement.bytes(row.css), StyleForm::sheet), row.found);
  });
}

TEST(StyleText, TakesDeepNestingAndManyEscapes) {
  const std::string deep(1000000, '(');
  EXPECT_EQ(found(deep + "url(a)", StyleForm::declarations), "1000004-1000005 load (a\n");
  std::string escapes;
  for (int count = 0; count < 300000; ++count) escapes += "a\\62 ";
  EXPECT_EQ(found("a{}" + escapes + "(url(b)", StyleForm::sheet),
            "1500008-1500009 load conditional (b\n");
}

}  // namespace
}  // namespace pagescan::tests
