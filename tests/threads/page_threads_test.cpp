// One page, one base and many resolutions on many threads at once: all calls on them are const.

#include <gtest/gtest.h>

#include <functional>
#include <latch>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/url.h"

namespace pagescan::tests {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 50;

constexpr char kPage[] =
    "<base href=http://h/d/><a href='x?&eacute;'>\xE9</a><img srcset='a&amp;b 1x, c 2x'>"
    "<style>a{b:url(\\75x)}</style><iframe srcdoc='&lt;img src=&quot;../y&quot;&gt;'></iframe>"
    "<noscript><img src=z></noscript><p style='background:url(http://b\xC3\xBC.example/)'>";

PageOptions options() {
  PageOptions options;
  options.url = "http://example.com/a/b";
  options.charset = "windows-1252";
  return options;
}

// Everything that a page tells of its references.
std::string described(const Page& page) {
  std::string text;
  for (const Reference& reference : page.references()) {
    text += page.element(reference) + ' ' + std::string(page.attribute(reference)) + ' ' +
            page.value(reference) + ' ' + page.url(reference).value_or("none") + '\n';
  }
  return text;
}

void onAllThreads(const std::function<std::string()>& work, const std::string& expected) {
  std::latch start(kThreads);
  std::vector<std::string> results(kThreads);
  std::vector<std::thread> threads;
  for (std::string& result : results) {
    threads.emplace_back([&] {
      start.arrive_and_wait();
      for (int round = 0; round < kRounds; ++round) result = work();
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& result : results) EXPECT_EQ(result, expected);
}

TEST(Threads, ReadOnePageAtOnce) {
  const Page page(kPage, options());
  const std::string expected = described(page);
  ASSERT_NE(expected.find("http://h/d/x?%E9"), std::string::npos) << expected;
  onAllThreads([&] { return described(page); }, expected);
}

TEST(Threads, ReadPagesOfTheirOwn) {
  const std::string expected = described(Page(kPage, options()));
  onAllThreads([] { return described(Page(kPage, options())); }, expected);
}

TEST(Threads, ResolveAgainstOneBase) {
  const std::optional<Base> base = Base::parse("http://h/a/b");
  ASSERT_TRUE(base);
  onAllThreads([&] { return base->resolve("../b\xC3\xBC?x").value_or("none"); },
               "http://h/b%C3%BC?x");
}

}  // namespace
}  // namespace pagescan::tests
