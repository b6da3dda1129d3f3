#include "support/placement.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <new>

namespace pagescan::tests {
namespace {

std::size_t pageSize() {
  static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  return size;
}

std::size_t wholePages(std::size_t size) {
  const std::size_t page = pageSize();
  return (size + page - 1) / page * page;
}

}  // namespace

// Memory for one text: a heap block, or pages with an unreadable one at either end.
class Placement::Block {
 public:
  Block(Kind kind, std::size_t size) : kind_(kind), size_(size) {
    kind == kExactBlock ? takeFromHeap() : mapGuarded();
  }
  Block(const Block&) = delete;
  Block& operator=(const Block&) = delete;
  ~Block() {
    if (kind_ == kExactBlock) {
      std::free(mapping_);
    } else {
      munmap(mapping_, wholePages(size_) + 2 * pageSize());
    }
  }

  char* begin() const {
    if (kind_ == kExactBlock) return mapping_;
    char* const inner = mapping_ + pageSize();
    return kind_ == kAfterGuardPage ? inner : inner + wholePages(size_) - size_;
  }

 private:
  void takeFromHeap() {
    mapping_ = static_cast<char*>(std::malloc(size_));
    if (mapping_ == nullptr && size_ != 0) throw std::bad_alloc();
  }

  void mapGuarded() {
    const std::size_t inner = wholePages(size_);
    void* const all =
        mmap(nullptr, inner + 2 * pageSize(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (all == MAP_FAILED) throw std::bad_alloc();
    mapping_ = static_cast<char*>(all);
    if (inner != 0 && mprotect(mapping_ + pageSize(), inner, PROT_READ | PROT_WRITE) != 0) {
      munmap(all, inner + 2 * pageSize());
      throw std::bad_alloc();
    }
  }

  Kind kind_;
  std::size_t size_;
  char* mapping_ = nullptr;
};

Placement::Placement(Kind kind) : kind_(kind) {}

Placement::~Placement() {
  for (const auto& [string, destroy] : strings_) destroy(string);
}

const char* Placement::name() const {
  switch (kind_) {
    case kBeforeGuardPage:
      return "this row, its text before a guard page";
    case kAfterGuardPage:
      return "this row, its text after a guard page";
    default:
      return "this row, its text in an exact-size block";
  }
}

char* Placement::reserve(std::size_t size) {
  blocks_.push_back(std::make_unique<Block>(kind_, size));
  return blocks_.back()->begin();
}

std::string_view Placement::bytes(std::string_view text) {
  char* const place = reserve(text.size());
  if (!text.empty()) std::memcpy(place, text.data(), text.size());
  return {place, text.size()};
}

const char* Placement::cString(std::string_view text) {
  char* const place = reserve(text.size() + 1);
  if (!text.empty()) std::memcpy(place, text.data(), text.size());
  place[text.size()] = '\0';
  return place;
}

}  // namespace pagescan::tests
