#include "save/transfer.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "save/address.h"

namespace pagescan::tool {

namespace {

constexpr long kRedirects[] = {301, 302, 303, 307, 308};
constexpr long kConnectSeconds = 20;

std::string shown(const curl_sockaddr& address) {
  std::array<char, NI_MAXHOST> text = {};
  ::getnameinfo(&address.addr, address.addrlen, text.data(), text.size(), nullptr, 0,
                NI_NUMERICHOST);
  return text.data();
}

}  // namespace

Transfer::Transfer(TransferRun& run, std::string url, Fetcher::Keep keep, Fetcher::Done done)
    : run_(run), url_(std::move(url)), keep_(std::move(keep)), done_(std::move(done)) {}

CURL* Transfer::start() {
  handle_.reset(curl_easy_init());
  if (!handle_) throw std::bad_alloc();
  setNetwork();
  setRequest();
  return handle_.get();
}

void Transfer::setNetwork() {
  set(CURLOPT_PRIVATE, this);
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_PROXY, "");
  set(CURLOPT_PROTOCOLS_STR, "http,https");
  set(CURLOPT_FOLLOWLOCATION, 0L);
  set(CURLOPT_SHARE, run_.cookies);
  set(CURLOPT_COOKIEFILE, "");  // cookies are read and sent, none are loaded
  set(CURLOPT_OPENSOCKETFUNCTION, &Transfer::onSocket);
  set(CURLOPT_OPENSOCKETDATA, this);
  set(CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
  set(CURLOPT_TIMEOUT, static_cast<long>(run_.options.requestTime.count()));
  if (!run_.options.certificates.empty()) {
    set(CURLOPT_CAINFO, run_.options.certificates.c_str());
  }
}

void Transfer::setRequest() {
  set(CURLOPT_URL, url_.c_str());
  set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_2TLS));
  set(CURLOPT_PIPEWAIT, 1L);         // rather a stream of a connection than one more
  set(CURLOPT_ACCEPT_ENCODING, "");  // all that libcurl can decompress
  set(CURLOPT_USERAGENT, run_.options.userAgent.c_str());
  set(CURLOPT_WRITEFUNCTION, &Transfer::onBody);
  set(CURLOPT_WRITEDATA, this);
  if (originOf(url_) != run_.options.headersOrigin) return;
  for (const std::string& line : run_.options.headers) {
    curl_slist* longer = curl_slist_append(headers_.get(), line.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    headers_.release();
    headers_.reset(longer);
  }
  set(CURLOPT_HTTPHEADER, headers_.get());
}

// The address is the one that is connected to, so that no name can change its mind in between.
curl_socket_t Transfer::onSocket(void* transfer, curlsocktype purpose, curl_sockaddr* address) {
  auto& self = *static_cast<Transfer*>(transfer);
  const bool isAllowed = self.run_.options.allowsPrivate || isPublicAddress(address->addr);
  if (purpose != CURLSOCKTYPE_IPCXN || !isAllowed) {
    self.refusal_ = "the address " + shown(*address) + " is not public (see --allow-private)";
    return CURL_SOCKET_BAD;
  }
  return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

std::size_t Transfer::onBody(char* bytes, std::size_t /*one*/, std::size_t count, void* transfer) {
  return static_cast<Transfer*>(transfer)->keep({bytes, count}) ? count : count + 1;
}

bool Transfer::keep(std::string_view piece) {
  const FetchOptions& options = run_.options;
  const long code = status();
  bytes_ += piece.size();
  run_.bytes += piece.size();
  if (bytes_ > options.mostBytes) {
    failure_ = "larger than " + std::to_string(options.mostBytes) + " bytes (see --max-size)";
  } else if (run_.bytes > options.mostRunBytes) {
    failure_ =
        "the run has its " + std::to_string(options.mostRunBytes) + " bytes (see --max-total)";
  } else if (code >= 200 && code < 300 && !keep_(piece)) {
    failure_ = "cannot be kept";
  }
  return failure_.empty();
}

long Transfer::status() const {
  long code = 0;
  curl_easy_getinfo(handle_.get(), CURLINFO_RESPONSE_CODE, &code);
  return code;
}

std::string Transfer::header(const char* name) const {
  curl_header* found = nullptr;
  const CURLHcode code = curl_easy_header(handle_.get(), name, 0, CURLH_HEADER, -1, &found);
  return code == CURLHE_OK ? found->value : "";
}

Answer Transfer::answer(CURLcode code) {
  Answer answer;
  answer.status = status();
  if (code == CURLE_OK) {
    answer.contentType = header("Content-Type");
    const bool isRedirect = std::find(std::begin(kRedirects), std::end(kRedirects),
                                      answer.status) != std::end(kRedirects);
    if (isRedirect) answer.location = header("Location");
  } else {
    answer.failure = code == CURLE_COULDNT_CONNECT ? refusal_ : failure_;
    if (answer.failure.empty()) answer.failure = curl_easy_strerror(code);
  }
  return answer;
}

}  // namespace pagescan::tool
