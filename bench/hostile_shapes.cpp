#include "hostile_shapes.h"

#include <cmath>

namespace pagescan::bench {
namespace {

// Documents in documents, as deep as they are read: what comes between the openings and the ends is
// in all of them.
constexpr int kDeepest = 32;

// A character reference that stands for `number` in the document at a depth.
std::string referenceAt(int depth, const char* number) {
  std::string result = "&";
  for (int i = 1; i < depth; ++i) result += "amp;";
  return result.append("#").append(number).append(";");
}

std::string_view deepSrcdoc() {
  static const std::string text = [] {
    std::string all = "<iframe srcdoc=";
    for (int depth = 1; depth < kDeepest; ++depth) {
      all += "<iframe" + referenceAt(depth, "32") + "srcdoc=";
    }
    return all;
  }();
  return text;
}

std::string_view deepestImage() {
  static const std::string text = "<img/src=a" + referenceAt(kDeepest, "62");
  return text;
}

std::string_view endsOfSrcdoc() {
  static const std::string text = [] {
    std::string all;
    for (int depth = kDeepest - 1; depth > 0; --depth) all += referenceAt(depth, "62");
    return all + ">";
  }();
  return text;
}

}  // namespace

const std::vector<Shape>& hostileShapes() {
  static const std::vector<Shape> shapes = {
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
      {"references", "", "<a href=a>"},
      {"references, nested spans", "", "<img src=a srcset='a,b' style='a:url(b)'>"},
      {"attributes, each another", "<img ", "a", {}, ">", "=b "},
      {"elements, each another", "", "<x-", {}, {}, ">"},
      {"end tags, each another", "<div>", "</x-", {}, {}, ">"},
      {"&notit;", "<img src='", "&notit;", {}, "'>"},
      {"&, a long name", "<img src='", "&CounterClockwiseContourIntegra", {}, "'>"},
      {"&#x, long", "<img src='&#x", "1", {}, "'>"},
      {"srcset", "<img srcset='", "a, ", {}, "'>"},
      {"srcset, candidates", "<img srcset='", "a 1x,", {}, "'>"},
      {"srcset, commas", "<img srcset='", ",", {}, "'>"},
      {"srcset, parentheses", "<img srcset='a ", "(", {}, "'>"},
      {"srcset, descriptors", "<img srcset='a ", "1x ", {}, "'>"},
      {"list of blanks", "<a href=x ping='", "a ", {}, "'>"},
      {"list of commas", "<applet archive='", "a,", {}, "'>"},
      {"refresh", "<meta http-equiv=refresh content='0;url=", "a", {}, "'>"},
      {"bases", "", "<base href=a>"},
      {"srcdoc", "", "<iframe srcdoc='&lt;img src=a&gt;'></iframe>"},
      {"srcdoc, one", "<iframe srcdoc='", "<img src=a>", {}, "'>"},
      {"srcdoc, nested", deepSrcdoc(), "a", {}, endsOfSrcdoc()},
      {"srcdoc, nested, references", deepSrcdoc(), deepestImage(), {}, endsOfSrcdoc()},
      {"srcdoc, nested, &amp;", deepSrcdoc(), "&amp;", {}, endsOfSrcdoc()},
      {"srcdoc, nested again", "",
       "<iframe srcdoc='<iframe srcdoc=&#34;<img src=a>&#34;></iframe>'></iframe>"},
      {"noscript", "<noscript>", "<img src=a>"},
      {"noscripts", "", "<noscript><img src=a></noscript>"},
      {"foreign", "", "<svg><image href=a />"},
      {"foreign, points of return", "", "<svg><foreignObject><math><mi>"},
      {"foreign, left", "", "<svg><g><p>"},
      {"foreign, stray ends", "", "</p></br></g>", "<svg><g><math>"},
      {"foreign, CDATA", "<svg>", "<![CDATA[x]]>"},
      {"style", "<style>", "a{b:url(c)}", {}, "</style>"},
      {"styles", "", "<style>a{b:url(c)}</style>", {}, "</style>"},
      {"style attribute", "<p style='", "a:url(b);", {}, "'>"},
      {"style attribute, &", "<p style='", "a:url(b&amp;c);", {}, "'>"},
      {"svg style", "<svg><style>", "a{b:url(c)}", {}, "</style>"},
      {"svg style, split", "<svg><style>", "a{b:url(c)}<!-- -->", {}, "</style>"},
      {"svg style, split in a URL", "<svg><style>a{b:url(", "c<g/>", {}, "</style>"},
      {"svg style, &", "<svg><style>", "a{b:url(c&amp;d)}", {}, "</style>"},
      {"svg styles", "", "<svg><style>a{b:url(c)}</style>", {}, "</style>"},
      {"style, {", "<style>", "{", {}, "</style>"},
      {"style, (", "<style>a{b:", "(", {}, "</style>"},
      {"style, escapes", "<style>a{b:url(", "\\61 ", {}, "</style>"},
      {"style, two bytes", "<meta charset=Shift_JIS><style>", "a{b:url(\x83\x5C)}", {}, "</style>"},
      {"JSON",
       "<script type=speculationrules>{\"prefetch\":[{\"urls\":[",
       "\"a\",",
       {},
       "\"a\"]}]}</script>"},
      {"JSON, [", "<script type=speculationrules>", "[", {}, "</script>"},
      {"JSON, {", "<script type=importmap>", "{\"imports\":", {}, "</script>"},
      {"JSON, \\", "<script type=importmap>{\"imports\":{\"a\":\"", "\\u0061", {}, "\"}}</script>"},
      {"JSON-LD",
       "<script type=application/ld+json>[",
       "{\"@type\":\"Thing\",\"image\":\"http://a/\"},",
       {},
       "{}]</script>"},
      {"framesets", "", "<frameset><frame src=a>"},
      {"selects", "", "<select><option><optgroup>"},
      {"ISO-2022-JP", "<img src='", "\x1B$B$\"\x1B(B", {}, "'>"},
      {"port", "http://a:", "0"},
      {"IPv6", "http://[", "1:"},
      {"IPv4", "http://", "0x1."},
      {"Punycode", "http://xn--", "a9"},
      {"drive letters", "file:///", "C:/../"},
      {"segments", "http://a/", "b/%2e%2E/"},
      {"segments, deep", "http://a/", "../", "b/"},
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
  return shapes;
}

std::string textOf(const Shape& shape, std::size_t length) {
  std::string text;
  if (!shape.rootOf.empty()) {
    const auto root = static_cast<std::size_t>(std::sqrt(static_cast<double>(length)));
    for (std::size_t i = 0; i < root; ++i) text += shape.rootOf;
  }
  text += shape.opening;
  for (std::size_t number = 0; text.size() < length; ++number) {
    text += shape.piece;
    if (!shape.rest.empty()) text.append(std::to_string(number)).append(shape.rest);
  }
  const std::size_t room = length - shape.closing.size();
  // A JSON text that is cut within a string is none.
  const bool isWhole = !shape.closing.empty() && shape.rest.empty();
  const std::size_t begin = text.size() % shape.piece.size();
  text.resize(isWhole ? room - (room - begin) % shape.piece.size() : room);
  return text.append(shape.closing);
}

}  // namespace pagescan::bench
