// CTQBuffPart: a slice of somebody else's bytes, compared without being copied.
#ifndef PAGESCAN_TQBUFFPART_H
#define PAGESCAN_TQBUFFPART_H

#include <cstddef>

#include "pagescan_export.h"
#include "rw/rwcollectable.h"
#include "rw/rwcstring.h"

namespace nTarn {

// The standard strncasecmp: compares up to `n` bytes, stopping at a NUL, ignoring case.
PAGESCAN_EXPORT int g_strnicmp(const char* a, const char* b, std::size_t n);

}  // namespace nTarn

// Start, offset and length of a borrowed text, or a copy of its own once one was asked for.
// Offsets and lengths are in bytes. Nothing is checked: the caller passes valid slices and keeps
// the borrowed bytes alive. One thread at a time.
class PAGESCAN_EXPORT CTQBuffPart : public RWCollectable {
 public:
  CTQBuffPart() = default;
  CTQBuffPart(const CTQBuffPart&) = delete;
  CTQBuffPart& operator=(const CTQBuffPart&) = delete;
  ~CTQBuffPart() override;

  // Back to an empty slice; frees the copy.
  void resetPart();

  // Borrows `length` bytes at `buffer` + `offset`; frees the copy. Copies nothing.
  void setPart(const char* buffer, int offset, int length);

  // Becomes a copy of the NUL-terminated `text`.
  void updatePart(const char* text);

  // The slice as it stands; allocates nothing.
  void getPart(const char** text, int* length);

  // The slice as a NUL-terminated text, ended and zero-filled from the first NUL inside it. Made
  // once, kept by the part: the caller must not free it.
  char* getPart();

  // Below, at or above 0 as the slice sorts before, with or after the text; a slice that is a
  // prefix of the text sorts first. Bytes are compared as strncmp or strncasecmp do, up to the
  // shorter of the two and to the first NUL; then the longer one sorts last.
  // Cost    linear in the shorter of the two.
  int compare(const char* text, int textLength, bool ignoreCase);
  int compare(const char* text, bool ignoreCase);
  int compare(RWCString& text, bool ignoreCase);
  int compare(CTQBuffPart& other, bool ignoreCase);

 private:
  const char* buffer = nullptr;
  char* ownedCopy = nullptr;
  int offset = 0;
  int length = 0;
};

#endif
