// A slow, plain twin of the URL parser: the algorithms of the URL Standard, step by step, over
// vectors of code points, with the standard's own names.
#ifndef PAGESCAN_TESTS_REFERENCE_URL_URL_H
#define PAGESCAN_TESTS_REFERENCE_URL_URL_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "encoding/encoding.h"

namespace reference {

using CodePoints = std::u32string;

// 4.1 "URL representation".
struct UrlRecord {
  CodePoints scheme, username, password;
  std::optional<CodePoints> host;  // serialised
  std::optional<unsigned> port;
  bool hasOpaquePath = false;
  CodePoints opaquePath;
  std::vector<CodePoints> path;
  std::optional<CodePoints> query, fragment;
};

// 4.4 "basic URL parser" without a state override; base may be nullptr.
std::optional<UrlRecord> parseUrl(std::string_view bytes, const UrlRecord* base,
                                  pagescan::internal::Encoding encoding);

// 4.5 "URL serializer".
std::string serialize(const UrlRecord& url);

// 3.5 "host parser", with the host serialised.
std::optional<CodePoints> parseHost(const CodePoints& input, bool isOpaque);

// 3.3 "domain to ASCII", beStrict false.
std::optional<CodePoints> domainToAscii(const CodePoints& domain);

// UTS #46, 4.2 "ToASCII", with the options of the above.
std::optional<CodePoints> unicodeToAscii(const CodePoints& domain);

// Unicode's Normalization Form C.
CodePoints toNfc(const CodePoints& text);

// RFC 3492.
std::optional<CodePoints> encodePunycode(const CodePoints& input);
std::optional<CodePoints> decodePunycode(const CodePoints& input);

}  // namespace reference

#endif
