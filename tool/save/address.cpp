#include "save/address.h"

#include <netinet/in.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>

namespace pagescan::tool {

namespace {

using Bytes = std::array<std::uint8_t, 16>;  // an IPv4 address fills the first four

struct Block {
  Bytes bytes;
  unsigned bits;  // the first ones, which all addresses of the block have in common
};

constexpr Block kNotPublic4[] = {
    {{0}, 8},              // this network
    {{10}, 8},             // private
    {{100, 64}, 10},       // shared by customers of a provider
    {{127}, 8},            // this machine
    {{169, 254}, 16},      // link-local; what clouds tell their machines
    {{172, 16}, 12},       // private
    {{192, 0, 0}, 24},     // protocol assignments
    {{192, 0, 2}, 24},     // documentation
    {{192, 88, 99}, 24},   // relays of 6to4
    {{192, 168}, 16},      // private
    {{198, 18}, 15},       // benchmarks
    {{198, 51, 100}, 24},  // documentation
    {{203, 0, 113}, 24},   // documentation
    {{224}, 4},            // groups
    {{240}, 4},            // reserved, and broadcast
};

// Of what is global at all, 2000::/3.
constexpr Block kGlobal6 = {{0x20}, 3};
constexpr Block kNotPublic6[] = {
    {{0x20, 0x01, 0x00}, 23},        // protocol assignments, Teredo
    {{0x20, 0x01, 0x0D, 0xB8}, 32},  // documentation
    {{0x3F, 0xFF, 0x00}, 20},        // documentation
};

struct Embedding {
  Block block;
  std::size_t at;  // where the IPv4 address stands
};

constexpr Embedding kEmbeddings[] = {
    {{{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF}, 96}, 12},  // ::ffff:a.b.c.d
    {{{0, 0x64, 0xFF, 0x9B}, 96}, 12},                       // NAT64
    {{{0x20, 0x02}, 16}, 2},                                 // 6to4
};

bool isIn(const Block& block, const Bytes& address) {
  const std::size_t whole = block.bits / 8;
  if (!std::equal(block.bytes.begin(), block.bytes.begin() + whole, address.begin())) return false;
  const unsigned rest = block.bits % 8;
  return rest == 0 || ((block.bytes[whole] ^ address[whole]) >> (8 - rest)) == 0;
}

bool isPublic4(const Bytes& address) {
  return std::none_of(std::begin(kNotPublic4), std::end(kNotPublic4),
                      [&](const Block& block) { return isIn(block, address); });
}

bool isPublic6(const Bytes& address) {
  for (const Embedding& embedding : kEmbeddings) {
    if (!isIn(embedding.block, address)) continue;
    Bytes embedded = {};
    std::copy_n(address.begin() + embedding.at, 4, embedded.begin());
    return isPublic4(embedded);
  }
  return isIn(kGlobal6, address) &&
         std::none_of(std::begin(kNotPublic6), std::end(kNotPublic6),
                      [&](const Block& block) { return isIn(block, address); });
}

}  // namespace

bool isPublicAddress(const sockaddr& address) {
  Bytes bytes = {};
  if (address.sa_family == AF_INET) {
    sockaddr_in ipv4 = {};
    std::memcpy(&ipv4, &address, sizeof ipv4);
    std::memcpy(bytes.data(), &ipv4.sin_addr, 4);
    return isPublic4(bytes);
  }
  if (address.sa_family == AF_INET6) {
    sockaddr_in6 ipv6 = {};
    std::memcpy(&ipv6, &address, sizeof ipv6);
    std::memcpy(bytes.data(), &ipv6.sin6_addr, 16);
    return isPublic6(bytes);
  }
  return false;
}

}  // namespace pagescan::tool
