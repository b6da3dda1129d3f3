// What the tokenizer hands to the tree builder (HTML Standard, 13.2.5).
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TOKEN_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TOKEN_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reference/page/text.h"

namespace reference::page {

struct Attribute {
  std::string name;  // as the tokenizer has it: ASCII letters in lower case
  Text value;
  std::uint32_t tag = 0;  // offset of the "<" of the tag that it stands in
  std::uint32_t nameBegin = 0;
  std::uint32_t nameEnd = 0;
  // The value as written, without quotes. Without "=": empty, right after the name; with nothing
  // after the "=": empty, right after it.
  std::uint32_t valueBegin = 0;
  std::uint32_t valueEnd = 0;
  // As the tree has it, for foreign elements: "viewBox", "xlink href". Empty: the same as `name`.
  std::string nameInTree;
};

struct Token {
  enum class Kind { doctype, startTag, endTag, comment, instruction, character, endOfFile };

  Kind kind = Kind::endOfFile;
  std::string name;  // of a tag or doctype; the target of a processing instruction
  std::vector<Attribute> attributes;
  bool selfClosing = false;
  std::uint32_t begin = 0;  // of a tag: the offset of its "<"
  Char character;
  std::string data;  // of a comment or processing instruction
  // of a doctype:
  bool hasName = false;
  bool forceQuirks = false;
  std::optional<std::string> publicIdentifier;
  std::optional<std::string> systemIdentifier;
};

}  // namespace reference::page

#endif
