// Passes over texts that most jobs need: their yardsticks, and one work done to each text.
#ifndef PAGESCAN_BENCH_YARDSTICKS_H
#define PAGESCAN_BENCH_YARDSTICKS_H

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "input.h"
#include "job.h"
#include "peers.h"

namespace pagescan::bench {

// A pass that does `work` to each text, given as the string_view or RWCString that it takes.
template <typename Work>
Pass forEachOf(const Texts& texts, Work work) {
  return [&texts, work]() mutable {
    std::size_t result = 0;
    for (const RWCString& text : texts) result += work(text);
    return result;
  };
}

inline Pass forEachOf(const Texts& texts, TextWork work) {
  return forEachOf(texts, [work](const RWCString& text) {
    return work(std::string_view(text.data(), text.length()));
  });
}

// memchr from one `byte` to the next.
inline Pass memchrOver(const Texts& texts, char byte) {
  return forEachOf(texts, [byte](const RWCString& text) {
    std::size_t found = 0;
    const char* const end = text.data() + text.length();
    for (const char* at = text.data(); at != end; ++at, ++found) {
      at = static_cast<const char*>(std::memchr(at, byte, static_cast<std::size_t>(end - at)));
      if (at == nullptr) break;
    }
    return found;
  });
}

// memcpy of each text to a buffer that stands ready.
inline Pass memcpyOf(const Texts& texts) {
  std::size_t longest = 0;
  for (const RWCString& text : texts) longest = std::max(longest, text.length());
  return forEachOf(texts, [buffer = std::vector<char>(longest)](const RWCString& text) mutable {
    std::memcpy(buffer.data(), text.data(), text.length());
    benchmark::ClobberMemory();
    return text.length();
  });
}

// Adds the peers that can do a piece of work over a text.
inline void addPeers(Job& job, const Texts& texts, TextWork Peer::*work) {
  for (const Peer& peer : peers()) {
    if (peer.*work != nullptr) job.contender(peer.name, forEachOf(texts, peer.*work));
  }
}

}  // namespace pagescan::bench

#endif
