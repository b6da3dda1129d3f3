#include "zkhtmldiettransactiondata.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <string_view>

#include "rw/rwcollectables.h"
#include "support/placement.h"
#include "zkhtmldietattributeobject.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

// Counts the attribute records alive.
class Counted : public CZKHTMLDietAttributeObject {
 public:
  explicit Counted(const char* name) {
    RWCString text(name);
    SetAttributeName(text);
    ++alive;
  }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;
  ~Counted() override { --alive; }

  static int alive;
};
int Counted::alive = 0;

CZKHTMLDietAttributeObject* lookUp(CZKHTMLDietTransactionsObject& record, const char* name) {
  RWCString text(name);
  return record.GetAttributeObject(text);
}

TEST(CZKHTMLDietTransactionsObject, StartsEmpty) {
  CZKHTMLDietTransactionsObject record;
  RWOrdered names;
  EXPECT_STREQ(record.GetTagName(), "");
  EXPECT_EQ(record.GetFirstAttributeObject(), nullptr);
  EXPECT_EQ(lookUp(record, "src"), nullptr);
  EXPECT_EQ(lookUp(record, ""), nullptr);
  EXPECT_FALSE(record.GetAttributeNames(names));
}

TEST(CZKHTMLDietTransactionsObject, HoldsACopyOfTheTagName) {
  CZKHTMLDietTransactionsObject record;
  for (const char* const name : {"IMG", "", "a name that is too long for the object", "?IMPORT"}) {
    Placement place(Placement::kBeforeGuardPage);
    record.SetTagName(place.cString(name));
    EXPECT_STREQ(record.GetTagName(), name);
  }
}

TEST(CZKHTMLDietTransactionsObject, OwnsItsAttributes) {
  Counted::alive = 0;
  {
    CZKHTMLDietTransactionsObject record;
    for (const char* const name : {"src", "lowsrc", "dynsrc", "code"}) {
      record.InsertAttributeObject(new Counted(name));
    }
    EXPECT_EQ(Counted::alive, 4);
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST(CZKHTMLDietTransactionsObject, KeepsTheFirstOfAName) {
  CZKHTMLDietTransactionsObject record;
  auto* const first = new Counted("code");
  Counted second("code");
  record.InsertAttributeObject(first);
  record.InsertAttributeObject(&second);  // refused: it stays ours
  RWOrdered names;
  EXPECT_TRUE(record.GetAttributeNames(names));
  EXPECT_EQ(names.entries(), 1U);
  EXPECT_EQ(lookUp(record, "code"), first);
  EXPECT_EQ(record.GetFirstAttributeObject(), first);
}

TEST(CZKHTMLDietTransactionsObject, IgnoresANullAttribute) {
  CZKHTMLDietTransactionsObject record;
  record.InsertAttributeObject(nullptr);
  EXPECT_EQ(record.GetFirstAttributeObject(), nullptr);
}

TEST(CZKHTMLDietTransactionsObject, FindsByTheExactName) {
  CZKHTMLDietTransactionsObject record;
  auto* const lower = new Counted("src");
  auto* const upper = new Counted("SRC");
  auto* const unnamed = new Counted("");
  record.InsertAttributeObject(lower);
  EXPECT_EQ(lookUp(record, "SRC"), nullptr);
  record.InsertAttributeObject(upper);
  record.InsertAttributeObject(unnamed);
  EXPECT_EQ(lookUp(record, "src"), lower);
  EXPECT_EQ(lookUp(record, "SRC"), upper);
  EXPECT_EQ(lookUp(record, ""), unnamed);
  EXPECT_EQ(lookUp(record, "src "), nullptr);
  RWCString withNul("src\0", 4);
  EXPECT_EQ(record.GetAttributeObject(withNul), nullptr);
  EXPECT_EQ(record.GetFirstAttributeObject(), lower);
}

TEST(CZKHTMLDietTransactionsObject, KeepsTheNameOfInsertion) {
  CZKHTMLDietTransactionsObject record;
  auto* const attribute = new Counted("src");
  record.InsertAttributeObject(attribute);
  RWCString renamed("href");
  attribute->SetAttributeName(renamed);
  EXPECT_EQ(lookUp(record, "src"), attribute);
  EXPECT_EQ(lookUp(record, "href"), nullptr);
  RWOrdered names;
  ASSERT_TRUE(record.GetAttributeNames(names));
  EXPECT_EQ(bytesOf(dynamic_cast<RWCollectableString&>(*names.at(0))), "src");
}

TEST(CZKHTMLDietTransactionsObject, ListsTheNamesThatItOwns) {
  CZKHTMLDietTransactionsObject record;
  const std::set<std::string> expected = {"src", "lowsrc", "dynsrc", "code", "codebase"};
  for (const std::string& name : expected) {
    record.InsertAttributeObject(new Counted(name.c_str()));
  }
  RWCollectableInt earlier(1);
  RWOrdered names;
  names.insert(&earlier);
  ASSERT_TRUE(record.GetAttributeNames(names));
  std::set<std::string> listed;
  for (std::size_t i = 0; i < names.entries(); ++i) {
    listed.insert(std::string(bytesOf(dynamic_cast<RWCollectableString&>(*names.at(i)))));
  }
  EXPECT_EQ(listed, expected);
  EXPECT_EQ(names.entries(), expected.size());
  RWOrdered again;
  ASSERT_TRUE(record.GetAttributeNames(again));
  EXPECT_EQ(again.at(0), names.at(0)) << "the keys themselves are listed, not copies";
}

TEST(CZKHTMLDietTransactionsObject, EmptiesTheListWhenThereAreNoNames) {
  CZKHTMLDietTransactionsObject record;
  RWCollectableInt earlier(1);
  RWOrdered names;
  names.insert(&earlier);
  EXPECT_FALSE(record.GetAttributeNames(names));
  EXPECT_EQ(names.entries(), 0U);
}

// --- Checksum ---------------------------------------------------------------------------------

struct SumCase {
  Here here;
  std::string_view bytes;
  unsigned long sum;
};
constexpr SumCase kSums[] = {
    {HERE, ""sv, 0},
    {HERE, "A"sv, 0x41},
    {HERE, "ABCDEFGH"sv, 0x4847464544434241},
    {HERE, "ABCDEFGHIJ"sv, 0x4847464544430808},
    {HERE, "ABCDEFGHABCDEFGH"sv, 0},
    {HERE, "AB"sv, 0x4241},
    {HERE, "ABCDEFG"sv, 0x47464544434241},
    {HERE, "\0\0\0\0\0\0\0\0A"sv, 0x41},
    {HERE, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"sv, 0xFFFFFFFFFFFFFFFF},
    {HERE, "\x80"sv, 0x80},
    {HERE, "ABCDEFGHABCDEFGHABCDEFGHABCDEFGHABCDEFGHABCDEFGHABCDEFGHABCDEFGHZ"sv, 0x5A},
};

TEST(CalcCheckSum, XorsLittleEndianWords) {
  forEachPlacement(kSums, [](const SumCase& row, Placement& place) {
    const std::string_view bytes = place.bytes(row.bytes);
    EXPECT_EQ(
        CZKHTMLDietTransactionsObject::CalcCheckSum(bytes.data(), static_cast<int>(bytes.size())),
        row.sum);
  });
}

unsigned long plainSum(std::string_view bytes) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    sum ^= static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i])) << (8 * (i % 8));
  }
  return sum;
}

TEST(CalcCheckSum, TakesEverySizeAtEveryAlignment) {
  std::string bytes;
  for (int i = 0; i < 700; ++i) bytes += static_cast<char>(i * 37 + i / 7);
  for (std::size_t size = 0; size <= 600; ++size) {
    Placement place(Placement::kBeforeGuardPage);
    const std::string_view text = place.bytes(std::string_view(bytes).substr(size % 100, size));
    ASSERT_EQ(CZKHTMLDietTransactionsObject::CalcCheckSum(text.data(), static_cast<int>(size)),
              plainSum(text));
  }
}

TEST(CalcCheckSum, IsZeroForNoBytes) {
  EXPECT_EQ(CZKHTMLDietTransactionsObject::CalcCheckSum(nullptr, 0), 0U);
  EXPECT_EQ(CZKHTMLDietTransactionsObject::CalcCheckSum("A", -1), 0U);
}

// --- PrintAll ---------------------------------------------------------------------------------

void insertAttribute(CZKHTMLDietTransactionsObject& record, std::string_view name,
                     std::string_view value, std::string_view original, int offset) {
  RWCString nameText = stringOf(name);
  RWCString valueText = stringOf(value);
  RWCString originalText = stringOf(original);
  record.InsertAttributeObject(
      new CZKHTMLDietAttributeObject(nameText, valueText, originalText, offset));
}

std::string printed(CZKHTMLDietTransactionsObject& record) {
  testing::internal::CaptureStdout();
  record.PrintAll();
  return testing::internal::GetCapturedStdout();
}

TEST(RecordPrintAll, WritesOneEmptyLineForNoAttributes) {
  CZKHTMLDietTransactionsObject record;
  record.SetTagName("IMG");
  EXPECT_EQ(printed(record), "\n");
}

TEST(RecordPrintAll, WritesFiveLinesForOneAttribute) {
  CZKHTMLDietTransactionsObject record;
  insertAttribute(record, "src", "http://h/a.gif", "a.gif", 10);
  EXPECT_EQ(printed(record), "Name:\tsrc\nValue:\thttp://h/a.gif\nOValue:\ta.gif\nOffset:\t10\n\n");
}

TEST(RecordPrintAll, KeepsTheOrderOfInsertion) {
  CZKHTMLDietTransactionsObject record;
  insertAttribute(record, "src", "", "", -1);
  insertAttribute(record, "lowsrc", "v", "o", 0);
  insertAttribute(record, "dynsrc", "w", "p", 2147483647);
  insertAttribute(record, "a", "x", "q", -2147483647 - 1);
  EXPECT_EQ(printed(record),
            "Name:\tsrc\nValue:\t\nOValue:\t\nOffset:\t-1\n"
            "Name:\tlowsrc\nValue:\tv\nOValue:\to\nOffset:\t0\n"
            "Name:\tdynsrc\nValue:\tw\nOValue:\tp\nOffset:\t2147483647\n"
            "Name:\ta\nValue:\tx\nOValue:\tq\nOffset:\t-2147483648\n\n");
}

TEST(RecordPrintAll, WritesNamesAndValuesWhole) {
  CZKHTMLDietTransactionsObject record;
  insertAttribute(record, "s\0c"sv, "v\0\n\xFF"sv, "o\0"sv, 1);
  EXPECT_EQ(printed(record), "Name:\ts\0c\nValue:\tv\0\n\xFF\nOValue:\to\0\nOffset:\t1\n\n"sv);
}

}  // namespace
}  // namespace pagescan::tests
