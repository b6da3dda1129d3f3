// The page reader: elements, without what is done with them.
#include "jobs.h"
#include "page/element_reader.h"
#include "yardsticks.h"

namespace pagescan::bench {
namespace {

struct CountingHandler {
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

}  // namespace

void addPageJobs(Jobs& jobs, const Input& input) {
  Job& job = jobs.emplace_back("Elements", "what the start tags of a page become",
                               workOver(input.pages, "page"));
  job.yardstick("memchr('<')", memchrOver(input.pages, '<'))
      .library(forEachOf(input.pages, TextWork(readElements)));
}

}  // namespace pagescan::bench
