// libcurl: resolves, escapes and unescapes.
#include <curl/curl.h>

#include <memory>
#include <string>

#include "peers.h"

namespace pagescan::bench {
namespace {

Resolve resolver(const std::string& base) {
  const std::shared_ptr<CURLU> parsed(curl_url(), curl_url_cleanup);
  curl_url_set(parsed.get(), CURLUPART_URL, base.c_str(), 0);
  return [parsed](std::string_view link) {
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url_dup(parsed.get()),
                                                                  curl_url_cleanup);
    char* result = nullptr;
    curl_url_set(url.get(), CURLUPART_URL, link.data(), CURLU_NON_SUPPORT_SCHEME);
    curl_url_get(url.get(), CURLUPART_URL, &result, 0);
    curl_free(result);
    return std::size_t{1};
  };
}

std::size_t encode(std::string_view text) {
  curl_free(curl_easy_escape(nullptr, text.data(), static_cast<int>(text.size())));
  return 1;
}

std::size_t decode(std::string_view text) {
  int length = 0;
  curl_free(curl_easy_unescape(nullptr, text.data(), static_cast<int>(text.size()), &length));
  return static_cast<std::size_t>(length);
}

const PeerRegistration kLibcurl(
    {.name = "libcurl", .resolver = resolver, .encode = encode, .decode = decode});

}  // namespace
}  // namespace pagescan::bench
