#include "zkurlencoding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reference/classic/zkurlencoding.h"
#include "support/allocation_count.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

using Type = UrlEncoding::EncodingType;

constexpr Type kTypes[] = {UrlEncoding::eNone,
                           UrlEncoding::eBrowser,
                           UrlEncoding::eEscape,
                           UrlEncoding::eEscapeURI,
                           UrlEncoding::eEscapeURIComponent,
                           UrlEncoding::eBrowserSign,
                           UrlEncoding::eChrome,
                           UrlEncoding::eChrome94,
                           UrlEncoding::eSiebel};

Type typeOf(int number) {
  return static_cast<Type>(number);
}

// --- The placeholder --------------------------------------------------------------------------

// Sets the placeholder and puts it back.
class PlaceholderSetting {
 public:
  PlaceholderSetting(const char* text, int length)
      : text_(std::exchange(persentEscape, text)),
        length_(std::exchange(persentEscapeLength, length)) {}
  PlaceholderSetting(const PlaceholderSetting&) = delete;
  PlaceholderSetting& operator=(const PlaceholderSetting&) = delete;
  ~PlaceholderSetting() {
    persentEscape = text_;
    persentEscapeLength = length_;
  }

 private:
  const char* text_;
  int length_;
};

TEST(Placeholder, IsTheReferenceToByte25AtFirst) {
  EXPECT_STREQ(persentEscape, "&#25;");
  EXPECT_EQ(persentEscapeLength, 5);
}

struct PlaceholderCase {
  Here here;
  const char* text;
  int length;
  std::string_view decoded;  // what "a%zz" becomes
  std::string_view source;
  std::string_view encoded;  // by the browser flavour
};
constexpr PlaceholderCase kPlaceholders[] = {
    {HERE, "##", 2, "a##zz", "a##zz#", "a%zz%23"},
    {HERE, "##", 2, "a##zz", "###", "%%23"},
    {HERE, "##", 2, "a##zz", "####", "%%"},
    {HERE, "a", 1, "aazz", "banana", "b%n%n%"},
    {HERE, "aba", 3, "aabazz", "ababa", "%ba"},
    // Cut to the length, and to the text where that is shorter.
    {HERE, "&#25;", 2, "a&#zz", "&#25;", "%25%3B"},
    {HERE, "&#", 5, "a&#zz", "&#25;", "%25%3B"},
    {HERE, "", 5, "azz", "&#25;", "%26%2325%3B"},
    // Empty ones match nothing.
    {HERE, "&#25;", 0, "azz", "&#25;", "%26%2325%3B"},
    {HERE, "&#25;", -1, "azz", "&#25;", "%26%2325%3B"},
    {HERE, nullptr, 5, "azz", "&#25;", "%26%2325%3B"},
    // One that does not fit before the end is none.
    {HERE, "0123456789", 10, "a0123456789zz", "0123456789012345678", "%012345678"},
};

TEST(Placeholder, IsReadAfreshOnEveryUse) {
  forEachPlacement(kPlaceholders, [](const PlaceholderCase& row, Placement& place) {
    const PlaceholderSetting setting(row.text ? place.cString(row.text) : nullptr, row.length);
    RWCString decoded = place.string("a%zz");
    EXPECT_FALSE(UrlEncoding::DecodeString(decoded, UrlEncoding::eBrowser));
    EXPECT_EQ(bytesOf(decoded), row.decoded);
    RWCString encoded;
    EXPECT_TRUE(
        UrlEncoding::EncodeString(place.string(row.source), encoded, UrlEncoding::eBrowser));
    EXPECT_EQ(bytesOf(encoded), row.encoded);
  });
}

TEST(Placeholder, MayBeLong) {
  const std::string escape(5000, '#');
  const PlaceholderSetting setting(escape.c_str(), 5000);
  RWCString text("a%zz+%zy");
  EXPECT_FALSE(UrlEncoding::DecodeString(text, UrlEncoding::eChrome94));
  EXPECT_EQ(bytesOf(text), "a" + escape + "zz+" + escape + "zy");
}

TEST(Placeholder, OfAHostGovernsTheChecksToo) {
  const PlaceholderSetting setting("A", 1);
  // "A" comes out of the encoder as "%".
  EXPECT_FALSE(UrlEncoding::CheckUrlDecoding("A=b", UrlEncoding::eBrowser));
  EXPECT_EQ(UrlEncoding::CheckUrlDecoding("A=b"), UrlEncoding::eNone);
  EXPECT_TRUE(UrlEncoding::CheckUrlDecoding("%zz=b", UrlEncoding::eBrowser));
  EXPECT_EQ(UrlEncoding::CheckUrlDecoding("%26%2325%3B=b"), UrlEncoding::eBrowser);
  EXPECT_EQ(UrlEncoding::CheckUrlDecoding("a=b%20c"), UrlEncoding::eEscape);
  EXPECT_EQ(UrlEncoding::CheckUrlDecoding(""), UrlEncoding::eBrowser);
}

// --- Encoding ---------------------------------------------------------------------------------

struct EncodeCase {
  Here here;
  int type;
  std::string_view source;
  std::string_view before;  // what the destination holds
  bool result;
  std::string_view after;
};
constexpr EncodeCase kEncode[] = {
    {HERE, 1, "a b", "", true, "a+b"},
    {HERE, 2, "a b", "", true, "a%20b"},
    {HERE, 3, "a b", "", true, "a%20b"},
    {HERE, 4, "a b", "", true, "a%20b"},
    {HERE, 5, "a b", "", true, "a+b"},
    {HERE, 6, "a b", "", true, "a+b"},
    {HERE, 7, "a b", "", true, "a%20b"},
    {HERE, 8, "a b", "", true, "a%20b"},
    // An empty source leaves the destination alone, whatever the flavour.
    {HERE, 0, "", "x=", false, "x="},
    {HERE, 1, "", "x=", false, "x="},
    {HERE, 8, "", "", false, ""},
    // No flavour: the source as it is, and nothing was encoded.
    {HERE, 0, "a b&#25;%", "", false, "a b&#25;%"},
    {HERE, 0, "\0\xff"sv, "x=", false, "x=\0\xff"sv},
    // Appended to what is there.
    {HERE, 1, "a=b", "x=", true, "x=a%3Db"},
    {HERE, 1, "b", "a text that is too long to stand in the object ", true,
     "a text that is too long to stand in the object b"},
    // The placeholder becomes "%".
    {HERE, 1, "&#25;0A", "", true, "%0A"},
    {HERE, 2, "&#25;0A", "", true, "%0A"},
    {HERE, 3, "&#25;0A", "", true, "%0A"},
    {HERE, 4, "&#25;0A", "", true, "%0A"},
    {HERE, 5, "&#25;0A", "", true, "%0A"},
    {HERE, 6, "&#25;0A", "", true, "%0A"},
    {HERE, 7, "&#25;0A", "", true, "%0A"},
    {HERE, 8, "&#25;0A", "", true, "%0A"},
    {HERE, 1, "&#25;&#25;", "", true, "%%"},
    {HERE, 1, "a&#25;b&#25;c", "", true, "a%b%c"},
    {HERE, 1, "&#25", "", true, "%26%2325"},
    {HERE, 1, "&#2&#25;5;", "", true, "%26%232%5%3B"},
    {HERE, 3, "&#25&#25;;", "", true, "&#25%;"},
    {HERE, 1, "&&#25;", "", true, "%26%"},
    {HERE, 1, "%", "", true, "%25"},
    {HERE, 7, "%", "", true, "%"},
    // Every kind of byte.
    {HERE, 1, "\0\x1f\x7f\x80\xff"sv, "", true, "%00%1F%7F%80%FF"},
    {HERE, 8, "\0\x1f\x7f\x80\xff"sv, "", true, "%00%1f%7f%80%ff"},
    {HERE, 1, "@~,", "", true, "@%7E%2C"},
    {HERE, 5, "@~,", "", true, "%40%7E%2C"},
    {HERE, 3, "@~,", "", true, "@~%2C"},
    // Unknown flavours are the browser's.
    {HERE, 9, "a b", "", true, "a+b"},
    {HERE, 10, "@~", "", true, "@%7E"},
    {HERE, std::numeric_limits<int>::max(), "a b", "", true, "a+b"},
    {HERE, -1, "a b", "", true, "a+b"},
    {HERE, std::numeric_limits<int>::min(), "a b", "", true, "a+b"},
};

TEST(EncodeString, AppendsTheEncodedSource) {
  forEachPlacement(kEncode, [](const EncodeCase& row, Placement& place) {
    RWCString& source = place.string(row.source);
    RWCString& destination = place.string(row.before);
    EXPECT_EQ(UrlEncoding::EncodeString(source, destination, typeOf(row.type)), row.result);
    EXPECT_EQ(bytesOf(destination), row.after);
    EXPECT_EQ(bytesOf(source), row.source);
  });
}

TEST(EncodeString, EncodesAStringOntoItself) {
  forEachPlacement(kEncode, [](const EncodeCase& row, Placement& place) {
    RWCString& text = place.string(row.source);
    std::string expected(row.source);
    const std::string source = expected;
    reference::EncodeString(source, expected, row.type);
    EXPECT_EQ(UrlEncoding::EncodeString(text, text, typeOf(row.type)), row.result);
    EXPECT_EQ(bytesOf(text), expected);
  });
}

TEST(EncodeString, EncodesALongStringOntoItself) {
  const std::string source(20000, '"');
  RWCString text = stringOf(source);
  EXPECT_TRUE(UrlEncoding::EncodeString(text, text, UrlEncoding::eBrowser));
  std::string expected = source;
  reference::EncodeString(source, expected, 1);
  EXPECT_EQ(bytesOf(text), expected);
}

TEST(EncodeString, ReadsTheSourceWithoutCopyingIt) {
  RWCString source("a source that is too long to stand in the object");
  const RWCString copy = source;
  RWCString destination;
  UrlEncoding::EncodeString(source, destination, UrlEncoding::eBrowser);
  EXPECT_EQ(copy.data(), std::as_const(source).data());
}

TEST(EncodeString, LeavesCopiesOfTheDestinationAlone) {
  RWCString source(" ");
  RWCString destination("a destination that is too long to stand in the object");
  const RWCString copy = destination;
  UrlEncoding::EncodeString(source, destination, UrlEncoding::eBrowser);
  EXPECT_EQ(bytesOf(copy), "a destination that is too long to stand in the object");
  EXPECT_EQ(bytesOf(destination), "a destination that is too long to stand in the object+");
}

TEST(EncodeString, TakesOneAllocationForAnOrdinaryText) {
  for (const std::size_t repeats : {5U, 50U, 5000U}) {
    std::string query;
    for (std::size_t i = 0; i < repeats; ++i) query += "name=some value&";
    RWCString source = stringOf(query);
    RWCString destination;
    EXPECT_LE(allocationsOf(
                  [&] { UrlEncoding::EncodeString(source, destination, UrlEncoding::eBrowser); }),
              1U);
  }
}

// --- Decoding ---------------------------------------------------------------------------------

struct DecodeCase {
  Here here;
  int type;
  std::string_view text;
  bool result;
  std::string_view decoded;
};
constexpr DecodeCase kDecode[] = {
    {HERE, 1, "", false, ""},
    {HERE, 1, "abc", false, "abc"},
    {HERE, 1, "a+b%41", true, "a bA"},
    {HERE, 8, "a+b%41", true, "a+bA"},
    {HERE, 7, "a+b%41", true, "a+bA"},
    // "+" is a blank for all others, no flavour and unknown ones included.
    {HERE, 0, "a+b", true, "a b"},
    {HERE, 2, "a+b", true, "a b"},
    {HERE, 3, "a+b", true, "a b"},
    {HERE, 4, "a+b", true, "a b"},
    {HERE, 5, "a+b", true, "a b"},
    {HERE, 6, "a+b", true, "a b"},
    {HERE, 9, "a+b", true, "a b"},
    {HERE, -1, "a+b", true, "a b"},
    {HERE, 7, "a+b", false, "a+b"},
    {HERE, 8, "a+b", false, "a+b"},
    // Bytes below 32 are never made.
    {HERE, 1, "%0A", false, "&#25;0A"},
    {HERE, 1, "%00", false, "&#25;00"},
    {HERE, 1, "%1F", false, "&#25;1F"},
    {HERE, 1, "%1f", false, "&#25;1f"},
    {HERE, 1, "%20", true, " "},
    {HERE, 1, "%E9", true, "\xe9"},
    {HERE, 1, "%ff%FF%fF", true, "\xff\xff\xff"},
    {HERE, 0, "%41", true, "A"},
    // No number, or one digit alone.
    {HERE, 1, "%zz", false, "&#25;zz"},
    {HERE, 1, "%4g", false, "&#25;4g"},
    {HERE, 1, "%g4", false, "&#25;g4"},
    {HERE, 1, "%-1", false, "&#25;-1"},
    {HERE, 7, "%+9", false, "&#25;+9"},
    {HERE, 1, "%+9", true, "&#25; 9"},
    {HERE, 1, "% 9", false, "&#25; 9"},
    {HERE, 1, "%9+", true, "&#25;9 "},
    {HERE, 1, "%0x", false, "&#25;0x"},
    {HERE, 1, "%\0\0"sv, false, "&#25;\0\0"sv},
    {HERE, 1, "%4\0"sv, false, "&#25;4\0"sv},
    // After a placeholder the scan goes on with the very next byte.
    {HERE, 1, "%%41", true, "&#25;A"},
    {HERE, 1, "%%%41", true, "&#25;&#25;A"},
    {HERE, 1, "%4%41", true, "&#25;4A"},
    // Fewer than two bytes after a "%".
    {HERE, 1, "abc%4", false, "abc%4"},
    {HERE, 1, "abc%", false, "abc%"},
    {HERE, 1, "%", false, "%"},
    {HERE, 1, "%%", false, "%%"},
    {HERE, 1, "%%%", false, "&#25;%%"},
    {HERE, 1, "%+", true, "% "},
    {HERE, 7, "%+", false, "%+"},
    {HERE, 1, "%41%4", true, "A%4"},
    {HERE, 1, "%4%4", false, "&#25;4%4"},
    // Once only.
    {HERE, 1, "%2541", true, "%41"},
    {HERE, 1, "%252541", true, "%2541"},
    // What decoding makes is no "+" any more.
    {HERE, 1, "%2B", true, "+"},
    {HERE, 1, "&#25;41", false, "&#25;41"},
    {HERE, 1, "a\0+%41"sv, true, "a\0 A"sv},
};

TEST(DecodeString, DecodesInPlace) {
  forEachPlacement(kDecode, [](const DecodeCase& row, Placement& place) {
    RWCString& text = place.string(row.text);
    EXPECT_EQ(UrlEncoding::DecodeString(text, typeOf(row.type)), row.result);
    EXPECT_EQ(bytesOf(text), row.decoded);
  });
}

TEST(DecodeString, ReadsTheTwoBytesAsTheSystemDoes) {
  for (unsigned pair = 0; pair < 65536; ++pair) {
    const char bytes[] = {static_cast<char>(pair >> 8), static_cast<char>(pair & 255), '\0'};
    unsigned number = 0;
    std::sscanf(bytes, "%2x", &number);
    const int value = static_cast<int>(number);
    // Without a blank for "+", which is a rule of its own.
    const std::string text = std::string("%") + bytes[0] + bytes[1];
    const std::string expected =
        value >= 32 ? std::string(1, static_cast<char>(value)) : "&#25;" + text.substr(1);
    RWCString decoded = stringOf(text);
    ASSERT_EQ(UrlEncoding::DecodeString(decoded, UrlEncoding::eChrome94), value >= 32) << pair;
    ASSERT_EQ(bytesOf(decoded), expected) << pair;
  }
}

TEST(DecodeString, LeavesCopiesAlone) {
  RWCString text("a+text+that+is+too+long+to+stand+in+the+object");
  const RWCString copy = text;
  EXPECT_TRUE(UrlEncoding::DecodeString(text, UrlEncoding::eBrowser));
  EXPECT_EQ(bytesOf(copy), "a+text+that+is+too+long+to+stand+in+the+object");
}

TEST(DecodeString, KeepsSharingATextThatStaysAsItIs) {
  for (const char* unchanged : {"a text that is too long to stand in the object, and is plain",
                                "a text that is too long to stand in the object, and ends in %4"}) {
    RWCString text(unchanged);
    const RWCString copy = text;
    EXPECT_FALSE(UrlEncoding::DecodeString(text, UrlEncoding::eBrowser));
    EXPECT_EQ(copy.data(), std::as_const(text).data());
  }
}

// Decoding and encoding undo each other on a flavour's own texts, control bytes included; all but
// "+", which the escape and URI flavours do not escape and decode as a blank.
TEST(DecodeString, IsUndoneByEncodeString) {
  for (const Type type : kTypes) {
    if (type == UrlEncoding::eNone) continue;
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
      if (byte != '+') all += static_cast<char>(byte);
    }
    RWCString source = stringOf(all);
    RWCString encoded;
    UrlEncoding::EncodeString(source, encoded, type);
    RWCString decoded = encoded;
    UrlEncoding::DecodeString(decoded, type);
    RWCString again;
    UrlEncoding::EncodeString(decoded, again, type);
    EXPECT_EQ(bytesOf(again), bytesOf(encoded)) << "flavour " << type;
  }
}

// --- Checks -----------------------------------------------------------------------------------

struct CheckCase {
  Here here;
  std::string_view text;
  std::vector<int> passes;  // the flavours of which the text is canonical, eNone included
};
const CheckCase kChecks[] = {
    {HERE, "", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "abc123", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "a=b&c=d", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "&&==", {0, 3}},
    {HERE, "&", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "=", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "=&=&", {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "a==b", {0, 3}},
    {HERE, "a=b%20c&d=e", {2, 3, 4, 7, 8}},
    {HERE, "a=b+c&d=e", {1, 5, 6, 7, 8}},
    {HERE, "a=b c", {0}},
    {HERE, "a=b@c", {0, 1, 2, 3, 7}},
    {HERE, "a=b%40c", {4, 5, 6, 8}},
    {HERE, "a~", {0, 3, 4, 6, 7}},
    {HERE, "a%7E", {1, 2, 5}},
    {HERE, "a%7e", {8}},
    {HERE, "a=%2C", {1, 2, 3, 4, 5, 6}},
    {HERE, "a=%2c", {}},
    {HERE, "%c3%a9", {8}},
    {HERE, "%C3%A9", {1, 2, 3, 4, 5, 6, 7}},
    {HERE, "%C3%a9", {}},
    {HERE, "%20", {2, 3, 4, 7, 8}},
    {HERE, "%23", {1, 2, 4, 5, 6, 7, 8}},
    {HERE, "?a=b", {0, 3}},
    {HERE, "a#", {0, 3}},
    {HERE, "\x80", {0}},
    {HERE, "\0"sv, {0}},
    // A "%" that decoding keeps visible comes back as it was.
    {HERE, "%0A", {1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "%0a=%zz&%1f", {1, 2, 3, 4, 5, 6, 7, 8}},
    {HERE, "%%%41", {}},
    {HERE, "%%%zz", {1, 2, 3, 4, 5, 6, 7, 8}},
    // One cut off by the end of its name or value is ordinary text.
    {HERE, "a%", {0, 7}},
    {HERE, "a%4", {0, 7}},
    {HERE, "a%=bb", {0, 7}},
    {HERE, "a%4=bb", {0, 7}},
    {HERE, "a%&bb", {0, 7}},
    {HERE, "a=%4&bb", {0, 7}},
    {HERE, "a=%==", {3}},
    {HERE, "a=%4=", {3}},
    {HERE, "%25", {1, 2, 3, 4, 5, 6, 8}},
    {HERE, "%2525", {1, 2, 3, 4, 5, 6, 8}},
    // Text that decodes to the placeholder is encoded as "%".
    {HERE, "%26%2325%3B", {}},
    {HERE, "%26%2325%3b", {}},
    {HERE, "%26%2325;", {}},
    {HERE, "%26#25;", {}},
    {HERE, "%26%2325", {1, 2, 4, 5, 6, 7, 8}},
    {HERE, "%26%2325%3C", {1, 2, 4, 5, 7}},
    {HERE, "a=%26%2325%3B26%2325%3B", {}},
    {HERE, "&#25;", {0, 3}},
};

bool contains(const std::vector<int>& numbers, int number) {
  return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

TEST(CheckUrlDecoding, TellsWhetherATextIsCanonical) {
  forEachPlacement(kChecks, [](const CheckCase& row, Placement& place) {
    const RWCString& text = place.constString(row.text);
    for (const Type type : kTypes) {
      EXPECT_EQ(UrlEncoding::CheckUrlDecoding(text, type), contains(row.passes, type))
          << "flavour " << type;
    }
    for (const int unknown : {-1, 9, 1000}) {
      EXPECT_EQ(UrlEncoding::CheckUrlDecoding(text, typeOf(unknown)), contains(row.passes, 1));
    }
    EXPECT_EQ(bytesOf(text), row.text);
  });
}

TEST(CheckUrlDecoding, FindsTheFirstFlavour) {
  forEachPlacement(kChecks, [](const CheckCase& row, Placement& place) {
    int expected = UrlEncoding::eNone;
    for (int type = UrlEncoding::eSiebel; type > 0; --type) {
      if (contains(row.passes, type)) expected = type;
    }
    EXPECT_EQ(UrlEncoding::CheckUrlDecoding(place.constString(row.text)), expected);
  });
}

TEST(CheckUrlDecoding, AllocatesNothing) {
  const RWCString text("name=a+value+of+some+length&other=%C3%A9%0A&third=%26%2325%3C");
  EXPECT_EQ(allocationsOf([&] { UrlEncoding::CheckUrlDecoding(text); }), 0U);
}

// --- Unreadable bytes -------------------------------------------------------------------------

struct UnreadableCase {
  Here here;
  std::string_view source;
  std::string_view output;
};
constexpr UnreadableCase kUnreadables[] = {
    {HERE, "", ""},
    {HERE, "A\0\n\xc8"sv, "A%00\n%C8"},
    {HERE, "\t\n\r", "\t\n\r"},
    {HERE, "\x08\x0b\x0c\x0e\x1f", "%08%0B%0C%0E%1F"},
    {HERE, " ~%+&", " ~%+&"},
    {HERE, "\x7f\x80\xff", "%7F%80%FF"},
    {HERE, "&#25;", "&#25;"},
    {HERE, "a line that is much too long to stand in the object\x01",
     "a line that is much too long to stand in the object%01"},
};

TEST(EncodeStringUnreadables, ReplacesTheOutput) {
  forEachPlacement(kUnreadables, [](const UnreadableCase& row, Placement& place) {
    const std::string_view source = place.bytes(row.source);
    RWCString output("old");
    EXPECT_TRUE(UrlEncoding::EncodeStringUnreadables(source.data(), source.size(), output));
    EXPECT_EQ(bytesOf(output), row.output);
  });
}

TEST(EncodeStringUnreadables, LeavesTheOutputForANullSource) {
  RWCString output("old");
  EXPECT_FALSE(UrlEncoding::EncodeStringUnreadables(nullptr, 0, output));
  EXPECT_FALSE(UrlEncoding::EncodeStringUnreadables(nullptr, 5, output));
  EXPECT_EQ(bytesOf(output), "old");
}

TEST(EncodeStringUnreadables, TakesTheOutputsOwnBytes) {
  RWCString text("a text that is too long to stand in the object\x01");
  EXPECT_TRUE(
      UrlEncoding::EncodeStringUnreadables(std::as_const(text).data(), text.length(), text));
  EXPECT_EQ(bytesOf(text), "a text that is too long to stand in the object%01");
}

}  // namespace
}  // namespace pagescan::tests
