#include "hosts/every_family.h"

#include <cstddef>
#include <cstring>

#include "pagescan.h"

namespace {

bool strings() {
  RWCString text("A String That Is Longer Than Most");
  RWCString copy = text + " of them";
  copy.toLower();
  copy.remove(0, 2);
  copy.insert(0, "the ");
  return copy == "the string that is longer than most of them" && text[0] == 'A' &&
         text.index("Longer") == 17 && text.strip(RWCString::both, 'A').length() == 32;
}

bool patterns() {
  const RWCRegexp greedy("[a-z]+;");
  const RWCRegexp manyWays("a*ab?a+");
  std::size_t length = 0;
  return RWCString("1 &amp; 2").index(greedy, &length) == 3 && length == 4 &&
         RWCString("xaaba")(manyWays) == "aaba";
}

bool collections() {
  RWHashDictionary dictionary;
  RWOrdered list;
  for (int i = 0; i < 20; ++i) {
    list.insert(new RWCollectableInt(i));
    dictionary.insertKeyAndValue(new RWCollectableString(RWCString(
                                     "xxxxxxxxxxxxxxxxxxxxxxx", 3 + static_cast<std::size_t>(i))),
                                 list.at(static_cast<std::size_t>(i)));
  }
  const RWCollectableString key("xxxxx");
  const auto* found = dynamic_cast<const RWCollectableInt*>(dictionary.findValue(&key));
  const bool isRight = found && found->value() == 2 && list.entries() == 20;
  list.clear();
  dictionary.clearAndDestroy();
  return isRight;
}

bool boundsErrors() {
  try {
    RWOrdered().at(3);
  } catch (const RWBoundsErr&) {
    return true;
  }
  return false;
}

bool slices() {
  CTQBuffPart part;
  part.setPart("one two", 4, 3);
  return part.compare("TWO", true) == 0 && std::strcmp(part.getPart(), "two") == 0 &&
         nTarn::g_strnicmp("abc", "ABD", 2) == 0;
}

bool scanning() {
  RWCString text(" href = 'x y' alt>");
  RWCString name;
  RWCString value;
  unsigned long pos = 0;
  unsigned long start = 0;
  htmlFindNextAttribute_(text, name, value, pos, start);
  return name == "href" && value == "x y" && start == 9 && htmlIsWhiteSpace('\t');
}

bool positions() {
  RWCString text("=  'a b' IMG>");
  unsigned long pos = 0;
  if (!htmlSkipWhiteSpaces(text, text.length(), pos) || pos != 3) return false;
  if (!htmlSkipNonWhiteSpaces(text, text.length(), pos) || pos != 5) return false;
  RWCString value;
  unsigned long start = 0;
  unsigned long furthest = 0;
  return htmlGetStringValue(text, value, 0, start, furthest, text.length()) && value == "a b" &&
         start == 4 && furthest == 7 && isElementOfType("img", 3, text, 9, ' ');
}

bool blankingAndRemoval() {
  RWCString text("<!-- x --><script>y</script><img src=a onload=b()>");
  tqOverwriteTagWithBlanks(text, "<!--", "-->");
  if (tqFindEndlessScript(text) == RWCString::npos) tqOverwriteScriptWithBlanks(text);
  tqSkipOnloadAttribute(text);
  tqSkipTagBody("script", text);
  tqRemoveFirstSingleTag(text, "<p");
  return text == "   </p><script></script><img src=a onload=\"\">";
}

bool attributes() {
  RWCString text("<a HREF=x.html>");
  unsigned long pos = 1;
  RWHashDictionary values;
  RWHashDictionary offsets;
  CHTMLAttributeFinder().FindAttributes(text, pos, values, offsets);
  const RWCollectableString key("href");
  const auto* offset = dynamic_cast<const RWCollectableInt*>(offsets.findValue(&key));
  const bool isRight = offset && offset->value() == 8 && values.contains(&key);
  values.clearAndDestroy();
  offsets.clearAndDestroy();
  return isRight;
}

// Keeps the last resolved value.
class LastValue : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    value = record->GetFirstAttributeObject()->GetAttributeValue();
    return true;
  }

  RWCString value;
};

bool parsing() {
  LastValue last;
  CHTMLOffsetParser parser("http://h/d/page.html");
  parser.SetDietVirtualQueue(&last);
  constexpr char kPage[] = "<td background=w.gif><img src='../a%41.gif' lowsrc=l>";
  parser.ParseHTML(kPage, sizeof kPage - 1);
  const bool isRight = last.value == "http://h/aA.gif";
  parser.ParseCSS("p { background: url(c.gif) }");
  return isRight && last.value == "http://h/d/c.gif";
}

bool urls() {
  urlBase base("http://h/d/page.html");
  RWCString link("../a&amp;b");
  RWCString dirty(" a b ");
  stripUrl(dirty, true);
  int length = 0;
  return base.calcUrl(link) == "http://h/a&b" && dirty == "a%20b" &&
         getProtocol("mailto:x", length) == 5 && length == 7 && !isHttpProtocol("ftp:x");
}

bool encoding() {
  RWCString source("a b@c/\xE9");
  RWCString encoded;
  UrlEncoding::EncodeString(source, encoded, UrlEncoding::eBrowserSign);
  const bool isRight = encoded == "a+b%40c%2F%E9" &&
                       UrlEncoding::CheckUrlDecoding(encoded, UrlEncoding::eBrowserSign) &&
                       std::strcmp(UrlEncoding::cSiebelChars['/'], "%2f") == 0;
  UrlEncoding::DecodeString(encoded, UrlEncoding::eBrowserSign);
  return isRight && encoded == source && persentEscapeLength == 5;
}

bool flavours() {
  for (int type = UrlEncoding::eBrowser; type <= UrlEncoding::eSiebel; ++type) {
    const auto flavour = static_cast<UrlEncoding::EncodingType>(type);
    RWCString source("z\x01");
    RWCString encoded;
    UrlEncoding::EncodeString(source, encoded, flavour);
    if (!(encoded == "z%01")) return false;
    UrlEncoding::DecodeString(encoded, flavour);
    if (!(encoded == "z&#25;01")) return false;
  }
  RWCString printable;
  return UrlEncoding::EncodeStringUnreadables("\xE9\n", 2, printable) && printable == "%E9\n" &&
         UrlEncoding::CheckUrlDecoding("a=%25") == UrlEncoding::eBrowser;
}

bool characterSets() {
  RWCString references("&eacute;&amp;&#65;");
  CTQCharSet* const charSet = CTQCharSet::fsGetSingleton();
  if (charSet == nullptr) return false;
  charSet->convert(references);
  RWCString utf8("caf\xC3\xA9");
  const bool isTold = isUtf8(utf8.data(), static_cast<int>(utf8.length()));
  ConvertUtf8toAnsi(utf8);
  RWCString ansi = utf8;
  ConvertAnsitoUtf8(ansi);
  return references == "\xE9&A" && isTold && utf8 == "caf\xE9" && ansi == "caf\xC3\xA9";
}

bool ranking() {
  CDOMBaseLinkCmp link;
  link.level = 2;
  return link.rank() == 8 && link.propRank() == 0 &&
         CZKHTMLDietTransactionsObject::CalcCheckSum("A", 1) == 0x41;
}

struct Family {
  const char* name;
  bool (*isRight)();
};
constexpr Family kFamilies[] = {
    {"strings", strings},
    {"patterns", patterns},
    {"collections", collections},
    {"bounds errors", boundsErrors},
    {"slices", slices},
    {"scanning", scanning},
    {"positions", positions},
    {"blanking and removal", blankingAndRemoval},
    {"attributes", attributes},
    {"parsing", parsing},
    {"URLs", urls},
    {"encoding", encoding},
    {"flavours of encoding", flavours},
    {"character sets", characterSets},
    {"ranking", ranking},
};

}  // namespace

const char* firstWrongFamily() {
  for (const Family& family : kFamilies) {
    if (!family.isRight()) return family.name;
  }
  return nullptr;
}
