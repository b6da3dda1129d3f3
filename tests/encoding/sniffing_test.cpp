// Byte order marks, the prescan and its parts: rules in tables, and everything beside the slow
// twin.
#include "encoding/sniffing.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "encodings.h"
#include "reference/encoding/sniff.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

struct SniffingCase {
  Here here;
  std::string_view bytes;
  std::string_view expected;
};

constexpr SniffingCase kMarks[] = {
    {HERE, "", "none"},
    {HERE, "\xEF\xBB", "none"},
    {HERE, "\xEF\xBB\xBF", "UTF-8"},
    {HERE, "\xFE\xFF", "UTF-16BE"},
    {HERE, "\xFF\xFE", "UTF-16LE"},
    {HERE, "\xFF\xFE\0\0"sv, "UTF-16LE"},  // no UTF-32
    {HERE, " \xFE\xFF", "none"},
};

TEST(BomOf, KnowsThreeMarks) {
  forEachPlacement(kMarks, [](const SniffingCase& row, Placement& place) {
    const std::optional<ByteOrderMark> mark = bomOf(place.bytes(row.bytes));
    ASSERT_EQ(mark ? nameOf(mark->encoding) : "none", row.expected);
    const std::size_t length = row.expected == "none" ? 0 : row.expected == "UTF-8" ? 3 : 2;
    EXPECT_EQ(mark ? mark->length : 0, length);
  });
}

constexpr SniffingCase kPrescans[] = {
    {HERE, "", "none"},
    {HERE, "<meta charset=utf-8>", "UTF-8"},
    {HERE, "<META CHARSET='KOI8-R'>", "KOI8-R"},
    {HERE, "<meta/charset=koi8-r/>", "none"},
    {HERE, "<meta/charset=koi8-r />", "KOI8-R"},
    {HERE, "<meta charset=koi8-r", "none"},  // the tag does not end
    {HERE, "<metacharset=koi8-r>", "none"},
    {HERE, "<meta charset=x><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<meta charset=x charset=koi8-r><meta charset=big5>", "Big5"},
    // A pragma needs both attributes, in any order.
    {HERE, "<meta http-equiv=content-type content='a; charset=big5'>", "Big5"},
    {HERE, "<meta content='a; charset=big5' http-equiv=Content-Type>", "Big5"},
    {HERE, "<meta content='a; charset=big5'>", "none"},
    {HERE, "<meta http-equiv=refresh content='a; charset=big5'>", "none"},
    {HERE, "<meta content='charset=big5' charset=koi8-r>", "KOI8-R"},
    {HERE, "<meta charset=koi8-r content='charset=big5'>", "KOI8-R"},
    {HERE, "<meta content='charset=big5' http-equiv=content-type charset=x>", "none"},
    {HERE, "<meta content=x content='charset=big5' http-equiv=content-type>", "none"},
    // What a meta cannot mean.
    {HERE, "<meta charset=utf-16>", "UTF-8"},
    {HERE, "<meta charset=utf-16be>", "UTF-8"},
    {HERE, "<meta charset=x-user-defined>", "windows-1252"},
    {HERE, "<meta charset=iso-2022-kr>", "replacement"},
    // Markup that is passed over.
    {HERE, "<!-- <meta charset=big5> --><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<!--><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<!---><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<!-- --!><meta charset=koi8-r>", "none"},
    {HERE, "<a title='<meta charset=big5>'><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "</a title='<meta charset=big5>'><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<!x '<meta charset=big5>'><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "</ <meta charset=big5><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<?x <meta charset=big5><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<script>'<meta charset=big5>'</script>", "Big5"},  // scripts are no exception
    {HERE, "<a =b=c><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<a b='c'd><meta charset=koi8-r>", "KOI8-R"},
    {HERE, "<a b=\"><meta charset=koi8-r>", "none"},
    {HERE, "< meta charset=koi8-r>", "none"},
    // XML declarations: in UTF-16 by their first bytes alone, else when no meta names any.
    {HERE, "<\0?\0x\0"sv, "UTF-16LE"},
    {HERE, "\0<\0?\0x"sv, "UTF-16BE"},
    {HERE, "<\0?\0y\0"sv, "none"},
    {HERE, " <\0?\0x\0"sv, "none"},
    {HERE, "<?xml version='1.0' encoding='koi8-r'?>", "KOI8-R"},
    {HERE, "<?xml encoding\n=\r\"koi8-r\"?><meta charset=big5>", "Big5"},
    {HERE, "<?xml encoding='utf-16'?>", "UTF-8"},
    {HERE, "<?xml encoding='koi8-r'", "none"},
    {HERE, "<?xml> encoding='koi8-r'", "none"},  // after the declaration
    {HERE, "<?xml encoding='koi>8-r'?>", "none"},
    {HERE, "<?xml encoding=' koi8-r'?>", "none"},
    {HERE, "<?xml encoding=koi8-r?>", "none"},
    {HERE, "<?xml encoding='koi8-r?>", "none"},
    {HERE, "<?xml encoding?>", "none"},
    {HERE, "<?xml encodin='koi8-r'?>", "none"},
    {HERE, " <?xml encoding='koi8-r'?>", "none"},
};

TEST(PrescanOf, FindsWhatAPageNames) {
  forEachPlacement(kPrescans, [](const SniffingCase& row, Placement& place) {
    EXPECT_EQ(nameOrNone(prescan(place.bytes(row.bytes))), row.expected);
    EXPECT_EQ(nameOrNone(reference::prescan(row.bytes)), row.expected) << "the twin";
  });
}

// The tag must end within the first 1,024 bytes.
TEST(PrescanOf, LooksAtSoManyBytes) {
  constexpr std::string_view kMeta = "<meta charset=koi8-r>";
  const std::size_t most = 1024 - kMeta.size();
  EXPECT_EQ(nameOrNone(prescan(repeated(" ", most) + std::string(kMeta))), "KOI8-R");
  EXPECT_EQ(nameOrNone(prescan(repeated(" ", most + 1) + std::string(kMeta))), "none");
}

constexpr SniffingCase kContents[] = {
    {HERE, "", "none"},
    {HERE, "text/html; charset=koi8-r", "KOI8-R"},
    {HERE, "CHARSET \t=\n koi8-r ; x", "KOI8-R"},
    {HERE, "charset='koi8-r'x", "KOI8-R"},
    {HERE, "charset=\"koi8-r\"", "KOI8-R"},
    {HERE, "charset=\"koi8-r", "none"},
    {HERE, "charset=koi8-r\"", "none"},
    {HERE, "charset charset=koi8-r", "KOI8-R"},
    {HERE, "charsetcharset=koi8-r", "KOI8-R"},
    {HERE, "charset", "none"},
    {HERE, "charset=", "none"},
    {HERE, "charset= ", "none"},
    {HERE, "charset=x charset=koi8-r", "none"},
    {HERE, "charset=utf-16", "UTF-16LE"},
};

TEST(EncodingFromMetaContent, ReadsTheParameter) {
  forEachPlacement(kContents, [](const SniffingCase& row, Placement& place) {
    EXPECT_EQ(nameOrNone(encodingFromMetaContent(place.bytes(row.bytes))), row.expected);
    EXPECT_EQ(nameOrNone(reference::extractFromMeta(row.bytes)), row.expected) << "the twin";
  });
}

constexpr SniffingCase kCharsetRules[] = {
    {HERE, "@charset \"koi8-r\";", "KOI8-R"},
    {HERE, "@charset \" koi8-r\t\";", "KOI8-R"},
    {HERE, "@charset \"utf-16be\";", "UTF-8"},
    {HERE, "@charset \"x-user-defined\";", "x-user-defined"},
    {HERE, "@charset 'koi8-r';", "none"},
    {HERE, "@charset \"koi8-r\" ;", "none"},
    {HERE, "@charset \"koi8-r\"", "none"},
    {HERE, "@charset  \"koi8-r\";", "none"},
    {HERE, "@CHARSET \"koi8-r\";", "none"},
    {HERE, " @charset \"koi8-r\";", "none"},
    {HERE, "@charset \"koi8-r", "none"},
    {HERE, "@charset \"x\";", "none"},
    {HERE, "@charset \"\xFFkoi8-r\";", "none"},
    {HERE, "", "none"},
};

TEST(EncodingFromCharsetRule, TakesTheBytesLiterally) {
  forEachPlacement(kCharsetRules, [](const SniffingCase& row, Placement& place) {
    EXPECT_EQ(nameOrNone(encodingFromCharsetRule(place.bytes(row.bytes))), row.expected);
    EXPECT_EQ(nameOrNone(reference::charsetRule(row.bytes)), row.expected) << "the twin";
  });
}

void expectSame(const std::string& text) {
  ASSERT_EQ(prescan(text), reference::prescan(text)) << testing::PrintToString(text);
  ASSERT_EQ(encodingFromMetaContent(text), reference::extractFromMeta(text))
      << testing::PrintToString(text);
  ASSERT_EQ(encodingFromCharsetRule(text), reference::charsetRule(text))
      << testing::PrintToString(text);
  ASSERT_EQ(encodingForLabel(text), reference::getEncoding(text)) << testing::PrintToString(text);
  const std::optional<ByteOrderMark> mark = bomOf(text);
  ASSERT_EQ(mark ? std::optional(mark->encoding) : std::nullopt, reference::bomSniff(text));
}

const std::vector<std::string_view> kMarkup = {
    "<",  "<meta ",  "</",   "<!--",   "-->",         "-",
    ">",  "charset", "=",    "koi8-r", "content",     " http-equiv=content-type ",
    "\"", "'",       " ",    "/",      "<?xml",       "encoding",
    "x",  "utf-16",  "<!",   "<?",     ";",           "@charset \"",
    "\n", "\xFF",    "\0"sv, "BIG5",   "<\0?\0x\0"sv, "charset='latin2' "};

TEST(SniffingTwin, AgreesOnEveryShortText) {
  forEachText(kMarkup, 3, [](const std::string& text) {
    if (!testing::Test::HasFatalFailure()) expectSame(text);
  });
}

TEST(SniffingTwin, AgreesWithinAMeta) {
  forEachText(kMarkup, 3, [](const std::string& text) {
    if (!testing::Test::HasFatalFailure()) expectSame("<meta " + text + ">-->'\">");
  });
}

TEST(SniffingTwin, AgreesOnRandomTexts) {
  RandomTexts random;
  const std::string page =
      "<!doctype html><html lang=en><head><title>A &amp; B</title><meta name=x content='y'>"
      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=shift_jis\"><!-- c "
      "--></head>";
  for (std::size_t i = randomRuns(20000, 1000000); i > 0; --i) {
    expectSame(random.text(kMarkup, 40));
    expectSame(random.mutated(page, 6));
    expectSame(random.textOfRuns(kMarkup, 60));
    if (testing::Test::HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace pagescan::tests
