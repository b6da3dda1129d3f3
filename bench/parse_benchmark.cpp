// ParseHTML: records made and destroyed, URLs resolved.
#include "jobs.h"
#include "yardsticks.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::bench {
namespace {

constexpr char kPageUrl[] = "http://www.example.com/news/2024/index.html";

std::size_t parse(const RWCString& page) {
  CHTMLOffsetParser parser(kPageUrl);
  parser.ParseHTML(page.data(), page.length());
  return 1;
}

}  // namespace

void addParseJobs(Jobs& jobs, const Input& input) {
  Job& job =
      jobs.emplace_back("ParseHTML", "`ParseHTML`, records made and destroyed, URLs resolved",
                        workOver(input.pages, "page"));
  job.yardstick("memchr('<')", memchrOver(input.pages, '<'))
      .library(forEachOf(input.pages, parse))
      .target(0.33)
      .target(3.5, "libwget")
      .target(25, "libxml2");
  addPeers(job, input.pages, &Peer::parsePage);
}

}  // namespace pagescan::bench
