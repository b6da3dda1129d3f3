#include "charset.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>

#include "reference/classic/charset.h"
#include "rw/rwcollectables.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/texts.h"
#include "tqurlbase.h"

namespace pagescan::tests {
namespace {

using namespace std::string_view_literals;

struct ReferenceCase {
  Here here;
  std::string_view text;
  std::string_view expected;
};

void expectDecoded(const ReferenceCase& row, Placement& place) {
  RWCString& text = place.string(row.text);
  const RWCString keeper(text);
  CTQCharSet::fsGetSingleton()->convert(text);
  EXPECT_EQ(bytesOf(text), row.expected);
  EXPECT_EQ(bytesOf(keeper), row.text);
}

// --- The table --------------------------------------------------------------------------------

// From byte 161 on.
constexpr std::string_view kLatin1Names[] = {
    "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",
    "sup3",   "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",
    "frac14", "frac12", "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",
    "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute",
    "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",
    "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave",
    "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",   "eth",    "ntilde",
    "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave", "uacute",
    "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};
static_assert(std::size(kLatin1Names) == 95);

std::string decoded(std::string_view bytes) {
  RWCString text = stringOf(bytes);
  CTQCharSet::fsGetSingleton()->convert(text);
  return std::string(bytesOf(text));
}

TEST(CTQCharSet, KnowsTheLatin1Names) {
  for (std::size_t i = 0; i < std::size(kLatin1Names); ++i) {
    const std::string reference = "&" + std::string(kLatin1Names[i]) + ";";
    const std::string byte(1, static_cast<char>(161 + i));
    EXPECT_EQ(decoded(reference), byte) << reference;
    EXPECT_EQ(decoded(reference + " and more"), byte + " and more") << reference;
  }
}

// Names far from the end of a text are read another way than those close to it.
TEST(Convert, GivesWhatItsTwinGivesAtEveryDistanceFromTheEnd) {
  forEachText({"&", "a", "mp", "amp", "ETH;", ";", "\0"sv, "#", "65"}, 4, [](std::string text) {
    for (int i = 0; i < 9; ++i, text += '.') {
      std::string expected = text;
      reference::convert(expected);
      ASSERT_EQ(decoded(text), expected) << testing::PrintToString(text);
    }
  });
}

TEST(CTQCharSet, IsADictionaryOfAHundredNames) {
  const RWHashDictionary& dictionary = *CTQCharSet::fsGetSingleton();
  EXPECT_EQ(dictionary.entries(), 100U);
  RWHashDictionaryIterator next(dictionary);
  while (const RWCollectable* const key = next()) {
    EXPECT_NE(dynamic_cast<const RWCollectableString*>(key), nullptr);
    const auto* const value = dynamic_cast<RWCollectableString*>(next.value());
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->length(), 1U);
  }
  const RWCollectableString name("Eacute");
  const auto* const value = dynamic_cast<RWCollectableString*>(dictionary.findValue(&name));
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(bytesOf(*value), "\xC9");
  EXPECT_TRUE((std::is_base_of_v<RWHashDictionary, CTQCharSet>));
}

// --- Named references -------------------------------------------------------------------------

constexpr ReferenceCase kNamed[] = {
    {HERE, ""sv, ""sv},
    {HERE, "text"sv, "text"sv},
    {HERE, "AT&amp;T"sv, "AT&T"sv},
    {HERE, "&quot;&amp;&lt;&gt;"sv, "\"&<>"sv},
    {HERE, "&nbsp;"sv, " "sv},  // the ordinary blank, not byte 160
    {HERE, "&Eacute;&eacute;"sv, "\xC9\xE9"sv},
    {HERE, "a&lt;b&gt;c"sv, "a<b>c"sv},
    {HERE, "\0&lt;\0"sv, "\0<\0"sv},
    // Names are case-sensitive; unknown ones stay.
    {HERE, "&AMP;"sv, "&AMP;"sv},
    {HERE, "&Lt;"sv, "&Lt;"sv},
    {HERE, "&apos;"sv, "&apos;"sv},
    {HERE, "&euro;&hellip;"sv, "&euro;&hellip;"sv},
    {HERE, "&amp1;"sv, "&amp1;"sv},
    {HERE, "&x41;"sv, "&x41;"sv},
    {HERE, "&65;"sv, "&65;"sv},
    {HERE, "&anameofmanyletterswhichnoentityhas;"sv, "&anameofmanyletterswhichnoentityhas;"sv},
    // No reference.
    {HERE, "&amp"sv, "&amp"sv},
    {HERE, "&amp &lt;"sv, "&amp <"sv},
    {HERE, "&;"sv, "&;"sv},
    {HERE, "&"sv, "&"sv},
    {HERE, "& amp;"sv, "& amp;"sv},
    {HERE, "&am\0p;"sv, "&am\0p;"sv},
    {HERE, "&amp\0; and more"sv, "&amp\0; and more"sv},
    {HERE, "&; and more"sv, "&; and more"sv},
    {HERE, "&amp;; and more"sv, "&; and more"sv},
    {HERE, "&am-p;"sv, "&am-p;"sv},
    {HERE, "&\xE4;"sv, "&\xE4;"sv},
    {HERE, "&&lt;"sv, "&<"sv},
    {HERE, "&amp&lt;"sv, "&amp<"sv},
    // A single pass: what a reference made is not looked at again.
    {HERE, "&amp;lt;"sv, "&lt;"sv},
    {HERE, "&amp;amp;"sv, "&amp;"sv},
    {HERE, "&amp;&amp;"sv, "&&"sv},
    {HERE, "&amp;#65;"sv, "&#65;"sv},
    {HERE, "&#38;amp;"sv, "&amp;"sv},
    {HERE, "&am&amp;p;"sv, "&am&p;"sv},
    {HERE, "&foo;&lt;"sv, "&foo;<"sv},
};

TEST(Convert, DecodesNamedReferences) {
  forEachPlacement(kNamed, expectDecoded);
}

// --- Numeric references -----------------------------------------------------------------------

constexpr ReferenceCase kDecimal[] = {
    {HERE, "&#65;"sv, "A"sv},
    {HERE, "&#160;"sv, "\xA0"sv},
    {HERE, "&#255;"sv, "\xFF"sv},
    {HERE, "&#256;"sv, "&#256;"sv},
    {HERE, "&#8364;"sv, "&#8364;"sv},
    {HERE, "&#1;&#32;"sv, "\x01 "sv},
    {HERE, "x&#65;y&#66;z"sv, "xAyBz"sv},
    // A leading zero reads octal, "0x" hexadecimal.
    {HERE, "&#0;"sv, "\0"sv},
    {HERE, "&#0101;"sv, "A"sv},
    {HERE, "&#065;"sv, "5"sv},
    {HERE, "&#08;"sv, "\0"sv},
    {HERE, "&#09;"sv, "\0"sv},
    {HERE, "&#0377;"sv, "\xFF"sv},
    {HERE, "&#0400;"sv, "&#0400;"sv},
    {HERE, "&#00000000000101;"sv, "A"sv},
    {HERE, "&#0x41;"sv, "A"sv},
    {HERE, "&#0X41;"sv, "A"sv},
    {HERE, "&#0xFF;"sv, "\xFF"sv},
    {HERE, "&#0x100;"sv, "&#0x100;"sv},
    {HERE, "&#0x;"sv, "\0"sv},
    {HERE, "&#0xg;"sv, "\0"sv},
    {HERE, "&#0b1;"sv, "\0"sv},  // no binary numbers
    // Reading stops at the first byte that is no digit.
    {HERE, "&#65a;"sv, "A"sv},
    {HERE, "&#6x5;"sv, "\x06"sv},
    {HERE, "&#0101x;"sv, "A"sv},
    // Numbers are cut to 32 bits after they saturate at 64.
    {HERE, "&#2147483647;"sv, "&#2147483647;"sv},
    {HERE, "&#2147483648;"sv, "\0"sv},
    {HERE, "&#4294967295;"sv, "\xFF"sv},
    {HERE, "&#4294967296;"sv, "\0"sv},
    {HERE, "&#4294967361;"sv, "A"sv},
    {HERE, "&#4294967552;"sv, "&#4294967552;"sv},
    {HERE, "&#9223372036854775807;"sv, "\xFF"sv},
    {HERE, "&#9223372036854775808;"sv, "\xFF"sv},
    {HERE, "&#99999999999999999999999999;"sv, "\xFF"sv},
    {HERE, "&#0xFFFFFFFFFFFFFFFFFF;"sv, "\xFF"sv},
    {HERE, "&#0x8000000041;"sv, "A"sv},
    // No reference.
    {HERE, "&#;"sv, "&#;"sv},
    {HERE, "&#65"sv, "&#65"sv},
    {HERE, "&#-65;"sv, "&#-65;"sv},
    {HERE, "&# 65;"sv, "&# 65;"sv},
    {HERE, "&##65;"sv, "&##65;"sv},
    {HERE, "&#65 ;"sv, "&#65 ;"sv},
};

TEST(Convert, DecodesNumericReferences) {
  forEachPlacement(kDecimal, expectDecoded);
}

constexpr ReferenceCase kHexadecimal[] = {
    {HERE, "&#x41;&#X41;"sv, "AA"sv},
    {HERE, "&#xa0;"sv, "\xA0"sv},
    {HERE, "&#xFf;"sv, "\xFF"sv},
    {HERE, "&#x4;"sv, "\x04"sv},
    // Up to two characters after the "x".
    {HERE, "&#x041;"sv, "&#x041;"sv},
    {HERE, "&#x00e9;"sv, "&#x00e9;"sv},
    {HERE, "&#x100;"sv, "&#x100;"sv},
    // Without a digit the number is 0; reading stops at the first that is none.
    {HERE, "&#x;"sv, "\0"sv},
    {HERE, "&#xzz;"sv, "\0"sv},
    {HERE, "&#x4g;"sv, "\x04"sv},
    {HERE, "&#xg4;"sv, "\0"sv},
    {HERE, "&#x0x;"sv, "\0"sv},
    {HERE, "&#xx;"sv, "\0"sv},
};

TEST(Convert, DecodesHexadecimalReferences) {
  forEachPlacement(kHexadecimal, expectDecoded);
}

constexpr ReferenceCase kNoNumber[] = {
    // Without any number before it in the call such a reference stays,
    {HERE, "&#abc;"sv, "&#abc;"sv},
    {HERE, "&#z;&#y;"sv, "&#z;&#y;"sv},
    {HERE, "&lt;&#abc;"sv, "<&#abc;"sv},
    // later ones take the number read last, even one that was too large,
    {HERE, "&#65;&#abc;"sv, "AA"sv},
    {HERE, "&#65;&#abc;&#66;&#abc;&#q;"sv, "AABBB"sv},
    {HERE, "&#x41;&#abc;"sv, "AA"sv},
    {HERE, "&#x;&#abc;"sv, "\0\0"sv},
    {HERE, "&#abc;&#65;&#abc;"sv, "&#abc;AA"sv},
    {HERE, "&#300;&#abc;"sv, "&#300;&#abc;"sv},
    {HERE, "&#65;&#300;&#abc;"sv, "A&#300;&#abc;"sv},
    // and one that is never read leaves it alone.
    {HERE, "&#65;&#x100;&#abc;"sv, "A&#x100;A"sv},
    {HERE, "&#65;&amp;&#abc;"sv, "A&A"sv},
};

TEST(Convert, TakesTheLastNumberWhereNoneCanBeRead) {
  forEachPlacement(kNoNumber, expectDecoded);
}

// The first two characters after "&#", against the C library.
TEST(Convert, ReadsNumbersAsTheCLibraryDoes) {
  constexpr std::string_view kCharacters =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  const auto expectSame = [](const std::string& number) {
    int value = 300;
    std::sscanf(number.c_str(), "%i", &value);
    const std::string reference = "&#" + number + ";";
    const std::string expected =
        value > 255 ? reference : std::string(1, static_cast<char>(value & 0xFF));
    ASSERT_EQ(decoded(reference), expected) << reference;
  };
  for (const char first : kCharacters) {
    if (first == 'x' || first == 'X') continue;
    expectSame({first});
    for (const char second : kCharacters) {
      if (second == 'b' || second == 'B') continue;  // a newer C library reads "0b" as binary
      expectSame({first, second});
      for (const char third : "0178afFgx"sv) expectSame({first, second, third, '1'});
    }
  }
}

// --- The instance -----------------------------------------------------------------------------

TEST(CTQCharSet, HasOneInstanceFromTheStart) {
  ASSERT_NE(CTQCharSet::msSingleton, nullptr);
  EXPECT_EQ(CTQCharSet::fsGetSingleton(), CTQCharSet::msSingleton);
}

// Puts the library's own instance back at the end.
class SingletonKeeper {
 public:
  SingletonKeeper() : original_(CTQCharSet::msSingleton) {}
  SingletonKeeper(const SingletonKeeper&) = delete;
  SingletonKeeper& operator=(const SingletonKeeper&) = delete;
  ~SingletonKeeper() { CTQCharSet::msSingleton = original_; }

 private:
  CTQCharSet* original_;
};

TEST(CTQCharSet, LogsAnErrorAndGivesNullWithoutAnInstance) {
  const SingletonKeeper keeper;
  CTQCharSet::msSingleton = nullptr;
  testing::internal::CaptureStderr();
  EXPECT_EQ(CTQCharSet::fsGetSingleton(), nullptr);
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(CTQCharSet::msSingleton, nullptr) << "none is ever made";
}

TEST(CTQCharSet, LinksKeepTheirReferencesWithoutAnInstance) {
  const SingletonKeeper keeper;
  CTQCharSet::msSingleton = nullptr;
  testing::internal::CaptureStderr();
  urlBase base("http://h/d/");
  RWCString url("a&amp;b");
  EXPECT_EQ(bytesOf(base.calcUrl(url)), "http://h/d/a&amp;b");
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

TEST(CTQCharSet, LogsAnErrorForASecondInstanceAndRegistersIt) {
  const SingletonKeeper keeper;
  testing::internal::CaptureStderr();
  {
    CTQCharSet second;
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(CTQCharSet::fsGetSingleton(), &second);
    EXPECT_EQ(decoded("&lt;"), "<");
  }
  EXPECT_NE(CTQCharSet::msSingleton, nullptr) << "the destructor does not unregister";
}

TEST(CTQCharSet, RegistersTheFirstInstanceQuietly) {
  const SingletonKeeper keeper;
  CTQCharSet::msSingleton = nullptr;
  testing::internal::CaptureStderr();
  const CTQCharSet first;
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(CTQCharSet::msSingleton, &first);
}

TEST(CTQCharSet, DecodesWhatItsDictionaryHolds) {
  const SingletonKeeper keeper;
  CTQCharSet::msSingleton = nullptr;
  CTQCharSet own;
  own.insertKeyAndValue(new RWCollectableString("apos"), new RWCollectableString("'"));
  EXPECT_EQ(decoded("&apos; &lt; and more text"), "' < and more text");
  own.clearAndDestroy();
  EXPECT_EQ(decoded("&apos; &lt; and more text"), "&apos; &lt; and more text");
  EXPECT_EQ(decoded("&#65; and more text"), "A and more text");
}

// Fills an instance anew, as many names as before and the same except for "nbsp".
void refill(CTQCharSet& own, RWCollectable* nbsp) {
  own.clearAndDestroy();
  own.insertKeyAndValue(new RWCollectableString("nbsp"), nbsp);
  own.insertKeyAndValue(new RWCollectableString("amp"), new RWCollectableString("&"));
  for (int i = 0; i < 98; ++i) {
    own.insertKeyAndValue(new RWCollectableString(("e" + std::to_string(i)).c_str()),
                          new RWCollectableString("e"));
  }
}

struct RefillCase {
  Here here;
  void (*refill)(CTQCharSet& own);
  const char* reference;
  std::string_view expected;
};
const RefillCase kRefills[] = {
    {HERE, [](CTQCharSet& own) { refill(own, new RWCollectableString("N")); }, "&nbsp;", "N"},
    {HERE, [](CTQCharSet& own) { refill(own, new RWCollectableString("N")); }, "&amp;", "&"},
    {HERE, [](CTQCharSet& own) { refill(own, new RWCollectableString("N")); }, "&lt;", "&lt;"},
    {HERE, [](CTQCharSet& own) { refill(own, new RWCollectableString("N")); }, "&e7;", "e"},
    // One of the built-in ones is changed where it is.
    {HERE,
     [](CTQCharSet& own) {
       const RWCollectableString key("nbsp");
       dynamic_cast<RWCollectableString&>(*own.findValue(&key)) = RWCString("N");
     },
     "&nbsp;", "N"},
    // As many pairs as before, of which one has another name.
    {HERE,
     [](CTQCharSet& own) {
       const RWCollectableString key("nbsp");
       dynamic_cast<RWCollectableString&>(*own.find(&key)) = RWCString("else");
     },
     "&lt;", "<"},
    {HERE,
     [](CTQCharSet& own) {
       const RWCollectableString key("nbsp");
       dynamic_cast<RWCollectableString&>(*own.find(&key)) = RWCString("longer-name");
     },
     "&lt;", "<"},
    {HERE, [](CTQCharSet&) {}, "&nbsp;", " "},
};

// At its begin, in its middle and at its end; in a short text and in a long one.
TEST(CTQCharSet, GoesByItsDictionaryThroughoutAText) {
  forEachRow(kRefills, [](const RefillCase& row) {
    const SingletonKeeper keeper;
    CTQCharSet::msSingleton = nullptr;
    CTQCharSet own;
    row.refill(own);
    for (const std::size_t count : {1U, 2U, 15U, 16U, 17U, 18U, 100U}) {
      EXPECT_EQ(decoded(repeated(row.reference, count)), repeated(row.expected, count)) << count;
      EXPECT_EQ(decoded(repeated(row.reference, count) + " and more text"),
                repeated(row.expected, count) + " and more text")
          << count;
    }
  });
}

// Keys and values of other kinds are left to the pattern and the dictionary.
TEST(CTQCharSet, TakesNoNoticeOfOtherObjectsAmongAHundred) {
  class OtherString : public RWCollectableString {
   public:
    explicit OtherString(const char* text) : RWCollectableString(text) {}
  };
  const SingletonKeeper keeper;
  CTQCharSet::msSingleton = nullptr;
  CTQCharSet own;
  refill(own, new OtherString("N"));
  EXPECT_EQ(decoded(repeated("&nbsp;", 50)), repeated("N", 50));
}

// --- Large texts ------------------------------------------------------------------------------

TEST(Convert, EndsOnLargeTexts) {
  constexpr std::size_t kMany = 500000;
  EXPECT_EQ(decoded(repeated("&amp;", kMany)), repeated("&", kMany));
  EXPECT_EQ(decoded(repeated("&#65;", kMany)), repeated("A", kMany));
  const std::string ampersands = repeated("&", kMany);
  EXPECT_EQ(decoded(ampersands), ampersands);
  const std::string name = "&" + repeated("a", kMany);
  EXPECT_EQ(decoded(name), name);
  EXPECT_EQ(decoded(name + ";"), name + ";");
  const std::string number = "&#" + repeated("1", kMany);
  EXPECT_EQ(decoded(number), number);
  EXPECT_EQ(decoded(number + ";"), "\xFF");
  const std::string unknown = repeated("&x;", kMany);
  EXPECT_EQ(decoded(unknown), unknown);
}

}  // namespace
}  // namespace pagescan::tests
