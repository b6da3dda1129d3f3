// How the time of every operation grows with its text, on shapes that strangers might send.
#include <malloc.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "page/element_reader.h"
#include "pagescan.h"
#include "pagescan/url.h"
#include "sections.h"
#include "table.h"
#include "yardsticks.h"

namespace pagescan::bench {
namespace {

constexpr std::size_t kKiB = 1024;
constexpr std::array<std::size_t, 5> kSizes = {16 * kKiB, 64 * kKiB, 256 * kKiB, 1024 * kKiB,
                                               4096 * kKiB};
constexpr double kSteepest = 1.1;

// A text of any length: the opening, then the piece over and over. Some begin with many of another
// piece, as many as the root of the length: what costs a square only where few openings meet one
// long tail is steep there, too.
struct Shape {
  const char* name;
  std::string_view opening;
  std::string_view piece;
  std::string_view rootOf = {};
};

constexpr Shape kShapes[] = {
    {"open tags", "", "<img src=x "},
    {"names alone", "", "<td "},
    {"open quotes", "", "<img src=\"x "},
    {"open quotes, single", "", "<link href='x "},
    {"many tags", "", "<img src=a.gif>"},
    {"<", "", "<"},
    {"open comments", "", "<!--"},
    {"comments within", "<!--", "<!-- ->"},
    {"ends of comments", "x", "<!---->"},
    {"scripts", "", "<script>x</script>"},
    {"open scripts", "", "<script>"},
    {"huge value", "<img src=\"", "a"},
    {"blanks", "<img ", " "},
    {"lines", "<img\n", "\r\n"},
    {"attributes", "<img ", "a1=b c "},
    {"equal signs", "<img ", "= "},
    {"handlers", "", "onload"},
    {"handlers, blanks", "", "onload   "},
    {"handlers, quotes", "", "onload='"},
    {"../", "", "../"},
    {"/", "http:", "/"},
    {"\\", "", "a\\..\\"},
    {"http:", "", "http://"},
    {"letters", "", "a"},
    {"&", "", "&"},
    {"&amp;", "", "&amp;"},
    {"&#", "", "&#12"},
    {"%", "", "%"},
    {"%41", "", "%41"},
    {"&#25;", "", "&#25;"},
    {"a=b&", "", "a=%20+b&"},
    {"url(", "a{", "url("},
    {"url(a)", "a{b:", "url(a) "},
    {"url(\"", "a{b:", "url(\"a "},
    {"/*", "", "/*"},
    {"@import", "", "@import "},
    {"colons", "a{", "a:b;"},
    {"lead bytes", "", "\xC3"},
    {"UTF-8", "", "\xC3\xA9"},
    {"@", "http://", "@"},
    {"labels", "http://", "a."},
    {"IDN", "http://", "\xC3\x9F."},
    {"IDN, marks", "http://a", "\xCC\x81\xCC\xA7"},
    {"deep", "", "<div><p>"},
    {"deep, stray ends", "", "</p></li></b></x></table></g>", "<div><svg><g>"},
    {"deep, items", "", "<li><dd>", "<div><span>"},
    {"deep, scopes", "", "</p><button><h1></h2></form>", "<p><button><span>"},
    {"formatting", "", "<b><i><p></b></i>"},
    {"formatting, blocks", "<b><u>", "<x><div></b>"},
    {"formatting, reopened", "", "<p>x</b>", "<font size=1><font size=2><font size=3>"},
    {"formatting, links", "", "<a href=x><div>"},
    {"formatting, markers", "", "<object><b></object>"},
    {"tables", "", "<table><tr><td>x"},
    {"tables, text", "<table>", "x<b>&#32;"},
    {"templates", "", "<template><div>"},
    {"forms", "", "<form><div></form>"},
    {"own names", "", "</x-a>", "<x-b><x-c>"},
    {"tags, a name", "", "n", "<img a=\">\" "},
    {"tags, a name and blanks", "n", " ", "<td a=\">\" "},
    {"tags, white space", "", " ", "<img a=\">\" "},
    {"tags, slashes", "n ", "/", "<img a=\">\" "},
    {"tags, a value", "src='", "v", "<img a=\">\" "},
    {"tags, a bare value", "src=", "v", "<img a=\">\" "},
    {"tags, attributes", "", "src=v ", "<img a=\">\" "},
    {"tags, open", "", "n", "<img src="},
    {"scripts, letters", "", "n", "<script>"},
    {"comments, letters", "", "n", "<!--"},
    {"ends of comments, letters", "", "n", "<!--x-->"},
    {"handlers, letters", "", "n", "onload='"},
    {"handlers, white space", "", " ", "onload "},
    {"urls, letters", "", "n", "a{b:url("},
    {"quotes, letters", "", "n", "\"a"},
    {"imports, letters", "", "n", "@import "},
    {"&, letters", "", "n", "&"},
    {"&#, digits", "", "1", "&#"},
    {"../, letters", "", "n", "../"},
    {"/, letters", "", "n", "a/"},
    {"%, letters", "", "n", "%"},
    {"&#25, letters", "", "n", "&#25"},
};

std::string textOf(const Shape& shape, std::size_t length) {
  std::string text;
  if (!shape.rootOf.empty()) {
    const auto root = static_cast<std::size_t>(std::sqrt(static_cast<double>(length)));
    for (std::size_t i = 0; i < root; ++i) text += shape.rootOf;
  }
  text += shape.opening;
  while (text.size() < length) text += shape.piece;
  text.resize(length);
  return text;
}

constexpr char kUrl[] = "http://www.example.com/a/b/c.html";
constexpr auto kType = UrlEncoding::eEscapeURIComponent;

// An operation's result, which is kept while the other texts of a size have their turn.
using Kept = std::shared_ptr<void>;
using Operation = Kept (*)(const RWCString& text);

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

// What the caches make of the conversions' way: into a block three times as large, and back.
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

struct NamedOperation {
  const char* name;
  Operation run;
  bool blanksScripts = false;  // and does not return on a text whose script tag does not end
};

const NamedOperation kPlainCopying = {"memcpy there and back", copyThereAndBack};

#define EDITED(edit) [](const RWCString& text) { return edited(text, edit); }
#define EDITED_BY(statement) EDITED([](RWCString& copy) { statement; })
#define READ(expression) [](const RWCString& text) { return read(expression); }
const NamedOperation kOperations[] = {
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
    {"elements of a page", readElements},
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
#undef EDITED
#undef EDITED_BY
#undef READ

// What is freed stays with the process: what the system takes to hand out large blocks afresh is
// not the library's.
void keepFreedMemory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
}

// A shape in every size. There are as many texts of a size as make up the largest one, and the
// results of all are kept until the last one has had its turn, so that caches serve all sizes
// alike.
struct Samples {
  explicit Samples(const Shape& shape) {
    for (std::size_t i = 0; i < kSizes.size(); ++i) {
      const std::string text = textOf(shape, kSizes[i]);
      for (std::size_t n = kSizes.back() / kSizes[i]; n > 0; --n) {
        texts[i].emplace_back(text.data(), text.size());
      }
    }
    isEndless = tqFindEndlessScript(texts.back().front()) != RWCString::npos;
  }

  std::array<Texts, kSizes.size()> texts;
  bool isEndless;
};

using Seconds = std::array<double, kSizes.size()>;

double slopeOf(const Seconds& seconds) {
  double sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    const double x = std::log(static_cast<double>(kSizes[i]));
    const double y = std::log(seconds[i]);
    sumX += x;
    sumY += y;
    sumXX += x * x;
    sumXY += x * y;
  }
  const auto count = static_cast<double>(kSizes.size());
  return (count * sumXY - sumX * sumY) / (count * sumXX - sumX * sumX);
}

Pass passOver(const Texts& texts, Operation run) {
  return [&texts, run] {
    std::vector<Kept> results;
    results.reserve(texts.size());
    for (const RWCString& text : texts) results.push_back(run(text));
    return results.size();
  };
}

// The best of a few rounds counts: what disturbs only ever adds time.
void takeBest(const NamedOperation& operation, const Samples& samples, int rounds, Seconds& best) {
  Job job(operation.name, operation.name, workOver(samples.texts.back(), "text"));
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    job.contender(std::to_string(i), passOver(samples.texts[i], operation.run));
  }
  const Timings timings = measure(job, {.count = rounds, .secondsEach = 0.0005});
  for (std::size_t i = 0; i < kSizes.size(); ++i) {
    const std::vector<double>& times = timings.at(std::to_string(i));
    const double seconds = *std::min_element(times.begin(), times.end());
    best[i] = std::min(best[i], seconds / static_cast<double>(samples.texts[i].size()));
  }
}

// A slope that looks too steep is measured more thoroughly.
Seconds secondsOf(const NamedOperation& operation, const Samples& samples) {
  Seconds seconds;
  seconds.fill(std::numeric_limits<double>::max());
  takeBest(operation, samples, 5, seconds);
  if (slopeOf(seconds) > kSteepest) takeBest(operation, samples, 25, seconds);
  return seconds;
}

// What caches take from long texts they take from copying, too: in its units they play no part.
Growth growthOf(const Shape& shape, const Seconds& seconds, const Seconds& copying) {
  Seconds units = seconds;
  for (std::size_t i = 0; i < units.size(); ++i) units[i] /= copying[i];
  return {.shape = shape.name,
          .slope = slopeOf(seconds),
          .besideCopying = 1 + slopeOf(units),
          .speed = static_cast<double>(kSizes.back()) / seconds.back()};
}

const Growth& steepestBesideCopying(const OperationGrowth& operation) {
  return *std::max_element(
      operation.growths.begin(), operation.growths.end(),
      [](const Growth& a, const Growth& b) { return a.besideCopying < b.besideCopying; });
}

const Growth& steepest(const OperationGrowth& operation) {
  return *std::max_element(operation.growths.begin(), operation.growths.end(),
                           [](const Growth& a, const Growth& b) { return a.slope < b.slope; });
}

const Growth& slowest(const OperationGrowth& operation) {
  return *std::min_element(operation.growths.begin(), operation.growths.end(),
                           [](const Growth& a, const Growth& b) { return a.speed < b.speed; });
}

std::string flagged(double slope) {
  return shortNumber(slope) + (slope > kSteepest ? " **above 1.1**" : "");
}

std::string speedOn(const Growth& growth) {
  constexpr double kBeyondMemory = 1e12;
  return growth.speed > kBeyondMemory ? "at once" : shortNumber(growth.speed / 1e6);
}

// Empty for a shape that the operation was not run on.
std::string slopeOn(const Shape& shape, const OperationGrowth& operation) {
  const auto growth = std::find_if(operation.growths.begin(), operation.growths.end(),
                                   [&](const Growth& each) { return each.shape == shape.name; });
  return growth == operation.growths.end() ? "" : shortNumber(growth->slope);
}

}  // namespace

std::vector<OperationGrowth> measureGrowth() {
  keepFreedMemory();
  std::vector<OperationGrowth> result = {{kPlainCopying.name, {}}};
  for (const NamedOperation& operation : kOperations) result.push_back({operation.name, {}});
  for (const Shape& shape : kShapes) {
    const Samples samples(shape);
    const Seconds copying = secondsOf(kPlainCopying, samples);
    result.front().growths.push_back(growthOf(shape, copying, copying));
    for (std::size_t i = 0; i < std::size(kOperations); ++i) {
      if (kOperations[i].blanksScripts && samples.isEndless) continue;
      const Seconds seconds = secondsOf(kOperations[i], samples);
      result[i + 1].growths.push_back(growthOf(shape, seconds, copying));
    }
  }
  return result;
}

void writeGrowth(std::ostream& out, const std::vector<OperationGrowth>& operations) {
  out << "### Growth\n\n";
  Table table({"operation", "steepest slope", "on", "beside copying", "on", "slowest, MB/s", "on"});
  for (const OperationGrowth& operation : operations) {
    const Growth& steep = steepest(operation);
    const Growth& beside = steepestBesideCopying(operation);
    const Growth& slow = slowest(operation);
    table.addRow({code(operation.operation), flagged(steep.slope), code(steep.shape),
                  flagged(beside.besideCopying), code(beside.shape), speedOn(slow),
                  code(slow.shape)});
  }
  out << table;
}

void writeSlopes(std::ostream& out, const std::vector<OperationGrowth>& operations) {
  out << "### Slopes\n\n";
  std::vector<std::string> header = {""};
  for (const Shape& shape : kShapes) header.push_back(code(shape.name));
  Table table(std::move(header));
  for (const OperationGrowth& operation : operations) {
    std::vector<std::string> cells = {code(operation.operation)};
    for (const Shape& shape : kShapes) cells.push_back(slopeOn(shape, operation));
    table.addRow(std::move(cells));
  }
  out << table;
}

}  // namespace pagescan::bench
