#include "growth_operations.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "page/element_reader.h"
#include "pagescan/edits.h"
#include "pagescan/page.h"
#include "pagescan/style_sheet.h"
#include "pagescan/url.h"

namespace pagescan::bench {
namespace {

constexpr char kUrl[] = "http://www.example.com/a/b/c.html";
constexpr auto kType = UrlEncoding::eEscapeURIComponent;

Kept parseHtml(const RWCString& text) {
  const auto parser = std::make_shared<CHTMLOffsetParser>(kUrl);
  parser->ParseHTML(text.data(), text.length());
  return parser;
}

Kept parseCss(const RWCString& text) {
  const auto parser = std::make_shared<CHTMLOffsetParser>(kUrl);
  try {
    parser->ParseCSS(text);
  } catch (const RWBoundsErr&) {
    // That is its answer to some of the shapes.
  }
  return parser;
}

Kept findAttributes(const RWCString& text) {
  RWCString copy(text);
  CHTMLAttributeFinder finder;
  RWHashDictionary values;
  RWHashDictionary offsets;
  unsigned long at = 0;
  finder.FindAttributes(copy, at, values, offsets);
  values.clearAndDestroy();
  offsets.clearAndDestroy();
  return nullptr;
}

Kept findEachAttribute(const RWCString& text) {
  RWCString copy(text);
  unsigned long at = 0;
  unsigned long valueStart = 0;
  for (;;) {
    RWCString name;
    RWCString value;
    const unsigned long before = at;
    htmlFindNextAttribute_(copy, name, value, at, valueStart);
    if (name.length() == 0 || at == before) return nullptr;
  }
}

Kept getStringValue(const RWCString& text) {
  RWCString copy(text);
  const auto value = std::make_shared<RWCString>();
  unsigned long valueStart = 0;
  unsigned long furthest = 0;
  htmlGetStringValue(copy, *value, 0, valueStart, furthest, copy.length());
  return value;
}

// Edits a copy.
template <typename Edit>
Kept edited(const RWCString& text, Edit edit) {
  const auto copy = std::make_shared<RWCString>(text);
  edit(*copy);
  return copy;
}

// Only reads.
template <typename Value>
Kept read(Value value) {
  benchmark::DoNotOptimize(value);
  return nullptr;
}

template <auto skip>
Kept skipped(const RWCString& text) {
  RWCString copy(text);
  unsigned long at = 0;
  skip(copy, copy.length(), at);
  return read(at);
}

Kept resolved(const RWCString& text) {
  const auto result = std::make_shared<RWCString>();
  urlBase(kUrl).calcUrl(text, *result, false, true);
  return result;
}

struct NoHandler {
  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const internal::StartTag& tag) {
    benchmark::DoNotOptimize(tag.begin);
    return 0;
  }
  void rawText(const internal::StartTag&, Span) {}
  void svgStyleText(std::uint32_t, Span, bool) {}
  void svgStyleEnds(std::uint32_t) {}
  void bodyLeaves(std::uint32_t) {}
};

Kept readElements(const RWCString& text) {
  NoHandler handler;
  internal::ElementReader<NoHandler> reader({text.data(), text.length()}, {}, handler);
  reader.read();
  return nullptr;
}

Kept resolvedUrl(const RWCString& text) {
  return std::make_shared<std::optional<std::string>>(
      resolve(std::string_view(text.data(), text.length()), kUrl));
}

// The text as the base, or as the path of one.
Kept resolvedAgainstUrl(const RWCString& text) {
  const std::string bytes(text.data(), text.length());
  const bool isUrl = bytes.starts_with("http:") || bytes.starts_with("file:");
  return std::make_shared<std::optional<std::string>>(
      resolve("../x?y#z", isUrl ? bytes : "http://www.example.com/" + bytes));
}

PageOptions everything() {
  PageOptions options;
  options.url = kUrl;
  options.scripting = false;
  options.profiles = kLazyProfile | kMetaProfile | kDataProfile;
  return options;
}

template <typename Reader, typename Options>
std::shared_ptr<Reader> kept(const RWCString& text, const Options& options) {
  return std::make_shared<Reader>(std::string_view(text.data(), text.length()), options);
}

template <typename Reader>
Kept withEachUrl(std::shared_ptr<Reader> reader) {
  std::string url;
  for (const Reference& reference : reader->references()) {
    benchmark::DoNotOptimize(reader->urlInto(reference, url));
  }
  return reader;
}

Kept eachUrl(const RWCString& text, std::string_view charset) {
  PageOptions options = everything();
  options.charset = charset;
  return withEachUrl(kept<Page>(text, options));
}

Kept eachUrlOfSheet(const RWCString& text) {
  StyleSheetOptions options;
  options.url = kUrl;
  return withEachUrl(kept<StyleSheet>(text, options));
}

Kept eachValue(const RWCString& text) {
  const auto page = kept<Page>(text, everything());
  for (const Reference& reference : page->references()) {
    benchmark::DoNotOptimize(page->value(reference).size());
  }
  return page;
}

Kept editEachValue(const RWCString& text) {
  const auto page = kept<Page>(text, everything());
  std::vector<Edit> edits;
  for (std::size_t i = 0; i < page->references().size(); ++i) {
    edits.push_back({i, "http://e.test/?a&b", {}});
  }
  return std::make_shared<EditResult>(applyEdits(*page, edits));
}

// Half of the text, each byte a code unit.
Kept utf16Page(const RWCString& text) {
  std::string wide(text.length() / 2 * 2, '\0');
  for (std::size_t i = 0; i < text.length() / 2; ++i) wide[2 * i] = text.data()[i];
  PageOptions options = everything();
  options.charset = "utf-16le";
  const Page page(wide, options);
  std::string url;
  for (const Reference& reference : page.references()) {
    benchmark::DoNotOptimize(page.urlInto(reference, url));
  }
  return nullptr;
}

Kept lineIndex(const RWCString& text) {
  const auto page = kept<Page>(text, PageOptions());
  return std::make_shared<LineIndex>(*page);
}

// The text as the base, whose host then nearly occurs wherever the text repeats itself.
Kept resolvedAgainst(const RWCString& text) {
  const auto result = std::make_shared<RWCString>();
  urlBase(text + "//" + text + "b/http://x/").calcUrl("#../x", *result, false, true);
  return result;
}

// The second half of the text is looked for in all of it, and in the text without its last byte.
template <RWCString::caseCompare kCase>
Kept findHalf(const RWCString& text) {
  const std::size_t half = text.length() / 2;
  const RWCString pattern(text.data() + half, text.length() - half);
  const RWCString shorter(text.data(), text.length() - 1);
  return read(text.index(pattern, 0, kCase) + shorter.index(pattern + "x", 0, kCase));
}

Kept blankHalves(const RWCString& text) {
  const std::size_t half = text.length() / 2;
  const RWCString close(text.data() + half, text.length() - half);
  const auto copy = std::make_shared<RWCString>(text);
  tqOverwriteTagWithBlanks(*copy, close + "x", close);
  return copy;
}

Kept split(const RWCString& text) {
  const auto base = std::make_shared<urlBase>("http://www.example.com/" + text);
  base->parse();
  return base;
}

Kept encode(const RWCString& text) {
  const auto result = std::make_shared<RWCString>();
  RWCString source(text);
  UrlEncoding::EncodeString(source, *result, kType);
  return result;
}

Kept encodeUnreadables(const RWCString& text) {
  const auto result = std::make_shared<RWCString>();
  UrlEncoding::EncodeStringUnreadables(text.data(), text.length(), *result);
  return result;
}

Kept findScheme(const RWCString& text) {
  int length = 0;
  return read(getProtocol(text, length));
}

Kept findPattern(const RWCString& text) {
  static const RWCRegexp pattern("&#?[a-zA-Z0-9]+x;");
  return read(text.index(pattern));
}

Kept copyThereAndBack(const RWCString& text) {
  const auto room = std::make_unique_for_overwrite<char[]>(3 * text.length() + 1);
  std::memcpy(room.get(), text.data(), text.length());
  return std::make_shared<RWCString>(room.get(), text.length());
}

Kept compare(const RWCString& text) {
  const RWCString other(text.data(), text.length());
  return read(text.compareTo(other, RWCString::ignoreCase));
}

int lengthOf(const RWCString& text) {
  return static_cast<int>(text.length());
}

}  // namespace

const NamedOperation kPlainCopying = {"memcpy there and back", copyThereAndBack};

#define EDITED(edit) [](const RWCString& text) { return edited(text, edit); }
#define EDITED_BY(statement) EDITED([](RWCString& copy) { statement; })
#define READ(expression) [](const RWCString& text) { return read(expression); }
std::span<const NamedOperation> growthOperations() {
  static const NamedOperation operations[] = {
      {"ParseHTML", parseHtml, true},
      {"ParseCSS", parseCss},
      {"FindAttributes", findAttributes},
      {"htmlFindNextAttribute_, each", findEachAttribute},
      {"htmlSkipWhiteSpaces", skipped<htmlSkipWhiteSpaces>},
      {"htmlSkipNonWhiteSpaces", skipped<htmlSkipNonWhiteSpaces>},
      {"htmlGetStringValue", getStringValue},
      {"tqOverwriteTagWithBlanks", EDITED_BY(tqOverwriteTagWithBlanks(copy, "<!--", "-->"))},
      {"tqOverwriteTagWithBlanks, long", blankHalves},
      {"tqOverwriteScriptWithBlanks", EDITED(tqOverwriteScriptWithBlanks), true},
      {"tqFindEndlessScript", READ(tqFindEndlessScript(text))},
      {"tqRemoveFirstSingleTag", EDITED_BY(tqRemoveFirstSingleTag(copy, "<base"))},
      {"tqSkipTagBody", EDITED_BY(tqSkipTagBody("script", copy))},
      {"tqSkipOnloadAttribute", EDITED(tqSkipOnloadAttribute)},
      {"stripUrl", EDITED_BY(stripUrl(copy, true))},
      {"getProtocol", findScheme},
      {"isHttpProtocol", READ(isHttpProtocol(text))},
      {"setBase, parse", split},
      {"calcUrl(in, out, ...)", resolved},
      {"calcUrl(in, out, ...), base", resolvedAgainst},
      {"calcUrl(url)", EDITED_BY(copy = urlBase(kUrl).calcUrl(copy))},
      {"pagescan::resolve", resolvedUrl},
      {"pagescan::resolve, base", resolvedAgainstUrl},
      {"elements of a page", readElements},
      {"Page", [](const RWCString& text) -> Kept { return kept<Page>(text, PageOptions()); }},
      {"Page, every profile",
       [](const RWCString& text) -> Kept { return kept<Page>(text, everything()); }},
      {"Page, each URL", [](const RWCString& text) { return eachUrl(text, {}); }},
      {"Page, each URL, windows-1252",
       [](const RWCString& text) { return eachUrl(text, "windows-1252"); }},
      {"Page, each URL, ISO-2022-JP",
       [](const RWCString& text) { return eachUrl(text, "ISO-2022-JP"); }},
      {"Page, each value", eachValue},
      {"applyEdits, each reference", editEachValue},
      {"Page, UTF-16", utf16Page},
      {"LineIndex", lineIndex},
      {"StyleSheet",
       [](const RWCString& text) -> Kept { return kept<StyleSheet>(text, StyleSheetOptions()); }},
      {"StyleSheet, each URL", eachUrlOfSheet},
      {"EncodeString", encode},
      {"DecodeString", EDITED_BY(UrlEncoding::DecodeString(copy, kType))},
      {"CheckUrlDecoding(text)", READ(UrlEncoding::CheckUrlDecoding(text))},
      {"EncodeStringUnreadables", encodeUnreadables},
      {"isUtf8", READ(isUtf8(text.data(), lengthOf(text)))},
      {"ConvertUtf8toAnsi", EDITED(ConvertUtf8toAnsi)},
      {"ConvertAnsitoUtf8", EDITED(ConvertAnsitoUtf8)},
      {"CTQCharSet::convert", EDITED_BY(CTQCharSet::fsGetSingleton()->convert(copy))},
      {"CalcCheckSum",
       READ(CZKHTMLDietTransactionsObject::CalcCheckSum(text.data(), lengthOf(text)))},
      {"RWCString::index", READ(text.index("ab<!--%&x"))},
      {"RWCString::index, any case", READ(text.index("onloaD=\"x", 0, RWCString::ignoreCase))},
      {"RWCString::index, long", findHalf<RWCString::exact>},
      {"RWCString::index, long, any case", findHalf<RWCString::ignoreCase>},
      {"RWCString::index of a pattern", findPattern},
      {"RWCString::toLower", EDITED_BY(copy.toLower())},
      {"RWCString::hash", READ(text.hash())},
      {"RWCString::compareTo, any case", compare},
  };
  return operations;
}
#undef EDITED
#undef EDITED_BY
#undef READ

void keepFreedMemory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

}  // namespace pagescan::bench
