#include "zkhtmlattributefinder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

#include "rw/rwcollectables.h"
#include "support/placement.h"
#include "support/texts.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// What stands in the two dictionaries under one name.
struct Attribute {
  std::string_view name;
  std::string_view value;
  int offset;
};

// Up to three attributes are enough for every rule; unused places have an empty name.
struct FindCase {
  Here here;
  std::string_view text;
  unsigned long pos;
  unsigned long posAfter;
  Attribute attributes[3];
};

std::size_t countOf(const FindCase& row) {
  std::size_t count = 0;
  for (const Attribute& attribute : row.attributes) count += attribute.name.empty() ? 0 : 1;
  return count;
}

class Found {
 public:
  Found() = default;
  Found(const Found&) = delete;
  Found& operator=(const Found&) = delete;
  ~Found() {
    values.clearAndDestroy();
    offsets.clearAndDestroy();
  }

  void expect(const Attribute& attribute) const {
    const RWCollectableString key(stringOf(attribute.name));
    const auto* const value = dynamic_cast<RWCollectableString*>(values.findValue(&key));
    const auto* const offset = dynamic_cast<RWCollectableInt*>(offsets.findValue(&key));
    ASSERT_NE(value, nullptr) << attribute.name;
    ASSERT_NE(offset, nullptr) << attribute.name;
    EXPECT_EQ(bytesOf(*value), attribute.value) << attribute.name;
    EXPECT_EQ(offset->value(), attribute.offset) << attribute.name;
    EXPECT_NE(values.find(&key), offsets.find(&key)) << "one key object in both dictionaries";
  }

  RWHashDictionary values;
  RWHashDictionary offsets;
};

void expectFound(const FindCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  unsigned long pos = row.pos;
  Found found;
  CHTMLAttributeFinder().FindAttributes(text, pos, found.values, found.offsets);
  EXPECT_EQ(pos, row.posAfter);
  EXPECT_EQ(found.values.entries(), countOf(row));
  EXPECT_EQ(found.offsets.entries(), countOf(row));
  for (const Attribute& attribute : row.attributes) {
    if (!attribute.name.empty()) found.expect(attribute);
  }
  EXPECT_EQ(bytesOf(text), row.text);
}

constexpr FindCase kTags[] = {
    {HERE,
     "<a HREF=\"x.html\" target=_top disabled>"sv,
     1,
     37,
     {{"href", "x.html", 9}, {"target", "_top", 24}, {"disabled", "", -1}}},
    {HERE, "<img src = 'a b.gif'>"sv, 3, 19, {{"src", "a b.gif", 12}}},
    {HERE, "<a href=\"x\" href=\"y\">"sv, 1, 19, {{"href", "x", 9}}},
    {HERE, "<a>"sv, 1, 2, {}},
    {HERE, "<a >"sv, 1, 3, {}},
    {HERE, "<a b>"sv, 1, 4, {{"b", "", -1}}},
    {HERE, "<a b >"sv, 1, 4, {{"b", "", -1}}},
    {HERE, "<a b c>"sv, 1, 6, {{"b", "", -1}, {"c", "", -1}}},
    {HERE, "<a b=c>"sv, 1, 6, {{"b", "c", 5}}},
    {HERE, "<a b=c d>e=f>"sv, 1, 8, {{"b", "c", 5}, {"d", "", -1}}},
    {HERE, "<a\tb=c\nd=e\rf=g>"sv, 1, 14, {{"b", "c", 5}, {"d", "e", 9}, {"f", "g", 13}}},
    {HERE, "<a b=\"c\"d='e' f=g>"sv, 1, 17, {{"b", "c", 6}, {"d", "e", 11}, {"f", "g", 16}}},
    {HERE, "<a b=\"c>d\">"sv, 1, 9, {{"b", "c>d", 6}}},
    {HERE, "<a b=\"\" c=''>"sv, 1, 11, {{"b", "", 6}, {"c", "", 11}}},
    {HERE, "<a b=>"sv, 1, 5, {{"b", "", 5}}},
    {HERE, "<a b= \tc >"sv, 1, 8, {{"b", "c", 7}}},
    {HERE, "<a data-x1=y 2=z>"sv, 1, 16, {{"data-x1", "y", 11}, {"2", "z", 15}}},
    {HERE, "<a b=\"x\0y\" c>"sv, 1, 12, {{"b", "x\0y"sv, 6}, {"c", "", -1}}},
    {HERE, "<a b=&amp;%41 c=\"&lt;\">"sv, 1, 21, {{"b", "&amp;%41", 5}, {"c", "&lt;", 17}}},
    // Names are stored in lower case, values as written.
    {HERE, "<A SRC=Pic.GIF LowSrc>"sv, 1, 21, {{"src", "Pic.GIF", 7}, {"lowsrc", "", -1}}},
    // The byte at the position is stepped over, whatever it is.
    {HERE, "<a>b=c>"sv, 2, 6, {{"b", "c", 5}}},
    {HERE, "b=c>"sv, 0, 1, {}},
    {HERE, " b=c>"sv, 0, 4, {{"b", "c", 3}}},
};

TEST(FindAttributes, ReadsNamesValuesAndOffsets) {
  forEachPlacement(kTags, expectFound);
}

constexpr FindCase kRepeats[] = {
    // The first one of a name wins, however the names are written.
    {HERE, "<a b=1 b=2>"sv, 1, 10, {{"b", "1", 5}}},
    {HERE, "<a b=1 B=2>"sv, 1, 10, {{"b", "1", 5}}},
    {HERE, "<a B=1 b=2>"sv, 1, 10, {{"b", "1", 5}}},
    {HERE, "<a B=1 B=2>"sv, 1, 10, {{"b", "1", 5}}},
    {HERE, "<a b B=2>"sv, 1, 8, {{"b", "", -1}}},
    {HERE, "<a B=1 b>"sv, 1, 8, {{"b", "1", 5}}},
    {HERE, "<a b B b=1 c=2>"sv, 1, 14, {{"b", "", -1}, {"c", "2", 13}}},
};

TEST(FindAttributes, KeepsTheFirstOfARepeatedName) {
  forEachPlacement(kRepeats, expectFound);
}

constexpr FindCase kEnds[] = {
    // "=" without a name stops the reading.
    {HERE, "<a =x href=y>"sv, 1, 3, {}},
    {HERE, "<a b=1 =x c=2>"sv, 1, 6, {{"b", "1", 5}}},
    {HERE, "<a b==c d=e>"sv, 1, 11, {{"b", "=c", 5}, {"d", "e", 10}}},
    // A value that does not end.
    {HERE, "<a href=\"x>"sv, 1, 3, {}},
    {HERE, "<a href='x>"sv, 1, 3, {}},
    {HERE, "<a href=x"sv, 1, 3, {}},
    {HERE, "<a href="sv, 1, 3, {}},
    {HERE, "<a href= "sv, 1, 3, {}},
    {HERE, "<a b=1 c=\"x> d=2>"sv, 1, 6, {{"b", "1", 5}}},
    {HERE, "<a b c=x"sv, 1, 4, {{"b", "", -1}}},
    // A name that runs to the end of the text is dropped, one that is complete is kept.
    {HERE, "<a b"sv, 1, 3, {}},
    {HERE, "<a b=1 c"sv, 1, 6, {{"b", "1", 5}}},
    {HERE, "<a b "sv, 1, 4, {{"b", "", -1}}},
    {HERE, "<a b c  "sv, 1, 6, {{"b", "", -1}, {"c", "", -1}}},
    {HERE, "<a b\""sv, 1, 4, {{"b", "", -1}}},
    // Nothing to read.
    {HERE, ""sv, 0, 1, {}},
    {HERE, "<a"sv, 1, 2, {}},
    {HERE, "<a"sv, 7, 8, {}},
    {HERE, "<a   "sv, 1, 5, {}},
    {HERE, "<a \" \" "sv, 1, 3, {}},
};

TEST(FindAttributes, StopsWhereNothingMoreCanBeRead) {
  forEachPlacement(kEnds, expectFound);
}

constexpr FindCase kUnexpected[] = {
    // Other bytes skip to the next white space or ">".
    {HERE, "<img src=a.gif />"sv, 3, 14, {{"src", "a.gif", 9}}},
    {HERE, "<img src=a.gif/>"sv, 3, 15, {{"src", "a.gif/", 9}}},
    {HERE, "<a /b c=d>"sv, 1, 9, {{"c", "d", 8}}},
    {HERE, "<a /b=c>"sv, 1, 3, {}},
    {HERE, "<a 'x' c=d>"sv, 1, 10, {{"c", "d", 9}}},
    {HERE, "<a b='x'y c=d>"sv, 1, 13, {{"b", "x", 6}, {"c", "d", 12}}},
    {HERE, "<a \xE4=1 c=d>"sv, 1, 10, {{"c", "d", 9}}},
    {HERE, "<a \0 c=d>"sv, 1, 8, {{"c", "d", 7}}},
    // Form feed and vertical tab are such bytes.
    {HERE, "<a b=1\fc=2 d=3>"sv, 1, 14, {{"b", "1\fc=2", 5}, {"d", "3", 13}}},
    {HERE, "<a b\fc=2 d=3>"sv, 1, 12, {{"b\fc=2 d", "3", 11}}},
    {HERE, "<a b=\"1\"\fc=2 d=3>"sv, 1, 16, {{"b", "1", 6}, {"d", "3", 15}}},
    {HERE, "<a \vb=1 d=3>"sv, 1, 11, {{"d", "3", 10}}},
    // A name that has started is kept across what is skipped.
    {HERE, "<a b_c =1>"sv, 1, 9, {{"b_c ", "1", 8}}},
    {HERE, "<a b_c d=1>"sv, 1, 10, {{"b_c d", "1", 9}}},
    {HERE, "<a B_C D=1>"sv, 1, 10, {{"b_c d", "1", 9}}},
    {HERE, "<a b _c =1>"sv, 1, 10, {{"b", "1", 9}}},
    {HERE, "<a b _c d=1>"sv, 1, 11, {{"b", "", -1}, {"d", "1", 10}}},
    {HERE, "<a b_c>"sv, 1, 3, {}},
    {HERE, "<a b _c>"sv, 1, 4, {{"b", "", -1}}},
    {HERE, "<a b_c >"sv, 1, 7, {{"b_c ", "", -1}}},
    {HERE, "<a b_c "sv, 1, 3, {}},
    {HERE, "<a b _c "sv, 1, 4, {{"b", "", -1}}},
    // No white space and no ">" after such a byte.
    {HERE, "<a b=1 _c"sv, 1, 6, {{"b", "1", 5}}},
    {HERE, "<a b _c"sv, 1, 4, {{"b", "", -1}}},
    {HERE, "<a b_c"sv, 1, 3, {}},
    {HERE, "<a _"sv, 1, 3, {}},
};

TEST(FindAttributes, SkipsRunsOfUnexpectedBytes) {
  forEachPlacement(kUnexpected, expectFound);
}

TEST(FindAttributes, EmptiesTheDictionariesFirst) {
  Found found;
  CHTMLAttributeFinder finder;
  RWCString first("<a b=1 c=2>");
  RWCString second("<a d=3>");
  unsigned long pos = 1;
  finder.FindAttributes(first, pos, found.values, found.offsets);
  EXPECT_EQ(found.values.entries(), 2U);
  pos = 1;
  finder.FindAttributes(second, pos, found.values, found.offsets);
  EXPECT_EQ(found.values.entries(), 1U);
  EXPECT_EQ(found.offsets.entries(), 1U);
  found.expect({"d", "3", 5});
  pos = 0;
  RWCString empty;
  finder.FindAttributes(empty, pos, found.values, found.offsets);
  EXPECT_EQ(found.values.entries(), 0U);
  EXPECT_EQ(found.offsets.entries(), 0U);
}

TEST(CHTMLAttributeFinder, HasAVirtualDestructorAndNoData) {
  EXPECT_TRUE(std::has_virtual_destructor_v<CHTMLAttributeFinder>);
  EXPECT_EQ(sizeof(CHTMLAttributeFinder), sizeof(void*));
}

TEST(FindAttributes, ReadsManyAttributesOfOneTag) {
  constexpr int kCount = 200000;
  std::string tag = "<a";
  for (int i = 0; i < kCount; ++i) tag += " n" + std::to_string(i) + "=v";
  RWCString text = stringOf(tag + ">");
  unsigned long pos = 1;
  Found found;
  CHTMLAttributeFinder().FindAttributes(text, pos, found.values, found.offsets);
  EXPECT_EQ(found.values.entries(), static_cast<std::size_t>(kCount));
  EXPECT_EQ(pos, tag.size());
  found.expect({"n199999", "v", static_cast<int>(tag.size()) - 1});
}

TEST(FindAttributes, EndsOnLargeTexts) {
  constexpr std::size_t kMany = 300000;
  const auto count = [](const std::string& bytes) {
    RWCString text = stringOf(bytes);
    unsigned long pos = 1;
    Found found;
    CHTMLAttributeFinder().FindAttributes(text, pos, found.values, found.offsets);
    return found.values.entries();
  };
  EXPECT_EQ(count("<a" + repeated(" b=c", kMany) + ">"), 1U);
  EXPECT_EQ(count("<a" + repeated(" B", kMany) + ">"), 1U);
  EXPECT_EQ(count("<a" + repeated(" _", kMany)), 0U);
  EXPECT_EQ(count("<a b" + repeated("_", kMany)), 0U);
  EXPECT_EQ(count("<a " + repeated("b_ ", kMany) + "=x>"), 1U);
  EXPECT_EQ(count("<a b='" + repeated("x", kMany)), 0U);
  EXPECT_EQ(count("<a" + repeated("\"", kMany) + "b>"), 1U);
}

}  // namespace
}  // namespace pagescan::tests
