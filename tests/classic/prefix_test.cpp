// Pages that end anywhere: every beginning of each sample page goes through every operation, with
// nothing readable after it.

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/kernels.h"
#include "pagescan.h"
#include "support/comparison.h"
#include "support/generated_texts.h"
#include "support/placement.h"
#include "support/run_program.h"

namespace pagescan::tests {

using namespace internal;
namespace {

constexpr char kPageUrl[] = "http://www.example.com/gallery/index.html";

// Small pages of what is easily cut in two.
const std::vector<std::string> kSmallPages = {
    "<!-- a --><img src='a.gif' alt=\"b\" lowsrc = c><SCRIPT src=x>y</SCRIPT ><script>z</script>",
    "<body onload = 'a()' onMouseOver=b onmouseout=\"c\"><select name=a><option>1</select><td bac"
    "kground=\"w.gif\"><frame name=f><iframe src=//h/p><!--<img src=n>-->",
    "@import 'a.css'; @import url(b.css); p { background: url( \"c d.gif\" ) } /* url(e) */ q { x:"
    " url('#f') } \"g\"",
    "http://user@host:80/a/./b/../../c d%41%zz?x=%20y&amp;z=+#f\\..\\g",
    "&eacute;&#233;&#x41;&#09;&amp;lt;&nosuchname;&#;&#x;&#99999999999999999999;%C3%A9+caf\xC3\xA9",
    "javascript:a (b)",
    "https://h",
    "//h/../..",
};

// --- What is done with a beginning ------------------------------------------------------------

using Operations = std::vector<std::function<void(Placement& placement, std::string_view text)>>;

void scan(Placement& placement, std::string_view text) {
  RWCString& string = placement.string(text);
  for (std::size_t pos = text.size() < 20 ? 0 : text.size() - 20; pos <= text.size(); ++pos) {
    unsigned long at = pos;
    htmlSkipWhiteSpaces(string, text.size(), at);
    at = pos;
    htmlSkipNonWhiteSpaces(string, text.size(), at);
    unsigned long start = 0;
    unsigned long furthest = 0;
    RWCString value;
    htmlGetStringValue(string, value, pos, start, furthest, text.size());
    EXPECT_LE(furthest, text.size());
    isElementOfType("img", 3, string, pos, ' ');
  }
}

void readAttributes(Placement& placement, std::string_view text) {
  RWCString& string = placement.string(text);
  for (unsigned long pos = 0; pos < text.size();) {
    RWCString name;
    RWCString value;
    const unsigned long before = pos;
    unsigned long start = 0;
    htmlFindNextAttribute_(string, name, value, pos, start);
    EXPECT_LE(pos, text.size());
    if (pos == before) ++pos;
  }
  RWHashDictionary values;
  RWHashDictionary offsets;
  for (unsigned long pos = 0; pos < text.size(); ++pos) {
    const std::size_t opening = text.find('<', pos);
    if (opening == std::string_view::npos) break;
    pos = opening;
    unsigned long at = opening;
    CHTMLAttributeFinder().FindAttributes(string, at, values, offsets);
  }
  values.clearAndDestroy();
  offsets.clearAndDestroy();
}

void blankAndRemove(Placement& placement, std::string_view text) {
  RWCString& blanked = placement.string(text);
  tqOverwriteTagWithBlanks(blanked, "<!--", "-->");
  EXPECT_EQ(blanked.length(), text.size());
  RWCString& script = placement.string(text);
  if (tqFindEndlessScript(script) == RWCString::npos) tqOverwriteScriptWithBlanks(script);
  EXPECT_EQ(script.length(), text.size());
  tqRemoveFirstSingleTag(placement.string(text), "<img");
  tqSkipTagBody("select", placement.string(text));
  tqSkipTagBody("s", placement.string(text));
  tqSkipOnloadAttribute(placement.string(text));
}

void parse(Placement& placement, std::string_view text) {
  CHTMLOffsetParser parser(kPageUrl);
  const RWCString& string = placement.constString(text);
  if (tqFindEndlessScript(string) == RWCString::npos) {
    parser.ParseHTML(placement.cString(text), text.size());
    parser.findTagName();
  }
  try {
    parser.ParseCSS(string);
  } catch (const RWBoundsErr&) {
  }
}

void resolve(Placement& placement, std::string_view text) {
  urlBase base(placement.constString(text));
  base.shortParse();
  base.setBase(placement.constString(text));
  base.parse();
  urlBase own((RWCString(kPageUrl)));
  own.calcUrl(placement.string(text));
  RWCString out;
  urlBase other((RWCString(kPageUrl)));
  other.calcUrl(placement.constString(text), out, true, true);
  base.calcUrl(placement.constString(text), out, false, false);
  stripUrl(placement.string(text), true);
  stripUrl(placement.string(text), false);
  int length = 0;
  getProtocol(placement.constString(text), length);
  isHttpProtocol(placement.constString(text));
  CHTMLOffsetParser parser(placement.cString(text));
}

void encode(Placement& placement, std::string_view text) {
  for (int type = UrlEncoding::eNone; type <= UrlEncoding::eSiebel; ++type) {
    const auto flavour = static_cast<UrlEncoding::EncodingType>(type);
    RWCString encoded;
    UrlEncoding::EncodeString(placement.string(text), encoded, flavour);
    UrlEncoding::DecodeString(placement.string(text), flavour);
    UrlEncoding::CheckUrlDecoding(placement.constString(text), flavour);
  }
  UrlEncoding::CheckUrlDecoding(placement.constString(text));
  RWCString printable;
  UrlEncoding::EncodeStringUnreadables(placement.bytes(text).data(), text.size(), printable);
}

void convert(Placement& placement, std::string_view text) {
  isUtf8(placement.bytes(text).data(), static_cast<int>(text.size()));
  ConvertUtf8toAnsi(placement.string(text));
  ConvertAnsitoUtf8(placement.string(text));
  CTQCharSet::fsGetSingleton()->convert(placement.string(text));
  std::vector<char> out(3 * text.size() + 1);
  const auto size = static_cast<int>(out.size());
  const auto length = static_cast<int>(text.size());
  UTF8ToANSI(0, placement.bytes(text).data(), length, out.data(), size);
  ANSIToUTF8(0, placement.bytes(text).data(), length, out.data(), size);
}

void search(Placement& placement, std::string_view text) {
  static const RWCRegexp patterns[] = {RWCRegexp("&#?[a-zA-Z0-9]+;"), RWCRegexp("s*rc *=?"),
                                       RWCRegexp("^<!")};
  const RWCString& string = placement.constString(text);
  for (const RWCRegexp& pattern : patterns) string.index(pattern, std::size_t{0});
  for (const char* const pattern : {"-->", ">", "</SCRIPT>", ""}) {
    string.index(pattern, 0, RWCString::ignoreCase);
    string.index(pattern);
  }
  placement.string(text).toLower();
  CZKHTMLDietTransactionsObject::CalcCheckSum(placement.bytes(text).data(),
                                              static_cast<int>(text.size()));
  CTQBuffPart part;
  part.setPart(placement.bytes(text).data(), 0, static_cast<int>(text.size()));
  part.getPart();
  CTQBuffPart borrowed;
  borrowed.setPart(placement.bytes(text).data(), 0, static_cast<int>(text.size()));
  borrowed.compare(part, true);
  borrowed.compare(placement.string(text), false);
}

const Operations kOperations = {scan,    readAttributes, blankAndRemove, parse,
                                resolve, encode,         convert,        search};

void runOnEveryPrefix(const std::string& page, Placement::Kind kind) {
  for (std::size_t length = 0; length <= page.size(); ++length) {
    const std::string_view text = std::string_view(page).substr(0, length);
    const testing::ScopedTrace trace("", 0, "the first " + std::to_string(length) + " bytes");
    for (const auto& operation : kOperations) {
      Placement placement(kind);
      operation(placement, text);
    }
  }
}

std::vector<std::string> allPages() {
  std::vector<std::string> pages = kSmallPages;
  pages.push_back(readFile(PAGESCAN_SOURCE_DIR "/examples/sample.html"));
  return pages;
}

TEST(EveryPrefix, StaysInsideItsBlock) {
  forEachKernelLevel([] {
    for (const std::string& page : allPages()) runOnEveryPrefix(page, Placement::kExactBlock);
  });
}

TEST(EveryPrefix, StaysInFrontOfAGuardPage) {
  forEachKernelLevel([] {
    for (const std::string& page : kSmallPages) runOnEveryPrefix(page, Placement::kBeforeGuardPage);
  });
}

// --- What comes out ---------------------------------------------------------------------------

// Compares the operation with its twin on every beginning of the small pages.
void compareOnEveryPrefix(const char* op,
                          const std::function<Texts(const std::string& text)>& argsOf) {
  Comparison compare(op);
  for (const std::string& page : kSmallPages) {
    for (std::size_t length = 0; length <= page.size(); ++length) {
      compare(argsOf(page.substr(0, length)));
    }
  }
}

TEST(EveryPrefix, GivesWhatTheTwinGivesForTexts) {
  for (const char* const op : {"blankscript", "onload", "proto", "ishttp", "chkany", "unread",
                               "isutf8", "u2a", "a2u", "ent", "checksum"}) {
    compareOnEveryPrefix(op, [](const std::string& text) { return Texts{text}; });
  }
}

TEST(EveryPrefix, GivesWhatTheTwinGivesForPages) {
  for (const char* const op : {"parsehtml", "parsecss"}) {
    compareOnEveryPrefix(op, [](const std::string& text) { return Texts{kPageUrl, text}; });
  }
  compareOnEveryPrefix("blanktag", [](const std::string& text) {
    return Texts{text, "<!--", "-->"};
  });
  compareOnEveryPrefix("skipbody", [](const std::string& text) { return Texts{"select", text}; });
  compareOnEveryPrefix("findattr", [](const std::string& text) { return Texts{text, "0"}; });
}

TEST(EveryPrefix, GivesWhatTheTwinGivesForUrls) {
  for (const char* const op : {"dec", "chk"}) {
    compareOnEveryPrefix(op, [](const std::string& text) { return Texts{"1", text}; });
  }
  compareOnEveryPrefix("enc", [](const std::string& text) { return Texts{"5", text, "before"}; });
  compareOnEveryPrefix("strip", [](const std::string& text) { return Texts{text, "1"}; });
  compareOnEveryPrefix("urlbase", [](const std::string& text) {
    return Texts{"set", kPageUrl, "calc1", text, "set", kPageUrl, "calc4", text, "old", "1", "1"};
  });
  compareOnEveryPrefix("urlbase", [](const std::string& text) {
    return Texts{"set", text, "calc4", "../a", "old", "1", "1", "state"};
  });
}

}  // namespace
}  // namespace pagescan::tests
