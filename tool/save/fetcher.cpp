#include "save/fetcher.h"

#include <curl/curl.h>

#include <algorithm>
#include <deque>
#include <map>
#include <new>
#include <optional>
#include <unordered_map>
#include <utility>

#include "pagescan/url.h"
#include "save/transfer.h"

namespace pagescan::tool {

namespace {

constexpr std::size_t kMostOfHost = 6;  // as browsers do
constexpr std::size_t kMostAtOnce = 24;
constexpr int kLongestWait = 250;  // milliseconds, after which the clock is looked at

using Clock = std::chrono::steady_clock;

// Before any other thread can be: libcurl asks for that.
void startCurl() {
  static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (code != CURLE_OK) throw std::bad_alloc();
}

}  // namespace

std::string originOf(const std::string& url) {
  const std::optional<Url> parsed = Url::parse(url);
  if (!parsed || !parsed->host()) return "";
  std::string origin(parsed->scheme());
  origin.append("://").append(*parsed->host());
  if (parsed->port()) origin.append(":").append(*parsed->port());
  return origin;
}

class Fetcher::Impl {
 public:
  explicit Impl(const FetchOptions& options) : options_(options), run_{options_, nullptr, 0} {
    startCurl();
    multi_ = curl_multi_init();
    run_.cookies = curl_share_init();
    if (multi_ == nullptr || run_.cookies == nullptr) throw std::bad_alloc();
    curl_share_setopt(run_.cookies, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    curl_multi_setopt(multi_, CURLMOPT_PIPELINING, static_cast<long>(CURLPIPE_MULTIPLEX));
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    for (const auto& [handle, transfer] : running_) curl_multi_remove_handle(multi_, handle);
    running_.clear();
    curl_multi_cleanup(multi_);
    curl_share_cleanup(run_.cookies);
  }

  void get(const std::string& url, Keep keep, Done done) {
    hosts_[originOf(url)].waiting.push_back(
        std::make_unique<Transfer>(run_, url, std::move(keep), std::move(done)));
  }

  void run() {
    const Clock::time_point end = Clock::now() + options_.runTime;
    while (true) {
      startWaiting();
      if (running_.empty()) return;
      int count = 0;
      curl_multi_perform(multi_, &count);
      finishDone();
      if (Clock::now() >= end) {
        failAll("the run took its " + std::to_string(options_.runTime.count()) +
                " seconds (see --max-time)");
      } else if (count > 0) {
        curl_multi_poll(multi_, nullptr, 0, kLongestWait, nullptr);
      }
    }
  }

 private:
  struct Host {
    std::deque<std::unique_ptr<Transfer>> waiting;
    std::size_t running = 0;
  };

  void startWaiting() {
    for (auto at = hosts_.begin(); at != hosts_.end() && running_.size() < kMostAtOnce;) {
      Host& host = at->second;
      while (!host.waiting.empty() && host.running < kMostOfHost && running_.size() < kMostAtOnce) {
        start(std::move(host.waiting.front()));
        host.waiting.pop_front();
        ++host.running;
      }
      const bool isIdle = host.waiting.empty() && host.running == 0;
      at = isIdle ? hosts_.erase(at) : std::next(at);
    }
  }

  void start(std::unique_ptr<Transfer> transfer) {
    CURL* handle = transfer->start();
    curl_multi_add_handle(multi_, handle);
    running_.emplace(handle, std::move(transfer));
  }

  void finishDone() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
      if (message->msg != CURLMSG_DONE) continue;
      const CURLcode code = message->data.result;
      const std::unique_ptr<Transfer> transfer = take(message->easy_handle);
      transfer->tell(transfer->answer(code));
    }
  }

  std::unique_ptr<Transfer> take(CURL* handle) {
    curl_multi_remove_handle(multi_, handle);
    const auto found = running_.find(handle);
    std::unique_ptr<Transfer> transfer = std::move(found->second);
    running_.erase(found);
    --hosts_[originOf(transfer->url())].running;
    return transfer;
  }

  // Also of what is asked for while the failures are told.
  void failAll(const std::string& reason) {
    Answer answer;
    answer.failure = reason;
    while (!running_.empty()) take(running_.begin()->first)->tell(answer);
    while (!hosts_.empty()) {
      const auto host = hosts_.begin();
      if (host->second.waiting.empty()) {
        hosts_.erase(host);
        continue;
      }
      const std::unique_ptr<Transfer> transfer = std::move(host->second.waiting.front());
      host->second.waiting.pop_front();
      transfer->tell(answer);
    }
  }

  FetchOptions options_;
  CURLM* multi_ = nullptr;
  TransferRun run_;
  std::map<std::string, Host> hosts_;
  std::unordered_map<CURL*, std::unique_ptr<Transfer>> running_;
};

Fetcher::Fetcher(const FetchOptions& options) : impl_(std::make_unique<Impl>(options)) {}
Fetcher::~Fetcher() = default;

void Fetcher::get(const std::string& url, Keep keep, Done done) {
  impl_->get(url, std::move(keep), std::move(done));
}

void Fetcher::run() {
  impl_->run();
}

}  // namespace pagescan::tool
