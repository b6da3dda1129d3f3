// A user's own table of places.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "pagescan/page.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

std::string faultOf(std::string_view text) {
  std::string fault = "none";
  const bool isTable = Places::parse(text, &fault).has_value();
  EXPECT_EQ(isTable, fault == "none") << text;
  return fault;
}

struct FaultCase {
  Here here;
  std::string_view text;
  std::string_view expected;
};

constexpr FaultCase kFaults[] = {
    {HERE, "", "none"},
    {HERE, "# nothing\n\n", "none"},
    {HERE, "profile\tnamespace\telement\tattribute\tslot\tkind\trule\n", "none"},
    {HERE, "standard\thtml\timg\tdata-x\turl\tload\t", "none"},
    {HERE, "standard\thtml\timg\tdata-x\turl\tload\r\n", "none"},
    {HERE, "standard\thtml\timg\tdata-x\turl", "line 1: 6 or 7 columns between tabs expected"},
    {HERE, "#\nstandard\thtml\ta\tb\turl\tload\t\t",
     "line 2: 6 or 7 columns between tabs expected"},
    {HERE, "mine\thtml\ta\tb\turl\tload", "line 1: unknown profile \"mine\""},
    {HERE, "standard\tHTML\ta\tb\turl\tload", "line 1: unknown namespace \"HTML\""},
    {HERE, "standard\thtml\t\tb\turl\tload", "line 1: the element is missing"},
    {HERE, "standard\thtml\ta\tb\tlink\tload", "line 1: unknown slot \"link\""},
    {HERE, "\n\nstandard\thtml\ta\tb\turl\tloads", "line 3: unknown kind \"loads\""},
    {HERE, "standard\thtml\ta\tb\turl\tload\tmagic", "line 1: unknown rule \"magic\""},
    {HERE, "standard\thtml\ta\tb\turl\tload\tcss", "line 1: this rule does not go with this slot"},
    {HERE, "standard\thtml\ta\tb\thtml\t\tnested", "none"},
    {HERE, "standard\thtml\tscript\t\tjson\tscript\tjson", "none"},
    {HERE, "standard\thtml\ta\tb\turl\tload\tjson", "line 1: this rule does not go with this slot"},
    {HERE, "standard\thtml\tp\t\tcss_sheet\tload\tcss",
     "line 1: only the text of style and script can be a place"},
    {HERE, "standard\thtml\tmeta[x]\tcontent\turl\tload",
     "line 1: \"meta[NAME]\" and the rule meta go together"},
    {HERE, "standard\thtml\tmeta\tcontent\turl\tload\tmeta",
     "line 1: \"meta[NAME]\" and the rule meta go together"},
};

TEST(Places, NameTheLineThatIsNoRow) {
  for (const FaultCase& row : kFaults) {
    const testing::ScopedTrace trace(row.here.file, row.here.line, "this row");
    EXPECT_EQ(faultOf(row.text), row.expected);
  }
}

// A table of so many names of elements, or of attributes, that nothing else knows.
std::string tableOfNames(std::size_t count, bool ofElements) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = "x-" + std::to_string(i);
    text += "standard\thtml\t" + (ofElements ? name : "a") + "\t" + (ofElements ? "src" : name) +
            "\turl\tload\n";
  }
  return text;
}

TEST(Places, MayAddTenThousandNamesOfEachSort) {
  for (const bool ofElements : {false, true}) {
    EXPECT_EQ(faultOf(tableOfNames(10000, ofElements)), "none");
    EXPECT_EQ(faultOf(tableOfNames(10001, ofElements)), "line 10001: too many names");
    EXPECT_EQ(faultOf(tableOfNames(70000, ofElements)), "line 10001: too many names");
  }
}

// The references of a page with an own table, each as "element attribute value kind".
std::string read(std::string_view bytes, const Places& places, Profiles profiles = 0) {
  PageOptions options;
  options.places = &places;
  options.profiles = profiles;
  const Page page(bytes, options);
  std::string lines;
  for (const Reference& reference : page.references()) {
    if (!lines.empty()) lines += ", ";
    lines += page.element(reference) + " " + std::string(page.attribute(reference)) + " " +
             page.value(reference) + " " + std::string(nameOf(reference.kind));
  }
  return lines;
}

TEST(Places, AreReadBeforeTheBuiltInOnes) {
  const auto places = Places::parse(
      "standard\thtml\t*\tdata-x\turl\tscript\n"
      "standard\thtml\tMy-Thing\tDATA-X\tsrcset\tload\n"
      "standard\thtml\timg\tdata-x\turl_list\tping\n"
      "standard\thtml\ta\thref\turl\tdead\n"
      "standard\tsvg\tfeImage\tdata-x\turl\tfragment\n"
      "standard\tany\t*\tdata-style\tcss_declarations\tscript\tcss\n"
      "meta\thtml\tmeta[X]\tcontent\turl\tidentifier\tmeta\n"
      "lazy\thtml\timg\tdata-y\turl\tload\timg-src\n");
  ASSERT_TRUE(places);
  EXPECT_EQ(read("<a href=1>", *places), "a href 1 dead");
  EXPECT_EQ(read("<img data-x='1 2' src=3>", *places), "img data-x 1 2 script, img src 3 load");
  EXPECT_EQ(read("<my-thing data-x=1>", *places), "my-thing data-x 1 script");
  EXPECT_EQ(read("<svg><FEIMAGE data-x=1><g data-x=2>", *places), "svg:feImage data-x 1 fragment");
  EXPECT_EQ(read("<other-thing data-style='a:url(1);b:url(#2)'>", *places),
            "other-thing data-style 1 script, other-thing data-style #2 fragment");
  EXPECT_EQ(read("<meta name=x content=1>", *places), "");
  EXPECT_EQ(read("<meta name=x content=1>", *places, kMetaProfile), "meta content 1 identifier");
  EXPECT_EQ(read("<img data-y=1>", *places), "");
  EXPECT_EQ(read("<img data-y=1>", *places, kLazyProfile), "img data-y 1 load");
}

TEST(Places, AreTriedInTheOrderOfTheFile) {
  const auto places = Places::parse(
      "standard\thtml\tp\tx\turl\tping\n"
      "standard\thtml\t*\tx\turl\tscript\n");
  ASSERT_TRUE(places);
  EXPECT_EQ(read("<p x=1><q x=2>", *places), "p x 1 ping, q x 2 script");
}

TEST(Places, TellTheLastOfManyNamesApart) {
  const Places elements = *Places::parse(tableOfNames(10000, true));
  EXPECT_EQ(read("<x-9998 src=a></x-9998><x-9999 src=b>", elements),
            "x-9998 src a load, x-9999 src b load");
  const Places attributes = *Places::parse(tableOfNames(10000, false));
  EXPECT_EQ(read("<a x-9998=a x-9999=b>", attributes), "a x-9998 a load, a x-9999 b load");
}

TEST(Page, ReadsTheNamesOfUnknownElementsAgain) {
  const Places none;
  EXPECT_EQ(read("<X-Y\n style='a:url(1)'><svg><Foo\tstyle='a:url(2)'>", none),
            "x-y style 1 load, svg:foo style 2 load");
  EXPECT_EQ(read("<iframe srcdoc=\"&lt;&#65;-B style=&quot;a:url(1)\">", none), "");
  EXPECT_EQ(read("<iframe srcdoc=\"&lt;&#65;-B style=&quot;a:url(1)&quot;>\">", none),
            "a-b style 1 load");
  const std::string longName = "<x" + std::string(3000, 'y') + " style='a:url(1)'>";
  EXPECT_EQ(read(longName, none), longName.substr(1, 3001) + " style 1 load");
}

}  // namespace
}  // namespace pagescan::tests
