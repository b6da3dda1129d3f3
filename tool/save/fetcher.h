// Fetcher: GET requests by http and https, a few at a time.
//
// It follows no redirect: whoever asked decides where to go on. Cookies live as long as the
// fetcher. Proxies that the environment names are not used, for then it would be the proxy that
// connects, and addresses could not be checked. One thread alone.
#ifndef PAGESCAN_TOOL_SAVE_FETCHER_H
#define PAGESCAN_TOOL_SAVE_FETCHER_H

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::tool {

struct FetchOptions {
  std::string userAgent;
  std::vector<std::string> headers;  // "Name: value", sent to `headersOrigin` alone
  std::string headersOrigin;         // as originOf() writes it
  std::string certificates;          // a file of authorities to trust; empty: the system's
  bool allowsPrivate = false;        // whether addresses that are not public are connected to
  std::chrono::seconds requestTime{60};
  std::chrono::seconds runTime{900};
  std::uint64_t mostBytes = 1ULL << 28;     // of one answer, once decompressed
  std::uint64_t mostRunBytes = 1ULL << 31;  // of all answers together
};

// What came of a request.
struct Answer {
  long status = 0;          // 0 when there was no answer
  std::string contentType;  // the header; empty when there is none
  std::string location;     // the header of a redirect (status 301, 302, 303, 307, 308)
  std::string failure;      // why there is no whole answer; empty when there is one
};

// Scheme, host and port of a URL: "https://example.com:8080".
std::string originOf(const std::string& url);

class Fetcher {
 public:
  // Receives the body of an answer with a status from 200 to 299, in pieces, decompressed. Returns
  // whether it could be kept.
  using Keep = std::function<bool(std::string_view piece)>;
  using Done = std::function<void(const Answer& answer)>;

  explicit Fetcher(const FetchOptions& options);
  Fetcher(const Fetcher&) = delete;
  Fetcher& operator=(const Fetcher&) = delete;
  ~Fetcher();

  // Asks for a URL, at once or when others are done. `done` is called from run(), once.
  // url   absolute, without a fragment; any other scheme than http and https fails
  void get(const std::string& url, Keep keep, Done done);

  // Returns when all requests are done, those too that were made meanwhile.
  void run();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace pagescan::tool

#endif
