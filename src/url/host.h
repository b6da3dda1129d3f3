// Hosts (URL Standard, 3.5 "Host parsing").
#ifndef PAGESCAN_URL_HOST_H
#define PAGESCAN_URL_HOST_H

#include <string>
#include <string_view>

namespace pagescan::internal {

// Appends the serialised host of a URL: an IPv6 address in brackets, and in special URLs a domain
// or an IPv4 address, in others an opaque host. False where the text is none; what was appended
// then is of no use.
// text   well-formed UTF-8; not empty in a special URL
bool appendHost(std::string& out, std::string_view text, bool isSpecial);

}  // namespace pagescan::internal

#endif
