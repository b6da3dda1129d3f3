// The fast path for what nearly all links are.
#ifndef PAGESCAN_URL_PLAIN_LINKS_H
#define PAGESCAN_URL_PLAIN_LINKS_H

#include <string>
#include <string_view>

#include "base/kernels.h"
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
// The last five take a base with http or https. After a host at the end of the link comes a "/".
class PlainLinks {
 public:
  explicit PlainLinks(const Base& base) : base_(base) {}

  // Writes the URL that a plain link means, and returns true; any other link gives false and leaves
  // `out` alone: the parser must decide. Both give the same for every link (plain_links_test).
  // out    its content is replaced. No part of the other arguments.
  // Cost   allocates nothing but what `out` needs
  bool resolve(std::string& out, std::string_view url) const { return write(out, url, true); }

  // The same for a link as markup and style text write it, in which "&" may begin a character
  // reference: with one it is not plain. All other bytes of plain links spell themselves.
  bool resolveWritten(std::string& out, std::string_view raw) const {
    return write(out, raw, false);
  }

 private:
  // What comes around a link. The prefix is how many bytes of the base come before it; kNotPlain
  // where the first bytes rule out a plain link.
  struct Frame {
    std::size_t prefix;
    bool lacksPath = false;  // a "/" comes after it
  };
  static constexpr std::size_t kNotPlain = static_cast<std::size_t>(-1);

  // bytes   the first ones of the link
  Frame frameOf(std::string_view url, const UrlBytes& bytes) const;
  Frame frameOfRelative(std::string_view url, const UrlBytes& bytes) const;
  static Frame frameAfterHost(std::string_view url, const UrlBytes& bytes, std::size_t host,
                              std::size_t prefix);
  bool write(std::string& out, std::string_view url, bool keepsAmpersands) const;

  const Base& base_;
};

}  // namespace pagescan::internal

#endif
