// Many threads at once, each with strings of its own that share their bytes with those of the
// others. ThreadSanitizer watches; every build compares what comes out with what one thread alone
// gets.

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <latch>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "pagescan.h"
#include "support/placement.h"
#include "support/record_attributes.h"
#include "support/texts.h"

namespace pagescan::tests {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 200;

// Runs work(number of the thread) on every thread, all beginning at the same moment.
void runOnAllThreads(const std::function<void(int)>& work) {
  std::latch start(kThreads);
  std::vector<std::thread> threads;
  for (int number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] {
      start.arrive_and_wait();
      work(number);
    });
  }
  for (std::thread& thread : threads) thread.join();
}

// Runs the operation again and again on every thread; each run must give what the first one gave.
void expectSameEverywhere(const std::function<std::string()>& operation) {
  const std::string expected = operation();
  runOnAllThreads([&](int) {
    for (int round = 0; round < kRounds; ++round) ASSERT_EQ(operation(), expected);
  });
}

std::string textOf(const RWCString& text) {
  return std::string(bytesOf(text));
}

const std::string kTexts[] = {"", "short", repeated("a text too long to be held locally ", 10)};

// --- Strings that share their bytes -----------------------------------------------------------

TEST(Threads, CopyReadChangeAndDestroySharingStrings) {
  for (const std::string& text : kTexts) {
    const RWCString common = stringOf(text);
    runOnAllThreads([&](int number) {
      for (int round = 0; round < kRounds; ++round) {
        RWCString mine = common;
        const RWCString again = mine;
        ASSERT_EQ(bytesOf(mine), text);
        mine.append(std::to_string(number).c_str());
        ASSERT_EQ(bytesOf(mine), text + std::to_string(number));
        if (again.length() > 0) mine(0) = '#';
        mine = again;
        mine.toLower();
        ASSERT_EQ(bytesOf(mine), text);
        ASSERT_EQ(bytesOf(again), text);
      }
    });
    EXPECT_EQ(bytesOf(common), text);
  }
}

TEST(Threads, DestroyTheLastOwnersOfABuffer) {
  for (const std::string& text : kTexts) {
    for (int round = 0; round < kRounds; ++round) {
      std::vector<RWCString> strings(kThreads, stringOf(text));
      runOnAllThreads([&](int number) {
        RWCString mine = std::move(strings[static_cast<std::size_t>(number)]);
        if (number % 2 == 0) mine.append('x');
        ASSERT_EQ(bytesOf(mine), number % 2 == 0 ? text + "x" : text);
      });
    }
  }
}

TEST(Threads, WriteIntoBuffersThatWereShared) {
  std::vector<RWCString> strings(kThreads, stringOf(kTexts[2]));
  runOnAllThreads([&](int number) {
    RWCString& mine = strings[static_cast<std::size_t>(number)];
    for (std::size_t i = 0; i < mine.length(); ++i) mine[i] = static_cast<char>('a' + number);
  });
  for (int number = 0; number < kThreads; ++number) {
    EXPECT_EQ(textOf(strings[static_cast<std::size_t>(number)]),
              std::string(kTexts[2].size(), static_cast<char>('a' + number)));
  }
}

TEST(Threads, ShareCollectionsThatAreOnlyRead) {
  RWHashDictionary dictionary;
  for (int i = 0; i < 50; ++i) {
    dictionary.insertKeyAndValue(new RWCollectableString(std::to_string(i).c_str()),
                                 new RWCollectableInt(i));
  }
  expectSameEverywhere([&] {
    std::string result;
    for (int i = 0; i < 50; ++i) {
      const RWCollectableString key(std::to_string(i).c_str());
      result += textOf(dynamic_cast<const RWCollectableString&>(*dictionary.find(&key)));
    }
    return result;
  });
  dictionary.clearAndDestroy();
}

TEST(Threads, SearchWithOnePattern) {
  const RWCRegexp greedy("[a-z]+;");
  const RWCRegexp manyWays("a*ab?a+;");
  const RWCString text = stringOf(repeated("aaa ", 20) + "aab;");
  expectSameEverywhere([&] { return textOf(text(greedy)) + textOf(text(manyWays)); });
}

// --- The families -----------------------------------------------------------------------------

// The arguments that all threads share, so that their buffers are shared too.
const RWCString& page() {
  static const RWCString text = stringOf(
      "<!-- c --><base href=b><script src=s.js>x()</script><img src='../i%41.gif' lowsrc=l>" +
      repeated("<td background=\"w.gif\">", 50) + "<frame><applet code=c classid=clsid:1>");
  return text;
}

// Writes down each record as it comes.
class Sink : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    text += record->GetTagName();
    for (CZKHTMLDietAttributeObject* const attribute : attributesOf(*record)) {
      text += std::string(" ") + attribute->GetAttributeName() + "=";
      text += attribute->GetAttributeValue();
      text += "@" + std::to_string(attribute->GetAttributeOffset());
    }
    return true;
  }

  std::string text;
};

TEST(Threads, ParsePages) {
  expectSameEverywhere([] {
    Sink lines;
    CHTMLOffsetParser parser("http://w1/d/page.html");
    parser.SetDietVirtualQueue(&lines);
    parser.ParseHTML(page().data(), page().length());
    parser.ParseCSS(RWCString("a { b: url('c.gif') } @import url(d.css);"));
    return lines.text;
  });
}

TEST(Threads, BlankAndRemove) {
  expectSameEverywhere([] {
    RWCString text = page();
    tqOverwriteScriptWithBlanks(text);
    tqOverwriteTagWithBlanks(text, "<!--", "-->");
    tqRemoveFirstSingleTag(text, "<td");
    tqSkipTagBody("script", text);
    tqSkipOnloadAttribute(text);
    return textOf(text);
  });
}

TEST(Threads, FindAttributes) {
  expectSameEverywhere([] {
    RWCString text = page();
    RWHashDictionary values;
    RWHashDictionary offsets;
    unsigned long pos = text.index("<img") + 3;
    CHTMLAttributeFinder().FindAttributes(text, pos, values, offsets);
    const RWCollectableString key("src");
    const std::string value =
        textOf(dynamic_cast<const RWCollectableString&>(*values.findValue(&key)));
    values.clearAndDestroy();
    offsets.clearAndDestroy();
    return value;
  });
}

TEST(Threads, ResolveLinks) {
  const RWCString base("http://w1/a/b/c.html?x#y");
  const RWCString link("../i%41&amp;.gif");
  expectSameEverywhere([&] {
    urlBase first(base);
    urlBase second(base);
    RWCString changed = link;
    RWCString out;
    second.calcUrl(link, out, true, true);
    return textOf(first.calcUrl(changed)) + textOf(changed) + textOf(out);
  });
}

TEST(Threads, DecodeReferences) {
  const RWCString text = stringOf(repeated("&eacute;t&#233; &amp;lt; &none; &#x41; ", 20));
  expectSameEverywhere([&] {
    RWCString mine = text;
    CTQCharSet::fsGetSingleton()->convert(mine);
    return textOf(mine);
  });
}

TEST(Threads, EncodeDecodeAndCheck) {
  const RWCString text = stringOf(repeated("a b+c&d=%e~\xE9", 20));
  expectSameEverywhere([&] {
    std::string result;
    for (int type = UrlEncoding::eNone; type <= UrlEncoding::eSiebel; ++type) {
      const auto flavour = static_cast<UrlEncoding::EncodingType>(type);
      RWCString source = text;
      RWCString encoded;
      UrlEncoding::EncodeString(source, encoded, flavour);
      result += textOf(encoded);
      result += UrlEncoding::CheckUrlDecoding(encoded, flavour) ? '1' : '0';
      UrlEncoding::DecodeString(encoded, flavour);
      result += textOf(encoded);
    }
    return result;
  });
}

TEST(Threads, FillTheTablesWhileOthersRead) {
  RWCString text("a b@c/d~");
  RWCString expected;
  UrlEncoding::EncodeString(text, expected, UrlEncoding::eBrowserSign);
  runOnAllThreads([&](int number) {
    for (int round = 0; round < kRounds; ++round) {
      if (number == 0) UrlEncoding::initAllArrays();
      RWCString source = text;
      RWCString encoded;
      UrlEncoding::EncodeString(source, encoded, UrlEncoding::eBrowserSign);
      ASSERT_EQ(bytesOf(encoded), bytesOf(expected));
      ASSERT_STREQ(UrlEncoding::cBrowserCharsSign['@'], "%40");
    }
  });
}

TEST(Threads, ConvertUtf8) {
  const RWCString utf8 = stringOf(repeated("caf\xC3\xA9 ", 20));
  expectSameEverywhere([&] {
    RWCString text = utf8;
    ConvertUtf8toAnsi(text);
    const std::string ansi = textOf(text);
    ConvertAnsitoUtf8(text);
    return ansi + textOf(text);
  });
}

}  // namespace
}  // namespace pagescan::tests
