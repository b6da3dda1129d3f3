// IPv4 and IPv6 addresses as hosts (URL Standard, 3.5 "Host parsing", 3.6 "Host serializing").
#ifndef PAGESCAN_URL_IP_ADDRESS_H
#define PAGESCAN_URL_IP_ADDRESS_H

#include <string>
#include <string_view>

namespace pagescan::internal {

// Whether a domain is to be read as an IPv4 address: its last label, but for one empty one, is a
// number ("ends in a number checker").
bool endsInNumber(std::string_view domain);

// Appends the address in its usual form. False where the text is none; nothing is appended then.
bool appendIpv4(std::string& out, std::string_view text);

// The same for an address without its brackets; they are written around the result.
bool appendIpv6(std::string& out, std::string_view text);

}  // namespace pagescan::internal

#endif
