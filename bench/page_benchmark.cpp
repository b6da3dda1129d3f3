// The page reader: elements alone, references with their spans, and all of these resolved.
#include "jobs.h"
#include "page/element_reader.h"
#include "pagescan/page.h"
#include "yardsticks.h"

namespace pagescan::bench {
namespace {

struct CountingHandler {
  static constexpr bool kTakesBareTags = true;
  std::uint8_t startTag(const internal::StartTag& tag) {
    count += tag.attributeCount + 1;
    return 0;
  }
  void rawText(const internal::StartTag&, Span text) { count += text.end - text.begin; }
  void svgStyleText(std::uint32_t, Span, bool) {}
  void svgStyleEnds(std::uint32_t) {}
  void bodyLeaves(std::uint32_t) {}

  std::size_t count = 0;
};

std::size_t readElements(std::string_view page) {
  CountingHandler handler;
  internal::ElementReader<CountingHandler> reader(page, {}, handler);
  reader.read();
  return handler.count;
}

PageOptions options() {
  PageOptions options;
  options.url = "http://www.example.com/news/2024/index.html";
  return options;
}

std::size_t readReferences(std::string_view page) {
  return Page(page, options()).references().size();
}

std::size_t resolveReferences(std::string_view bytes) {
  const Page page(bytes, options());
  std::string url;
  std::size_t length = 0;
  for (const Reference& reference : page.references()) {
    if (page.urlInto(reference, url)) length += url.size();
  }
  return length;
}

}  // namespace

void addPageJobs(Jobs& jobs, const Input& input) {
  Job& job = jobs.emplace_back("Elements", "what the start tags of a page become",
                               workOver(input.pages, "page"));
  job.yardstick("memchr('<')", memchrOver(input.pages, '<'))
      .library(forEachOf(input.pages, TextWork(readElements)));

  Job& spans = jobs.emplace_back("Page", "`Page`, references with their spans",
                                 workOver(input.pages, "page"));
  spans.yardstick("memchr('<')", memchrOver(input.pages, '<'))
      .library(forEachOf(input.pages, TextWork(readReferences)))
      .target(0.33);
  addPeers(spans, input.pages, &Peer::parsePage);

  jobs.emplace_back("Page_urls", "`Page`, and every URL resolved", workOver(input.pages, "page"))
      .yardstick("memchr('<')", memchrOver(input.pages, '<'))
      .library(forEachOf(input.pages, TextWork(resolveReferences)))
      .target(0.22);
}

}  // namespace pagescan::bench
