// RWCRegexp: a pattern compiled once, then only read; used through RWCString's searches.
//
// Language   literal bytes; classes in brackets with ranges ("[a-z0-9]"); "\t", "\r", "\n" for the
//            control characters and a backslash before any other byte for that byte, inside and
//            outside classes; "*", "+" and "?" after a byte or a class; "^" before all for
//            the start of the text searched. Nothing else is special: "." and a "^" elsewhere are
//            literal bytes. An operator with nothing before it and a backslash with nothing after
//            it are literal bytes, an unclosed class ends with the pattern.
// Matches    are leftmost, then longest.
// Cost       linear in the text, whatever the text: nothing is ever tried again.
// Threads    a pattern may be searched with on any number of threads at once.
#ifndef PAGESCAN_RW_RWCREGEXP_H
#define PAGESCAN_RW_RWCREGEXP_H

#include <cstddef>
#include <memory>

#include "../pagescan_export.h"

class RWCString;

class PAGESCAN_EXPORT RWCRegexp {
 public:
  // Compiles `pattern`, which is not kept; a null pointer counts as an empty pattern, which
  // matches everywhere.
  explicit RWCRegexp(const char* pattern);
  RWCRegexp(const RWCRegexp& other);
  RWCRegexp(RWCRegexp&& other) noexcept;
  RWCRegexp& operator=(RWCRegexp other) noexcept;
  ~RWCRegexp();

 private:
  friend class RWCString;
  struct Program;

  std::unique_ptr<Program> program_;
};

#endif
