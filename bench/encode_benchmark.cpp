// EncodeString, DecodeString and CheckUrlDecoding over query strings and pages.
#include <algorithm>
#include <string>

#include "jobs.h"
#include "yardsticks.h"
#include "zkurlencoding.h"

namespace pagescan::bench {
namespace {

constexpr auto kType = UrlEncoding::eEscapeURIComponent;

RWCString decoded(RWCString text) {
  UrlEncoding::DecodeString(text, kType);
  return text;
}

std::size_t encode(RWCString& text) {
  RWCString result;
  UrlEncoding::EncodeString(text, result, kType);
  return result.length();
}

std::size_t decode(const RWCString& text) {
  return decoded(text).length();
}

std::size_t findFlavour(const RWCString& text) {
  return static_cast<std::size_t>(UrlEncoding::CheckUrlDecoding(text));
}

std::size_t decodeAndEncode(const RWCString& text) {
  RWCString plain = decoded(text);
  return encode(plain);
}

// EncodeString takes its source by writable reference, but only reads it.
Pass encodingOf(const Texts& texts) {
  return forEachOf(texts,
                   [](const RWCString& text) { return encode(const_cast<RWCString&>(text)); });
}

void addEncodeJob(Jobs& jobs, const char* id, const char* title, const Texts& texts,
                  const char* item) {
  Job& job = jobs.emplace_back(id, title, workOver(texts, item));
  job.yardstick("uriparser").library(encodingOf(texts)).target(3);
  addPeers(job, texts, &Peer::encode);
}

const Texts& plainQueries(const Input& input) {
  static Texts plain;
  plain.clear();
  std::transform(input.queries.begin(), input.queries.end(), std::back_inserter(plain), decoded);
  return plain;
}

}  // namespace

void addEncodeJobs(Jobs& jobs, const Input& input) {
  addEncodeJob(jobs, "EncodeString_queries", "`EncodeString`, query strings", plainQueries(input),
               "decoded query string");
  addEncodeJob(jobs, "EncodeString_pages", "`EncodeString`, whole pages", input.pages, "page");

  const Work queries = workOver(input.queries, "query string");
  Job& decoding = jobs.emplace_back("DecodeString", "`DecodeString`, query strings", queries);
  decoding.yardstick("libcurl").library(forEachOf(input.queries, decode)).target(3);
  addPeers(decoding, input.queries, &Peer::decode);

  jobs.emplace_back("CheckUrlDecoding", "`CheckUrlDecoding(text)`, the flavour of query strings",
                    queries)
      .yardstick("DecodeString + EncodeString", forEachOf(input.queries, decodeAndEncode))
      .library(forEachOf(input.queries, findFlavour))
      .target(1.0 / 3);
}

}  // namespace pagescan::bench
