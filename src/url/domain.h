// Domain to ASCII (URL Standard, 3.3 "IDNA").
#ifndef PAGESCAN_URL_DOMAIN_H
#define PAGESCAN_URL_DOMAIN_H

#include <string>
#include <string_view>

namespace pagescan::internal {

// Appends the ASCII form of a domain in UTF-8, of which some byte may be malformed. False where it
// has none; what was appended then is of no use.
bool appendAsciiDomain(std::string& out, std::string_view domain);

}  // namespace pagescan::internal

#endif
