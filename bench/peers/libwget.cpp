// libwget: finds links in pages and style sheets, resolves and decodes.
// The header is written for C.
#define restrict __restrict
#include <wget.h>
#undef restrict

#include <memory>
#include <string>

#include "peers.h"

namespace pagescan::bench {
namespace {

std::size_t parsePage(std::string_view page) {
  wget_html_parsed_result_t* result = wget_html_get_urls_inline(page.data(), nullptr, nullptr);
  const auto found = static_cast<std::size_t>(wget_vector_size(result->uris));
  wget_html_free_urls_inline(&result);
  return found;
}

std::size_t parseStyle(std::string_view sheet) {
  std::size_t found = 0;
  const auto count = [](void* context, const char*, std::size_t, std::size_t) {
    ++*static_cast<std::size_t*>(context);
  };
  wget_css_parse_buffer(sheet.data(), sheet.size(), count, nullptr, &found);
  return found;
}

Resolve resolver(const std::string& base) {
  struct Base {
    explicit Base(const std::string& url) : iri(wget_iri_parse(url.c_str(), nullptr)) {
      wget_buffer_init(&result, nullptr, 1024);
    }
    Base(const Base&) = delete;
    Base& operator=(const Base&) = delete;
    ~Base() {
      wget_iri_free(&iri);
      wget_buffer_deinit(&result);
    }
    wget_iri_t* iri;
    wget_buffer_t result;
  };
  const auto parsed = std::make_shared<Base>(base);
  return [parsed](std::string_view link) {
    wget_buffer_reset(&parsed->result);
    wget_iri_relative_to_abs(parsed->iri, link.data(), link.size(), &parsed->result);
    return parsed->result.length;
  };
}

std::size_t decode(std::string_view text) {
  std::string copy(text);
  wget_percent_unescape(copy.data());
  return copy.size();
}

std::size_t encode(std::string_view text) {
  wget_buffer_t result;
  wget_buffer_init(&result, nullptr, 0);
  wget_iri_escape(text.data(), &result);
  const std::size_t length = result.length;
  wget_buffer_deinit(&result);
  return length;
}

const PeerRegistration kLibwget({.name = "libwget",
                                 .parsePage = parsePage,
                                 .parseStyle = parseStyle,
                                 .resolver = resolver,
                                 .encode = encode,
                                 .decode = decode});

}  // namespace
}  // namespace pagescan::bench
