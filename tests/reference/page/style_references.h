// The URLs of a style text, each with what it is for.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_STYLE_REFERENCES_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_STYLE_REFERENCES_H

#include <cstdint>
#include <string>
#include <vector>

#include "reference/page/text.h"

namespace reference::page {

enum class StyleForm { sheet, declarations, value };

struct StyleReference {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  Text value;
  bool isString = false;
  std::string kind;  // load, fragment, identifier or dead
  bool isCandidate = false;
  bool isConditional = false;
};

// Empty and blank ones are left out.
std::vector<StyleReference> styleReferences(const Text& text, StyleForm form);

}  // namespace reference::page

#endif
