#include <cstdio>

#include "hostroutines.h"

// Weak, and in an object of its own, so that a host's definition wins in every kind of link.
[[gnu::weak]] void pagescanLogError(const char* message) {
  std::fprintf(stderr, "%s\n", message);
}
