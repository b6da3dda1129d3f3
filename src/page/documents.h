// The documents of a page: itself, those of srcdoc attributes, and noscript fragments, which belong
// to the document around them; and what their references resolve against.
#ifndef PAGESCAN_PAGE_DOCUMENTS_H
#define PAGESCAN_PAGE_DOCUMENTS_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/url.h"

namespace pagescan::internal {

// A document, or a noscript fragment. `ownUrl` and `url` are numbers for Documents::base().
struct Document {
  std::uint32_t parent;      // the tag that holds it, as Reference::parent
  std::uint32_t outer;       // the index of the document or fragment around it
  std::uint32_t owner;       // of a fragment the index of its document; else its own
  std::uint32_t ownUrl = 0;  // the document's own URL; of a srcdoc the base in force at its tag
  std::uint32_t url = 0;     // what its references resolve against
  std::uint8_t srcdocs = 0;  // how many srcdoc attributes it stands in
  std::uint8_t depth = 0;    // how many documents and fragments are around it
  bool hasBase = false;
  Reference base{};  // the first base element with a href
};

class Documents {
 public:
  // Of a page with this URL, which is the document 0.
  explicit Documents(std::string_view url);

  std::size_t size() const { return documents_.size(); }
  Document& operator[](std::size_t i) { return documents_[i]; }
  const Document& operator[](std::size_t i) const { return documents_[i]; }

  // Add what stands in the tag at `parent`, which comes after all tags that were named before.
  // Return its index.
  std::uint32_t addFragment(std::uint32_t parent, std::uint32_t outer);
  std::uint32_t addSrcdoc(std::uint32_t parent, std::uint32_t outer);

  // Drops all from an index on.
  void truncate(std::size_t size) { documents_.resize(size, Document{}); }

  // The one whose tag is `parent`, which was named. Logarithmic.
  const Document& of(std::uint32_t parent) const;
  const Document& ownerOf(std::uint32_t parent) const { return documents_[of(parent).owner]; }

  // Resolves all bases, when all are known; but those of documents in attributes only while that
  // takes no more than `room` bytes, the others when base() is asked for them. Each may be as long
  // as the one around it: together they would take the square of the page.
  // hrefOf   takes a reference of a base element and returns its value
  template <typename HrefOf>
  void resolveBases(std::size_t room, const HrefOf& hrefOf) {
    for (std::uint32_t i = 0; i < documents_.size(); ++i) {
      Document& document = documents_[i];
      if (document.owner != i) continue;
      if (i > 0) document.url = document.ownUrl = urlInForceAt(document.parent, document.outer);
      if (!document.hasBase) continue;
      if (i > 0 && !takeRoom(document, room)) {
        document.url = kLater | i;
      } else if (std::optional<Url> url = parsed(bases_[document.ownUrl], hrefOf(document.base))) {
        document.url = static_cast<std::uint32_t>(bases_.size());
        bases_.emplace_back(*std::move(url));
      }
    }
  }

  // The number of the URL that is in force at a tag of a document: a base element counts from its
  // own tag on.
  std::uint32_t urlInForceAt(std::uint32_t tag, std::uint32_t document) const;

  // The document's own URL, and what its links resolve against.
  const Base& ownBase() const { return bases_.front(); }
  const Base& linkBase() const { return bases_[documents_.front().url]; }

  // The URL of a number. One that was left for later is resolved into `storage`.
  // hrefOf   as above
  // Cost     constant; of one that was left, linear in the URLs around it
  template <typename HrefOf>
  const Base& base(std::uint32_t number, const HrefOf& hrefOf, Base& storage) const {
    if ((number & kLater) == 0) return bases_[number];
    const Document& document = documents_[number & ~kLater];
    Base outer;
    const Base& own = base(document.ownUrl, hrefOf, outer);
    std::optional<Url> url = parsed(own, hrefOf(document.base));
    storage = url ? Base(*std::move(url)) : own;
    return storage;
  }

 private:
  // In the number of a URL: that of a document whose base is resolved when it is asked for.
  static constexpr std::uint32_t kLater = 0x80000000;

  // What a base element makes of the URL before it; none where that stays.
  static std::optional<Url> parsed(const Base& own, std::string_view href);

  // Takes what the base of a document may take; false where that is more than there is.
  bool takeRoom(const Document& document, std::size_t& room) const;

  std::vector<Document> documents_;
  std::vector<Base> bases_;
};

}  // namespace pagescan::internal

#endif
