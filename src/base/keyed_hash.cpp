#include "base/keyed_hash.h"

#include <sys/random.h>

#include <bit>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace pagescan::internal {
namespace {

struct Secret {
  std::uint64_t first;
  std::uint64_t second;
};

// Where the system has no random bytes to give yet, early in its start, what is left of an address
// and of the time has to do.
Secret drawSecret() noexcept {
  Secret secret{0, 0};
  secret.first = std::bit_cast<std::uintptr_t>(&secret);
  secret.second =
      static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
  [[maybe_unused]] const auto drawn = ::getrandom(&secret, sizeof secret, GRND_NONBLOCK);
  return secret;
}

const Secret& secretOfTheProcess() noexcept {
  static const Secret drawn = drawSecret();
  return drawn;
}

// Both halves of the product of two words: every bit of either changes about half of the result.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Product = unsigned __int128;
  const Product product = static_cast<Product>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

struct Block {
  std::uint64_t low = 0;
  std::uint64_t high = 0;
};

}  // namespace

unsigned keyedHash(std::string_view bytes) noexcept {
  const Secret& secret = secretOfTheProcess();
  std::uint64_t sum = mixed(secret.first ^ bytes.size(), secret.second);
  while (!bytes.empty()) {
    Block block;
    const std::size_t length = bytes.size() < sizeof block ? bytes.size() : sizeof block;
    std::memcpy(&block, bytes.data(), length);
    sum = mixed(block.low ^ secret.first, block.high ^ sum);
    bytes.remove_prefix(length);
  }
  return static_cast<unsigned>(mixed(sum ^ secret.second, secret.first));
}

}  // namespace pagescan::internal
