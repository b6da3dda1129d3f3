// Transfer: one request of a Fetcher on its way.
#ifndef PAGESCAN_TOOL_SAVE_TRANSFER_H
#define PAGESCAN_TOOL_SAVE_TRANSFER_H

#include <curl/curl.h>

#include <cstddef>
#include <memory>
#include <string>

#include "save/fetcher.h"

namespace pagescan::tool {

// What all transfers of a fetcher have in common.
struct TransferRun {
  const FetchOptions& options;
  CURLSH* cookies;
  std::uint64_t bytes = 0;  // of all bodies so far
};

class Transfer {
 public:
  Transfer(TransferRun& run, std::string url, Fetcher::Keep keep, Fetcher::Done done);
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;
  ~Transfer() = default;

  const std::string& url() const { return url_; }

  // A handle that is ready to be added to a multi handle; it belongs to the transfer.
  CURL* start();

  // What came of it, once the handle is done with this code.
  Answer answer(CURLcode code);

  // Tells the one who asked.
  void tell(const Answer& answer) const { done_(answer); }

 private:
  template <typename Value>
  void set(CURLoption option, Value value) {
    curl_easy_setopt(handle_.get(), option, value);
  }
  void setNetwork();
  void setRequest();
  std::string header(const char* name) const;
  long status() const;
  bool keep(std::string_view piece);

  static std::size_t onBody(char* bytes, std::size_t one, std::size_t count, void* transfer);
  static curl_socket_t onSocket(void* transfer, curlsocktype purpose, curl_sockaddr* address);

  struct FreeHandle {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };
  struct FreeList {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  TransferRun& run_;
  std::string url_;
  Fetcher::Keep keep_;
  Fetcher::Done done_;
  std::unique_ptr<curl_slist, FreeList> headers_;
  std::unique_ptr<CURL, FreeHandle> handle_;
  std::uint64_t bytes_ = 0;
  std::string failure_;  // why we ended it ourselves
  std::string refusal_;  // of an address; another one of the same host may do
};

}  // namespace pagescan::tool

#endif
