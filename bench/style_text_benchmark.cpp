// The references of style sheets, as the page reader has them.
#include <string_view>
#include <vector>

#include "jobs.h"
#include "page/style_text.h"
#include "yardsticks.h"

namespace pagescan::bench {

void addStyleTextJobs(Jobs& jobs, const Input& input) {
  Job& job = jobs.emplace_back("style text", "references of style text, with their spans",
                               workOver(input.sheets, "style sheet"));
  const auto read = [references =
                         std::vector<internal::StyleReference>()](const RWCString& sheet) mutable {
    references.clear();
    readStyle({sheet.data(), sheet.length()}, internal::StyleForm::sheet, references);
    return references.size();
  };
  job.yardstick("memchr('(')", memchrOver(input.sheets, '('))
      .library(forEachOf(input.sheets, read))
      .target(0.3);
  addPeers(job, input.sheets, &Peer::parseStyle);
}

}  // namespace pagescan::bench
