// A host that uses the library before its main() begins.
#include <cstdio>

#include "hosts/every_family.h"
#include "zkhtmloffsetparser.h"

namespace {

// Standard output is the library's own affair: nothing here includes <iostream>.
const char* useEverything() {
  CHTMLOffsetParser parser("http://h/");
  parser.ParseHTML("<img src=a>", 11);
  parser.PrintAll();
  return firstWrongFamily();
}

const char* const wrongFamily = useEverything();

}  // namespace

int main() {
  if (wrongFamily == nullptr) return 0;
  std::fprintf(stderr, "wrong before main(): %s\n", wrongFamily);
  return 1;
}
