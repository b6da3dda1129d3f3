// Every allocation of every operation fails once. Nothing but std::bad_alloc comes out, nothing
// leaks, and each string that the host passed holds either what it held or what the call makes of
// it.

#include "support/allocation_failure.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "pagescan.h"
#include "support/allocation_count.h"
#include "support/placement.h"
#include "support/texts.h"

void pagescanLogError(const char*) {}

namespace pagescan::tests {
namespace {

using Strings = std::vector<RWCString>;

// One call of a host, with the strings that it is given.
struct Call {
  Here here;
  std::vector<std::string> texts;
  void (*run)(Strings& strings);
};

std::vector<std::string> bytesOfAll(const Strings& strings) {
  std::vector<std::string> result;
  for (const RWCString& string : strings) result.emplace_back(bytesOf(string));
  return result;
}

Strings stringsOf(const std::vector<std::string>& texts) {
  Strings strings;
  for (const std::string& text : texts) strings.push_back(stringOf(text));
  return strings;
}

std::vector<std::string> contentsAfter(const Call& call) {
  Strings strings = stringsOf(call.texts);
  call.run(strings);
  return bytesOfAll(strings);
}

void expectOldOrNew(const Strings& strings, const std::vector<std::string>& before,
                    const std::vector<std::string>& after) {
  for (std::size_t i = 0; i < strings.size(); ++i) {
    const std::string_view now = bytesOf(strings[i]);
    EXPECT_TRUE(now == before[i] || now == after[i])
        << "string " << i << " is neither old nor new: " << testing::PrintToString(now);
    EXPECT_EQ(strings[i].data()[now.size()], '\0');
  }
}

void expectUsable(Strings& strings) {
  for (RWCString& string : strings) {
    const std::string wanted = std::string(bytesOf(string)) + " and more bytes than fit locally";
    string.append(" and more bytes than fit locally");
    EXPECT_EQ(bytesOf(string), wanted);
  }
}

// Whether `run` was stopped by std::bad_alloc.
bool runsOutOfMemory(const Call& call, Strings& strings) {
  try {
    call.run(strings);
  } catch (const std::bad_alloc&) {
    return true;
  } catch (const std::exception& error) {
    ADD_FAILURE() << "threw " << error.what();
  }
  return false;
}

// Runs the call with one allocation failing. Returns false when it made fewer allocations.
bool failOnce(const Call& call, std::size_t succeeding, bool areShared,
              const std::vector<std::string>& after) {
  Strings strings = stringsOf(call.texts);
  const Strings sharers = areShared ? strings : Strings();
  FailingAllocation failing(succeeding);
  const bool ranOut = runsOutOfMemory(call, strings);
  const bool failed = failing.stop();
  EXPECT_EQ(ranOut, failed);
  expectOldOrNew(strings, call.texts, after);
  for (std::size_t i = 0; i < sharers.size(); ++i) EXPECT_EQ(bytesOf(sharers[i]), call.texts[i]);
  expectUsable(strings);
  return failed;
}

bool failOnceWithoutLeak(const Call& call, std::size_t succeeding, bool areShared,
                         const std::vector<std::string>& after) {
  const std::ptrdiff_t before = blocksInUse();
  const bool failed = failOnce(call, succeeding, areShared, after);
  EXPECT_EQ(blocksInUse(), before);
  return failed;
}

void failEachAllocation(const std::vector<Call>& calls) {
  for (const Call& call : calls) {
    const testing::ScopedTrace trace(call.here.file, call.here.line, "this call");
    const std::vector<std::string> after = contentsAfter(call);
    for (const bool areShared : {false, true}) {
      std::size_t succeeding = 0;
      while (failOnceWithoutLeak(call, succeeding, areShared, after)) {
        ++succeeding;
        if (testing::Test::HasFailure()) return;
      }
    }
  }
}

// How many allocations of the call can fail.
std::size_t failuresOf(const Call& call) {
  std::size_t count = 0;
  while (failOnce(call, count, false, contentsAfter(call))) ++count;
  return count;
}

constexpr char kLong[] = "a text that is longer than what a string holds in itself";
constexpr char kOther[] = "Another Text Of This Kind, Which Has Upper-Case Letters";

// --- The harness itself -----------------------------------------------------------------------

void takeOneBlock(Strings&) {
  delete RWCollectableInt(1).copy();
}

TEST(AllocationFailure, ReachesOperatorNewAndMalloc) {
  Strings none;
  EXPECT_EQ(allocationsOf([&] { takeOneBlock(none); }), 1U);
  EXPECT_EQ(failuresOf({HERE, {}, takeOneBlock}), 1U);
  EXPECT_EQ(failuresOf({HERE, {}, [](Strings&) { CTQBuffPart().updatePart("x"); }}), 1U);
}

TEST(AllocationFailure, CountsEachBlock) {
  const std::ptrdiff_t before = blocksInUse();
  const std::unique_ptr<RWCollectable> block(RWCollectableInt(1).copy());
  EXPECT_EQ(blocksInUse(), before + 1);
}

// --- Text foundation --------------------------------------------------------------------------

TEST(AllocationFailure, Strings) {
  failEachAllocation({
      {HERE, {}, [](Strings&) { const RWCString made(kLong); }},
      {HERE, {}, [](Strings&) { const RWCString made(kLong, 40); }},
      {HERE,
       {kLong, kOther},
       [](Strings& s) {
         s[0][0] = 'A';
         s[1] = s[0];
       }},
      {HERE, {kLong, kOther}, [](Strings& s) { s[0] = s[1]; }},
      {HERE, {kLong}, [](Strings& s) { s[0] = kOther; }},
      {HERE, {kLong}, [](Strings& s) { s[0](3) = '3'; }},
      {HERE, {kLong}, [](Strings& s) { s[0][3] = '3'; }},
      {HERE, {kLong}, [](Strings& s) { s[0].append(kOther); }},
      {HERE, {"short"}, [](Strings& s) { s[0].append(kOther); }},
      {HERE, {kLong}, [](Strings& s) { s[0].append(s[0]); }},
      {HERE, {kLong}, [](Strings& s) { s[0] += 'x'; }},
      {HERE, {kLong}, [](Strings& s) { s[0].insert(4, kOther); }},
      {HERE, {kLong}, [](Strings& s) { s[0].insert(4, s[0]); }},
      {HERE, {kLong}, [](Strings& s) { s[0].insert(4, s[0].data() + 2, 20); }},
      {HERE, {kLong}, [](Strings& s) { s[0].remove(4, 2); }},
      {HERE, {kLong}, [](Strings& s) { s[0].resize(400, 'x'); }},
      {HERE, {kLong}, [](Strings& s) { s[0].resize(20); }},
      {HERE, {kOther}, [](Strings& s) { s[0].toLower(); }},
      {HERE, {kLong}, [](Strings& s) { s[0] = s[0].strip(RWCString::both, 'a'); }},
      {HERE, {kLong, kOther}, [](Strings& s) { s[0] = s[0] + s[1]; }},
      {HERE, {kLong}, [](Strings& s) { s[0] = s[0] + kOther; }},
      {HERE, {kLong}, [](Strings& s) { s[0] = kOther + s[0]; }},
      {HERE, {kLong, kOther}, [](Strings& s) { s[0].swap(s[1]); }},
  });
}

TEST(AllocationFailure, Patterns) {
  failEachAllocation({
      {HERE, {}, [](Strings&) { const RWCRegexp pattern("[a-z]+x*y?"); }},
      {HERE,
       {},
       [](Strings&) {
         const RWCRegexp pattern("[a-z]+x*y?");
         RWCRegexp copy(pattern);
         RWCRegexp other("^b");
         other = copy;
         const RWCRegexp moved(static_cast<RWCRegexp&&>(copy));
       }},
      {HERE, {kLong}, [](Strings& s) { s[0] = s[0](RWCRegexp("longer.* ?[a-z ]*")); }},
      {HERE,
       {kLong},
       [](Strings& s) {
         std::size_t length = 0;
         const RWCRegexp pattern("a*ab?a+x?");
         s[0].index(pattern);
         s[0].index(pattern, &length, 1);
       }},
  });
}

struct Owned {
  Owned() = default;
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() {
    list.clearAndDestroy();
    dictionary.clearAndDestroy();
  }

  RWOrdered list;
  RWHashDictionary dictionary;
};

void insertMany(Owned& owned, int count) {
  for (int i = 0; i < count; ++i) {
    auto element = std::make_unique<RWCollectableInt>(i);
    owned.list.insert(element.get());
    element.release();
    auto key = std::make_unique<RWCollectableString>(std::to_string(i).c_str());
    auto value = std::make_unique<RWCollectableString>(kLong);
    owned.dictionary.insertKeyAndValue(key.get(), value.get());
    key.release();
    value.release();
  }
}

TEST(AllocationFailure, Collections) {
  failEachAllocation({
      {HERE,
       {},
       [](Strings&) {
         Owned owned;
         insertMany(owned, 20);
       }},
      {HERE,
       {},
       [](Strings&) {
         Owned owned;
         insertMany(owned, 10);
         const RWOrdered list(owned.list);
         const RWHashDictionary dictionary(owned.dictionary);
         const std::unique_ptr<RWCollectable> copies[] = {
             std::unique_ptr<RWCollectable>(list.copy()),
             std::unique_ptr<RWCollectable>(list.newSpecies()),
             std::unique_ptr<RWCollectable>(dictionary.copy()),
             std::unique_ptr<RWCollectable>(dictionary.newSpecies()),
         };
       }},
      {HERE,
       {kLong},
       [](Strings& s) {
         const RWCollectable plain;
         const RWCollectableString text(s[0]);
         const RWCollectableInt number(1);
         const RWCollectable* const objects[] = {&plain, &text, &number};
         for (const RWCollectable* const object : objects) {
           const std::unique_ptr<RWCollectable> copy(object->copy());
           const std::unique_ptr<RWCollectable> species(object->newSpecies());
         }
       }},
      {HERE,
       {kLong},
       [](Strings& s) {
         RWCollectableString text(s[0]);
         text[0] = 'A';  // ends its sharing
         const std::unique_ptr<RWCollectable> copy(text.copy());
       }},
  });
}

TEST(AllocationFailure, BoundsErrors) {
  failEachAllocation({
      {HERE,
       {kLong},
       [](Strings& s) {
         try {
           s[0][1000] = 'x';
         } catch (const RWBoundsErr& error) {
           const RWBoundsErr copy(error);
         }
       }},
      {HERE,
       {},
       [](Strings&) {
         try {
           RWOrdered().at(0);
         } catch (const RWBoundsErr&) {
         }
       }},
      {HERE,
       {kLong},
       [](Strings& s) {
         try {
           s[0].insert(1000, "x");
         } catch (const std::out_of_range&) {
         }
       }},
  });
}

TEST(AllocationFailure, Slices) {
  failEachAllocation({
      {HERE,
       {kLong},
       [](Strings& s) {
         CTQBuffPart part;
         part.setPart(s[0].data(), 2, 20);
         const char* const copy = part.getPart();
         EXPECT_EQ(part.getPart(), copy);
         part.updatePart(kOther);
         part.updatePart(part.getPart());
         CTQBuffPart other;
         other.setPart(s[0].data(), 0, 3);
         part.compare(other, true);
         part.compare(s[0], false);
       }},
  });
}

// --- Scanning, blanking, removal --------------------------------------------------------------

TEST(AllocationFailure, Scanning) {
  failEachAllocation({
      {HERE,
       {"= \"a value that is longer than fifteen bytes\">", kOther},
       [](Strings& s) {
         unsigned long start = 0;
         unsigned long furthest = 0;
         htmlGetStringValue(s[0], s[1], 0, start, furthest, s[0].length());
       }},
      {HERE,
       {" a-name-that-is-longer-than-that='a value that is longer than fifteen bytes'>", kOther,
        kLong},
       [](Strings& s) {
         unsigned long pos = 0;
         unsigned long start = 0;
         htmlFindNextAttribute_(s[0], s[1], s[2], pos, start);
       }},
      {HERE,
       {"<a   href>"},
       [](Strings& s) {
         unsigned long pos = 1;
         htmlSkipWhiteSpaces(s[0], s[0].length(), pos);
         htmlSkipNonWhiteSpaces(s[0], s[0].length(), pos);
         isElementOfType("a", 1, s[0], 1, ' ');
       }},
  });
}

TEST(AllocationFailure, Blanking) {
  failEachAllocation({
      {HERE,
       {"a <!-- comment --> b <!-- another --> c"},
       [](Strings& s) { tqOverwriteTagWithBlanks(s[0], "<!--", "-->"); }},
      {HERE,
       {"<script>one()</script> <SCRIPT src=x>two()</SCRIPT> z"},
       [](Strings& s) { tqOverwriteScriptWithBlanks(s[0]); }},
  });
  EXPECT_EQ(failuresOf({HERE,
                        {"<script>one()</script> <SCRIPT </SCRIPT>"},
                        [](Strings& s) { tqFindEndlessScript(s[0]); }}),
            0U);
}

TEST(AllocationFailure, Removal) {
  failEachAllocation({
      {HERE,
       {"one <img src=a.gif> two <img src=b.gif> three"},
       [](Strings& s) { tqRemoveFirstSingleTag(s[0], "<img"); }},
      {HERE,
       {"one <select name=a><option>1</select> two <select></select><!-- x --> three",
        "an-element-of-a-long-name"},
       [](Strings& s) {
         tqSkipTagBody(s[1], s[0]);
         tqSkipTagBody("select", s[0]);
       }},
      {HERE,
       {"<body onload = 'start()' onmouseover=\"over( )\" onmouseout=out()> and more ONLOAD=x>"},
       [](Strings& s) { tqSkipOnloadAttribute(s[0]); }},
  });
}

TEST(AllocationFailure, FindingAttributes) {
  failEachAllocation({
      {HERE,
       {"<img an-attribute-of-a-long-name='and a value that is as long' b=2 c d=4 e=5 f=6 g=7 h=8"
        " i=9 j=10>"},
       [](Strings& s) {
         Owned values;
         Owned offsets;
         unsigned long pos = 3;
         CHTMLAttributeFinder().FindAttributes(s[0], pos, values.dictionary, offsets.dictionary);
       }},
      // One dictionary for both: what it refuses is not lost.
      {HERE,
       {"<img an-attribute-of-a-long-name='and a value that is as long' b=2>"},
       [](Strings& s) {
         Owned both;
         unsigned long pos = 3;
         CHTMLAttributeFinder().FindAttributes(s[0], pos, both.dictionary, both.dictionary);
       }},
  });
}

// --- Records and parser -----------------------------------------------------------------------

void insertAttribute(CZKHTMLDietTransactionsObject& record, RWCString name) {
  RWCString value(kLong);
  RWCString original(kOther);
  auto attribute = std::make_unique<CZKHTMLDietAttributeObject>(name, value, original, 7);
  record.InsertAttributeObject(attribute.get());
  attribute.release();
}

// Standard output to nowhere.
class Silence {
 public:
  Silence() : before_(std::cout.rdbuf(nullptr)) {}
  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;
  ~Silence() {
    std::cout.rdbuf(before_);
    std::cout.clear();
  }

 private:
  std::streambuf* before_;
};

TEST(AllocationFailure, Records) {
  failEachAllocation({
      {HERE,
       {kLong, kOther},
       [](Strings& s) {
         CZKHTMLDietAttributeObject attribute(s[0], s[1], s[0], 1);
         attribute.SetAttributeName(s[1]);
         attribute.SetAttributeValue(s[0]);
         attribute.SetOriginalAttributeValue(s[1]);
         s[0] = attribute.GetAttributeName();
       }},
      {HERE,
       {"codebase", "a name of the host's own"},
       [](Strings& s) {
         CZKHTMLDietTransactionsObject record;
         record.SetTagName("A TAG THAT IS LONGER THAN MOST");
         for (const char* const name : {"src", "archive", "data", "href"}) {
           insertAttribute(record, name);
         }
         for (int i = 0; i < 12; ++i) insertAttribute(record, (s[1] + std::to_string(i).c_str()));
         record.GetAttributeObject(s[0]);
         record.GetAttributeObject(s[1]);
         RWOrdered names;
         record.GetAttributeNames(names);
         const Silence silence;
         record.PrintAll();
       }},
  });
}

constexpr char kPageUrl[] = "http://www.example.com/a/directory/of/pages/page.html?query#part";

// Tags with many attributes, a long name and value, comments, scripts, and unclosed quotes after
// which the attributes of later tags are read again.
std::string page() {
  return "<!-- one --><base href=http://www.example.com/base/><script src=s.js>x()</script>"
         "<img src='../images/a long name.gif' lowsrc=\"//other.example.com/l%41.gif\" dynsrc=d>"
         "<applet code=a codebase=b archive=c data=d classid=e src=f><iframe><xml src=x.xml>"
         "<img src=\"./" +
         repeated("long/../", 200) + "\">" + repeated("<td background='> <frame src=\"", 100) +
         "<?import implementation=i.htc>";
}

// Keeps what it is shown and reads it again when the pass is over.
class Sink : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    records.insert(record);
    return true;
  }
  void readAll() const {
    for (std::size_t i = 0; i < records.entries(); ++i) {
      auto* const record = dynamic_cast<CZKHTMLDietTransactionsObject*>(records.at(i));
      ASSERT_NE(record, nullptr);
      EXPECT_NE(record->GetFirstAttributeObject(), nullptr);
    }
  }

 private:
  RWOrdered records;
};

TEST(AllocationFailure, Parsing) {
  failEachAllocation({
      {HERE,
       {page()},
       [](Strings& s) {
         CHTMLOffsetParser parser(kPageUrl);
         parser.ParseHTML(s[0].data(), s[0].length());
         parser.findTagName();
         parser.parseHTMLElement("IMG");
         const Silence silence;
         parser.PrintAll();
       }},
      {HERE,
       {"@import 'one.css'; body { background: url(\"../images/wall.gif\") } /* x */ "
        "p { background: url(p.gif) } q { background: url(q.gif) } @import url(r.css);"},
       [](Strings& s) {
         CHTMLOffsetParser parser(kPageUrl);
         parser.ParseCSS(s[0]);
       }},
      {HERE,
       {"background:url(a.gif)"},
       [](Strings& s) {
         CHTMLOffsetParser parser(kPageUrl);
         try {
           parser.ParseCSS(s[0]);
           ADD_FAILURE() << "no error";
         } catch (const RWBoundsErr&) {
         }
       }},
      {HERE,
       {},
       [](Strings&) {
         CHTMLOffsetParser parser(kPageUrl);
         for (int i = 0; i < 5; ++i) {
           auto record = std::make_unique<CZKHTMLDietTransactionsObject>();
           insertAttribute(*record, "src");
           parser.InsertObjectToQueue(record.get());
           record.release();
         }
       }},
  });
}

// A sink that has the parser take more while it is shown a record, and bears with what fails.
class BusySink : public Sink {
 public:
  using Action = void (*)(CHTMLOffsetParser& parser);

  BusySink(CHTMLOffsetParser& parser, Action action) : parser_(parser), action_(action) {}
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    Sink::insert(record);
    if (depth_ == kDeepest || !action_) return true;
    ++depth_;
    try {
      action_(parser_);
    } catch (const std::bad_alloc&) {
    }
    --depth_;
    return true;
  }

 private:
  static constexpr int kDeepest = 3;

  CHTMLOffsetParser& parser_;
  Action action_;
  int depth_ = 0;
};

// Runs `pass` on one parser with each of its allocations failing in turn, and then to its end. All
// that the sink was shown must be there afterwards.
void failEachPassOf(void (*pass)(CHTMLOffsetParser& parser), BusySink::Action action) {
  for (std::size_t succeeding = 0;; ++succeeding) {
    CHTMLOffsetParser parser(kPageUrl);
    BusySink sink(parser, action);
    parser.SetDietVirtualQueue(&sink);
    FailingAllocation failing(succeeding);
    try {
      pass(parser);
    } catch (const std::bad_alloc&) {
    }
    const bool failed = failing.stop();
    sink.readAll();
    if (!failed) return;
  }
}

void parsePage(CHTMLOffsetParser& parser) {
  static const std::string text = page();
  parser.ParseHTML(text.c_str(), 0);
}

void parseStyles(CHTMLOffsetParser& parser) {
  parser.ParseCSS("a { b: url(1) } a { b: url(2) } a { b: url(3) }");
}

void queueRecord(CHTMLOffsetParser& parser) {
  auto record = std::make_unique<CZKHTMLDietTransactionsObject>();
  insertAttribute(*record, "src");
  parser.InsertObjectToQueue(record.get());
  record.release();
}

TEST(AllocationFailure, LeavesTheParserAndItsRecordsValid) {
  for (const BusySink::Action action : {BusySink::Action{}, parseStyles, queueRecord}) {
    failEachPassOf(parsePage, action);
    failEachPassOf(parseStyles, action);
    failEachPassOf(queueRecord, action);
  }
  failEachPassOf(parseStyles, [](CHTMLOffsetParser& parser) {
    parser.ParseHTML("<img src=a><frame><iframe src=b>", 0);
  });
}

// --- URLs and character sets ------------------------------------------------------------------

TEST(AllocationFailure, Urls) {
  failEachAllocation({
      {HERE,
       {"  http://www.example.com/a b%41/" + repeated("c\n%20 ", 300)},
       [](Strings& s) {
         stripUrl(s[0], true);
         int length = 0;
         getProtocol(s[0], length);
         isHttpProtocol(s[0]);
       }},
      {HERE, {"  http://www.example.com/a b%41/  "}, [](Strings& s) { stripUrl(s[0], false); }},
      {HERE,
       {"https://user@www.example.com:8080/a/directory/of/pages/page.html?query#part"},
       [](Strings& s) {
         urlBase base(s[0]);
         base.shortParse();
         base.setBase(kPageUrl);
         base.parse();
       }},
  });
}

const std::vector<std::string> kLinks = {
    "../images/a%20picture of.gif&amp;more",
    "//other.example.com/&eacute;t&eacute;/a%20picture.gif",
    "http://other.example.com/&eacute;t&eacute;/a picture.gif",
    "javascript:&quot;some script that does things&quot;",
    "./images/a%20picture of.gif&amp;more/than/before",
    "/images/a%20picture of.gif&amp;more/than/before",
    "?a=question+of&amp;several=parts",
    "#a-part-of-the-page-that-is-read",
    "file:/home/somebody/pages/page.html",
    "\\\\server\\share\\directory\\page.html",
    "http:images/../picture.gif",
    "/",
    "./",
    "",
};

// One call for each link, on a base that is new to it.
void failOnEachLink(void (*run)(Strings& strings)) {
  std::vector<Call> calls;
  for (const std::string& link : kLinks) calls.push_back({HERE, {link, kOther}, run});
  failEachAllocation(calls);
}

TEST(AllocationFailure, Resolving) {
  failOnEachLink([](Strings& s) { s[1] = urlBase(kPageUrl).calcUrl(s[0]); });
  failOnEachLink([](Strings& s) { urlBase(kPageUrl).calcUrl(s[0], s[1], true, true); });
  failOnEachLink([](Strings& s) { urlBase(kPageUrl).calcUrl(s[0], s[0], false, false); });
}

std::string manyKinds() {
  return "a=b c&d=%41%zz%20\xE9+" + repeated("&#25;0A / ?~'()", 500);
}

TEST(AllocationFailure, Encoding) {
  std::vector<Call> calls = {
      {HERE,
       {manyKinds(), kOther},
       [](Strings& s) { UrlEncoding::EncodeString(s[0], s[1], UrlEncoding::eBrowser); }},
      {HERE,
       {manyKinds(), kOther},
       [](Strings& s) { UrlEncoding::EncodeString(s[0], s[1], UrlEncoding::eNone); }},
      {HERE,
       {manyKinds()},
       [](Strings& s) { UrlEncoding::EncodeString(s[0], s[0], UrlEncoding::eSiebel); }},
      {HERE,
       {"a short text with a blank", ""},
       [](Strings& s) { UrlEncoding::EncodeString(s[0], s[1], UrlEncoding::eEscape); }},
      {HERE,
       {manyKinds()},
       [](Strings& s) { UrlEncoding::DecodeString(s[0], UrlEncoding::eBrowser); }},
      {HERE,
       {"a+short+text%20with%20blanks"},
       [](Strings& s) { UrlEncoding::DecodeString(s[0], UrlEncoding::eSiebel); }},
      {HERE,
       {manyKinds(), kOther},
       [](Strings& s) { UrlEncoding::EncodeStringUnreadables(s[0].data(), s[0].length(), s[1]); }},
      {HERE,
       {"name=value%20of&other=%41", "name=value+of&other=some+more"},
       [](Strings& s) {
         for (const RWCString& text : s) {
           UrlEncoding::CheckUrlDecoding(text);
           UrlEncoding::CheckUrlDecoding(text, UrlEncoding::eChrome);
         }
       }},
  };
  failEachAllocation(calls);
}

class OtherPlaceholder {
 public:
  OtherPlaceholder() : before_(persentEscape) { persentEscape = "{pct}"; }
  OtherPlaceholder(const OtherPlaceholder&) = delete;
  OtherPlaceholder& operator=(const OtherPlaceholder&) = delete;
  ~OtherPlaceholder() { persentEscape = before_; }

 private:
  const char* before_;
};

TEST(AllocationFailure, CheckingWithAnotherPlaceholder) {
  const OtherPlaceholder other;
  failEachAllocation({
      {HERE,
       {"a-name-that-is-long=a+value+that+is+long&b=%0A"},
       [](Strings& s) {
         UrlEncoding::CheckUrlDecoding(s[0]);
         UrlEncoding::CheckUrlDecoding(s[0], UrlEncoding::eBrowser);
       }},
  });
}

TEST(AllocationFailure, EncodingTables) {
  failEachAllocation({
      {HERE,
       {},
       [](Strings&) {
         CharArray table;
         UrlEncoding::FillASCII_chars(table, true);
         UrlEncoding::FillBrowserSpecials(table);
         UrlEncoding::FillEscapeSpecials(table);
         UrlEncoding::FillEscapeURIComponentSpecials(table);
         UrlEncoding::FillEscapeURISpecials(table);
         UrlEncoding::FillChromeSpecials(table);
         UrlEncoding::FillChrome94Specials(table);
         UrlEncoding::FillSiebelSpecials(table);
         UrlEncoding::initAllArrays();
         const CharArray copy(table);
       }},
  });
}

TEST(AllocationFailure, CharacterSets) {
  failEachAllocation({
      {HERE,
       {"caf\xC3\xA9 \xC3\xA9t\xC3\xA9 and a rest of plain text"},
       [](Strings& s) {
         ConvertUtf8toAnsi(s[0]);
         isUtf8(s[0].data(), 10);
       }},
      {HERE,
       {"caf\xE9 \xE9t\xE9 and a rest of plain text"},
       [](Strings& s) { ConvertAnsitoUtf8(s[0]); }},
      {HERE,
       {"&eacute;t&eacute; &amp; &#65;&#x42;&#q; &nosuchname; and a rest of plain text"},
       [](Strings& s) { CTQCharSet::fsGetSingleton()->convert(s[0]); }},
  });
}

TEST(AllocationFailure, AnotherCharacterSetInstance) {
  static CTQCharSet* const first = CTQCharSet::fsGetSingleton();
  failEachAllocation({
      {HERE,
       {},
       [](Strings&) {
         try {
           const CTQCharSet second;
           CTQCharSet::msSingleton = first;
         } catch (const std::bad_alloc&) {
           EXPECT_EQ(CTQCharSet::msSingleton, first);
           throw;
         }
       }},
  });
}

TEST(AllocationFailure, Ranking) {
  EXPECT_EQ(failuresOf({HERE,
                        {},
                        [](Strings&) {
                          CDOMBaseLinkCmp link;
                          link.rank();
                          link.propRank();
                          CZKHTMLDietTransactionsObject::CalcCheckSum(kLong, sizeof kLong);
                        }}),
            0U);
}

}  // namespace
}  // namespace pagescan::tests
