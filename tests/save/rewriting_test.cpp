// The copies that `pagescan save` writes: what changes in a page, and what stays.
#include "save/rewriting.h"

#include <gtest/gtest.h>

#include "save/encoding_told.h"
#include "save/start_tag.h"

namespace pagescan::tests {
namespace {

using namespace pagescan::tool;

// Everything at h.test is saved, the page itself among it.
std::optional<std::string> copyOf(const std::string& url, Kind /*kind*/) {
  const std::string site = "http://h.test/";
  if (url.compare(0, site.size(), site) != 0) return std::nullopt;
  return "files/" + url.substr(url.rfind('/') + 1);
}

std::string copyOfPage(std::string_view page) {
  return rewritePage({page, "http://h.test/a/page.html", "", ""}, copyOf).bytes;
}

struct Case {
  const char *page, *copy;
};

TEST(RewritePage, NamesCopiesAndLeavesAllElse) {
  const Case kCases[] = {
      {"<img src=b.png>", "<img src=files/b.png>"},
      {"<img  src = 'b.png' alt=x>", "<img  src = 'files/b.png' alt=x>"},
      {"<use href=x><svg><use href='s.svg#i'/></svg>",
       "<use href=x><svg><use href='files/s.svg#i'/></svg>"},
      {"<img srcset='b.png 2x, http://o.test/c 3x'>",
       "<img srcset='files/b.png 2x, http://o.test/c 3x'>"},
      {"<p style=\"background:url('b.png')\">", "<p style=\"background:url('files/b.png')\">"},
      {"<img src=//o.test/x>", "<img src=http://o.test/x>"},
      {"<img src=http://o.test/x>", "<img src=http://o.test/x>"},
      {"<img src=data:,x><a href=javascript:x()>", "<img src=data:,x><a href=javascript:x()>"},
      {"<a href=#x>", "<a href=#x>"},
      {"<a href=page.html#x>", "<a href=#x>"},
      {"<a href='//o.test/?a&amp;b'>", "<a href='http://o.test/?a&amp;b'>"},
      {"<form action=/send>", "<form action=http://h.test/send>"},
      {"<form action=''>", "<form action=''>"},
      {"<link rel=canonical href=/x>", "<link rel=canonical href=http://h.test/x>"},
      {"<blockquote cite=x>", "<blockquote cite=http://h.test/a/x>"},
      {"<div itemscope itemtype=/x>", "<div itemscope itemtype=/x>"},
      {"<iframe srcdoc='<img src=&quot;b.png&quot;>'>",
       "<iframe srcdoc='<img src=&quot;files/b.png&quot;>'>"},
  };
  for (const Case& c : kCases) EXPECT_EQ(copyOfPage(c.page), c.copy) << c.page;
}

TEST(RewritePage, TakesOffWhatWouldBlockCopies) {
  const Case kCases[] = {
      {"<script src=a.js integrity=sha256-x crossorigin></script>",
       "<script src=files/a.js></script>"},
      {"<script crossorigin = \"anonymous\" integrity='a b'src=a.js>", "<script src=files/a.js>"},
      {"<script INTEGRITY=x src=a.js>", "<script src=files/a.js>"},
      {"<script integrity=x src=http://o.test/a.js>",
       "<script integrity=x src=http://o.test/a.js>"},
      {"<meta http-equiv=Content-Security-Policy content=\"img-src 'none'\">",
       "<meta content=\"img-src 'none'\">"},
      {"<meta http-equiv=refresh content=5>", "<meta http-equiv=refresh content=5>"},
      {"<base href=/x/ target=_top><base href=y><img src=b.png>",
       "<base target=_top><base><img src=files/b.png>"},
  };
  for (const Case& c : kCases) EXPECT_EQ(copyOfPage(c.page), c.copy) << c.page;
  const CopyText told =
      rewritePage({"<script src=a integrity=b></script><script src=c integrity=d></script>"
                   "<meta http-equiv=content-security-policy content=x>",
                   "http://h.test/", "", ""},
                  copyOf);
  EXPECT_EQ(told.told,
            (std::vector<std::string>{"taken off: integrity, 2 times",
                                      "taken off: http-equiv (a policy or an encoding)"}));
}

TEST(RewritePage, TellsTheEncodingThatTheServerTold) {
  const auto copy = [](std::string_view page, const char* charset) {
    return rewritePage({page, "http://h.test/", charset, ""}, copyOf).bytes;
  };
  EXPECT_EQ(copy("<p>\xC3\xBC", "utf-8"), "\xEF\xBB\xBF<p>\xC3\xBC");
  EXPECT_EQ(copy("<meta charset=utf-8><p>\xC3\xBC", "utf-8"), "<meta charset=utf-8><p>\xC3\xBC");
  EXPECT_EQ(copy("<meta charset=koi8-r><p>\xC3\xBC", "utf-8"), "\xEF\xBB\xBF<meta><p>\xC3\xBC");
  EXPECT_EQ(copy("<p>\xD0", "koi8-r"), "<?xml version=\"1.0\" encoding=\"KOI8-R\"?><p>\xD0");
  EXPECT_EQ(copy("<meta http-equiv=content-type content='text/html;charset=utf-8'>\xD0", "koi8-r"),
            "<?xml version=\"1.0\" encoding=\"KOI8-R\"?>"
            "<meta content='text/html;charset=utf-8'>\xD0");
  EXPECT_EQ(copy("<p>\xE9", "windows-1252"), "<p>\xE9");
}

TEST(RewritePage, Utf16IsReadAndWritten) {
  const auto wide = [](std::string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) bytes.append(1, c).append(1, '\0');
    return bytes;
  };
  EXPECT_EQ(copyOfPage(wide("<script crossorigin src='a.js' integrity=x></script>")),
            wide("<script src='files/a.js'></script>"));
}

TEST(RewriteSheet, NamesCopiesAndTellsTheEncoding) {
  const auto copy = [](std::string_view sheet, const char* charset) {
    return rewriteSheet({sheet, "http://h.test/s.css", charset, ""}, copyOf).bytes;
  };
  EXPECT_EQ(copy("@import 'a.css';p{background:url( b.png )}", ""),
            "@import 'files/a.css';p{background:url( files/b.png )}");
  EXPECT_EQ(copy("p{background:url(//o.test/x)}", "utf-8"), "p{background:url(http://o.test/x)}");
  EXPECT_EQ(copy("p::after{content:'\xC3\xBC'}", "utf-8"),
            "\xEF\xBB\xBFp::after{content:'\xC3\xBC'}");
  EXPECT_EQ(copy("p::after{content:'\xD0'}", "koi8-r"),
            "@charset \"KOI8-R\";p::after{content:'\xD0'}");
}

TEST(CharsetOfSheet, IsThatOfTheServerTheSheetOrTheTextAround) {
  EXPECT_EQ(charsetOfSheet("p{}", "koi8-r", "UTF-8"), "koi8-r");
  EXPECT_EQ(charsetOfSheet("@charset \"x\";", "", "UTF-8"), "");
  EXPECT_EQ(charsetOfSheet("p{}", "", "Shift_JIS"), "Shift_JIS");
}

TEST(AttributesAt, AreThoseOfTheTokenizer) {
  const struct {
    const char* tag;
    std::vector<std::string> names;
  } kCases[] = {
      {"<p>", {}},
      {"<p a b=1 C='>' d=\">\"e/f = g>x", {"a", "b", "c", "d", "e", "f"}},
      {"<p =a=b>", {"=a"}},
      {"<p/a/b/>", {"a", "b"}},
      {"<p a=/b/ c>", {"a", "c"}},
      {"<p a='b", {"a"}},
      {"<p a=", {"a"}},
      {"<p", {}},
  };
  for (const auto& [tag, names] : kCases) {
    std::vector<std::string> found;
    for (const TagAttribute& attribute : attributesAt(tag, 0, "UTF-8")) {
      found.push_back(attribute.name);
      EXPECT_LE(attribute.span.end, std::string_view(tag).size());
    }
    EXPECT_EQ(found, names) << tag;
  }
}

}  // namespace
}  // namespace pagescan::tests
