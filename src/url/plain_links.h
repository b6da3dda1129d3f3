// The fast path for what nearly all links are.
#ifndef PAGESCAN_URL_PLAIN_LINKS_H
#define PAGESCAN_URL_PLAIN_LINKS_H

#include <string>
#include <string_view>

#include "pagescan/url.h"

namespace pagescan::internal {

// A link is plain when the URL that it means is a beginning of the base and then the link itself,
// byte for byte. It is ASCII, has nothing that is dropped, percent-encoded or changed to "/", and
// no dot segment. What it begins with says how much of the base comes first:
//
//   https://host/...   nothing; the host is in lower case, and is a name without a port
//   name:...           nothing, for a scheme without rules of its own and no slash after it
//   //host/...         the scheme
//   /...               all before the path
//   ?...               all before the query
//   #..., nothing      all before the fragment
//   any other          all up to the last "/" of the path
//
// The last five take a base with http or https.
class PlainLinks {
 public:
  explicit PlainLinks(const Base& base) : base_(base) {}

  // Writes the URL that a plain link means, and returns true; any other link gives false and leaves
  // `out` alone: the parser must decide. Both give the same for every link (plain_links_test).
  // out    its content is replaced. No part of the other arguments.
  // Cost   allocates nothing but what `out` needs
  bool resolve(std::string& out, std::string_view url) const;

 private:
  // How many bytes of the base come first; kNotPlain where the first bytes rule out a plain link.
  static constexpr std::size_t kNotPlain = static_cast<std::size_t>(-1);
  std::size_t prefixFor(std::string_view url) const;
  std::size_t prefixForRelative(std::string_view url) const;

  const Base& base_;
};

}  // namespace pagescan::internal

#endif
