// The documents of a page: itself, those of srcdoc attributes, and noscript fragments, which belong
// to the document around them; and what their references resolve against.
#ifndef PAGESCAN_PAGE_DOCUMENTS_H
#define PAGESCAN_PAGE_DOCUMENTS_H

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "pagescan/page.h"
#include "pagescan/url.h"

namespace pagescan::internal {

// A document, or a noscript fragment. `ownUrl` and `url` are numbers of Documents::base.
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

  // Resolves all bases, when all are known.
  // hrefOf   takes a reference of a base element and returns its value
  template <typename HrefOf>
  void resolveBases(const HrefOf& hrefOf) {
    for (std::size_t i = 0; i < documents_.size(); ++i) {
      Document& document = documents_[i];
      if (document.owner != i) continue;
      if (i > 0) document.url = document.ownUrl = urlInForceAt(document.parent, document.outer);
      if (document.hasBase) setBase(document, hrefOf(document.base));
    }
  }

  // The number of the URL that is in force at a tag of a document: a base element counts from its
  // own tag on.
  std::uint32_t urlInForceAt(std::uint32_t tag, std::uint32_t document) const;

  const Base& base(std::uint32_t number) const { return bases_[number]; }

 private:
  void setBase(Document& document, std::string_view href);

  std::vector<Document> documents_;
  std::vector<Base> bases_;
};

}  // namespace pagescan::internal

#endif
