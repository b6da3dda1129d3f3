// The nodes of a parsed page.
#ifndef PAGESCAN_TESTS_REFERENCE_PAGE_TREE_H
#define PAGESCAN_TESTS_REFERENCE_PAGE_TREE_H

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "reference/page/text.h"
#include "reference/page/token.h"

namespace reference::page {

enum class Namespace { html, svg, mathml };

struct Node {
  enum class Kind { document, fragment, doctype, element, text, comment, instruction };

  Kind kind = Kind::document;
  Node* parent = nullptr;
  std::vector<Node*> children;

  // Of an element.
  Namespace space = Namespace::html;
  std::string name;  // as the tree has it: "foreignObject"; also of a doctype or an instruction
  std::vector<Attribute> attributes;
  bool fromTag = false;     // false for what the parser makes of itself
  bool isRepeated = false;  // another element for a start tag that has one already
  std::uint32_t tag = 0;    // offset of the "<" of its tag
  // The current node when the element was inserted, and whether an object, video or audio element
  // was open then.
  const Node* openParent = nullptr;
  bool insideObjectOrMedia = false;
  Node* content = nullptr;  // of a template: its content, or the shadow root that it fills
  Node* shadowRoot = nullptr;
  // The "<![CDATA[" and reference-free characters of a text node; the data of a comment.
  Text text;
  std::string data;
  std::string publicIdentifier;
  std::string systemIdentifier;
  bool hasPublicOrSystem = false;

  bool isHtml(std::string_view wanted) const;
  bool isHtmlOneOf(std::initializer_list<std::string_view> names) const;
  bool isSvg(std::string_view wanted) const;
  bool isMathml(std::string_view wanted) const;
  const Attribute* attribute(std::string_view wanted) const;
  // Its value as UTF-8; empty without the attribute.
  std::string value(std::string_view wanted) const;
};

enum class Quirks { no, limited, yes };

// Owns its nodes. In a fragment's tree the root element of `document` holds the result.
struct Tree {
  Tree();
  Node* make(Node::Kind kind);

  std::vector<std::unique_ptr<Node>> nodes;
  Node* document = nullptr;
  Quirks quirks = Quirks::no;
};

std::size_t indexInParent(const Node& node);
void detach(Node& node);
void insertAt(Node& parent, std::size_t index, Node& child);
void append(Node& parent, Node& child);

}  // namespace reference::page

#endif
