#include "tqbuffpart.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "base/search.h"

namespace nTarn {

int g_strnicmp(const char* a, const char* b, std::size_t n) {
  return pagescan::internal::compareIgnoringCase(a, b, n);
}

}  // namespace nTarn

namespace {

char* allocate(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  return static_cast<char*>(memory);
}

// The bytes of nothing may be null, which the standard comparison must not be given.
int compareBytes(const char* a, const char* b, int length, bool ignoreCase) {
  if (length == 0) return 0;
  const auto count = static_cast<std::size_t>(length);
  return ignoreCase ? nTarn::g_strnicmp(a, b, count) : std::strncmp(a, b, count);
}

}  // namespace

CTQBuffPart::~CTQBuffPart() {
  std::free(ownedCopy);
}

void CTQBuffPart::resetPart() {
  setPart(nullptr, 0, 0);
}

void CTQBuffPart::setPart(const char* newBuffer, int newOffset, int newLength) {
  std::free(ownedCopy);
  ownedCopy = nullptr;
  buffer = newBuffer;
  offset = newOffset;
  length = newLength;
}

void CTQBuffPart::updatePart(const char* text) {
  // Copied before the old copy goes: the text may be this part's own.
  const std::size_t textLength = std::strlen(text);
  char* copied = allocate(textLength + 1);
  std::memcpy(copied, text, textLength + 1);
  std::free(ownedCopy);
  ownedCopy = copied;
  offset = 0;
  length = static_cast<int>(textLength);
}

void CTQBuffPart::getPart(const char** text, int* textLength) {
  *text = ownedCopy != nullptr ? ownedCopy : buffer + offset;
  *textLength = length;
}

char* CTQBuffPart::getPart() {
  if (ownedCopy != nullptr) return ownedCopy;
  const auto size = static_cast<std::size_t>(length);
  char* copied = allocate(size + 1);
  if (size > 0) std::strncpy(copied, buffer + offset, size);
  copied[size] = '\0';
  ownedCopy = copied;
  return ownedCopy;
}

int CTQBuffPart::compare(const char* text, int textLength, bool ignoreCase) {
  const char* own = nullptr;
  int ownLength = 0;
  getPart(&own, &ownLength);
  const int result = compareBytes(own, text, std::min(ownLength, textLength), ignoreCase);
  if (result != 0 || ownLength == textLength) return result;
  return ownLength < textLength ? -1 : 1;
}

int CTQBuffPart::compare(const char* text, bool ignoreCase) {
  return compare(text, static_cast<int>(std::strlen(text)), ignoreCase);
}

int CTQBuffPart::compare(RWCString& text, bool ignoreCase) {
  return compare(text.data(), static_cast<int>(text.length()), ignoreCase);
}

int CTQBuffPart::compare(CTQBuffPart& other, bool ignoreCase) {
  const char* text = nullptr;
  int textLength = 0;
  other.getPart(&text, &textLength);
  return compare(text, textLength, ignoreCase);
}
