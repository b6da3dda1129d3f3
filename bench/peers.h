// What a user would pick instead of the library, each peer in a source of its own (peers/), which
// is compiled where its package is installed.
#ifndef PAGESCAN_BENCH_PEERS_H
#define PAGESCAN_BENCH_PEERS_H

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::bench {

// A piece of work over one text, which a NUL follows. The result is whatever proves it was done.
using TextWork = std::size_t (*)(std::string_view text);

// Resolves a link against a base that was read once.
using Resolve = std::function<std::size_t(std::string_view link)>;

// Decodes a text.
using Decode = std::function<std::size_t(std::string_view text)>;

// Only what a peer offers is set.
struct Peer {
  std::string name;
  TextWork parsePage = nullptr;   // finds the page's links, or makes its tree, and frees all
  TextWork parseStyle = nullptr;  // finds the style sheet's URLs
  Resolve (*resolver)(const std::string& base) = nullptr;
  TextWork encode = nullptr;  // percent-encodes
  TextWork decode = nullptr;  // percent-decodes
  TextWork checkUtf8 = nullptr;
  TextWork latin1ToUtf8 = nullptr;
  TextWork utf8ToLatin1 = nullptr;
  Decode (*decoder)(const std::string& encoding) = nullptr;  // to UTF-8; the standard's name
  TextWork blankScripts = nullptr;                           // removes script bodies and comments
  TextWork skipHandlers = nullptr;                           // empties onload and its like
};

// Where the character of UTF-8 at `at` ends: conversions stop at one that has no place in the other
// set, and go on after it.
inline std::size_t characterEnd(std::string_view text, std::size_t at) {
  do {
    ++at;
  } while (at < text.size() && (text[at] & 0xC0) == 0x80);
  return at;
}

// Those that are installed. A peer adds itself while the program is loaded.
std::vector<Peer>& peers();

struct PeerRegistration {
  explicit PeerRegistration(Peer peer);
};

}  // namespace pagescan::bench

#endif
