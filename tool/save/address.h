// Which addresses of the network a saved page may make the program connect to.
#ifndef PAGESCAN_TOOL_SAVE_ADDRESS_H
#define PAGESCAN_TOOL_SAVE_ADDRESS_H

#include <sys/socket.h>

namespace pagescan::tool {

// Whether an address belongs to the public Internet: not to this machine, a local network, a
// documentation range or a group. An IPv6 address that stands for an IPv4 one counts as that one.
// What is neither IPv4 nor IPv6 is not public.
// Source  IANA's registries of special-purpose addresses (RFC 6890)
bool isPublicAddress(const sockaddr& address);

}  // namespace pagescan::tool

#endif
