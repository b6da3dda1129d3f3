// Blanking and removal in pages, and the checksum over them.
#include "jobs.h"
#include "yardsticks.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmlparseutils.h"

namespace pagescan::bench {
namespace {

std::size_t blank(const RWCString& page) {
  RWCString text(page);
  tqOverwriteScriptWithBlanks(text);
  tqOverwriteTagWithBlanks(text, "<!--", "-->");
  return text.length();
}

std::size_t skipHandlers(const RWCString& page) {
  RWCString text(page);
  tqSkipOnloadAttribute(text);
  return text.length();
}

std::size_t skipBodies(const RWCString& page) {
  RWCString text(page);
  tqSkipTagBody("script", text);
  return text.length();
}

std::size_t checkSum(const RWCString& page) {
  return CZKHTMLDietTransactionsObject::CalcCheckSum(page.data(), static_cast<int>(page.length()));
}

Job& addJob(Jobs& jobs, const Input& input, const char* id, const char* title) {
  Job& job = jobs.emplace_back(id, title, workOver(input.pages, "page"));
  return job.yardstick("memcpy", memcpyOf(input.pages));
}

}  // namespace

void addScrubJobs(Jobs& jobs, const Input& input) {
  Job& blanking = addJob(jobs, input, "blanking", "blanking scripts, then comments, in a copy");
  blanking.library(forEachOf(input.pages, blank)).target(0.3);
  addPeers(blanking, input.pages, &Peer::blankScripts);

  Job& handlers = addJob(jobs, input, "tqSkipOnloadAttribute", "`tqSkipOnloadAttribute` in a copy");
  handlers.library(forEachOf(input.pages, skipHandlers)).target(0.15);
  addPeers(handlers, input.pages, &Peer::skipHandlers);

  addJob(jobs, input, "tqSkipTagBody", "`tqSkipTagBody` of scripts in a copy")
      .library(forEachOf(input.pages, skipBodies))
      .target(0.15);
  addJob(jobs, input, "CalcCheckSum", "`CalcCheckSum`")
      .library(forEachOf(input.pages, checkSum))
      .target(0.8);
}

}  // namespace pagescan::bench
