// How GoogleTest shows the library's strings in messages.
#ifndef PAGESCAN_TESTS_SUPPORT_PRINTING_H
#define PAGESCAN_TESTS_SUPPORT_PRINTING_H

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "rw/rwcstring.h"

// Found by argument-dependent lookup, so it stands beside the class.
inline void PrintTo(const RWCString& text, std::ostream* out) {
  *out << testing::PrintToString(std::string(text.data(), text.length()));
}

#endif
