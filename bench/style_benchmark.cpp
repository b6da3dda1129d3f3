// ParseCSS: the URLs of style sheets.
#include "jobs.h"
#include "yardsticks.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::bench {
namespace {

constexpr char kSheetUrl[] = "http://www.example.com/assets/css/site.css";

std::size_t parse(const RWCString& sheet) {
  CHTMLOffsetParser parser(kSheetUrl);
  parser.ParseCSS(sheet);
  return 1;
}

}  // namespace

void addStyleJobs(Jobs& jobs, const Input& input) {
  Job& job = jobs.emplace_back("ParseCSS", "`ParseCSS`, records made and destroyed, URLs resolved",
                               workOver(input.sheets, "style sheet"));
  job.yardstick("memchr('(')", memchrOver(input.sheets, '('))
      .library(forEachOf(input.sheets, parse))
      .target(0.3);
  addPeers(job, input.sheets, &Peer::parseStyle);
}

}  // namespace pagescan::bench
