#include "reference/page/elements.h"

namespace reference::page {

std::vector<Located> elementsOf(const Tree& tree) {
  std::vector<Located> elements;
  std::vector<Located> open = {{tree.document, false, false}};
  while (!open.empty()) {
    const Located at = open.back();
    open.pop_back();
    const Node& node = *at.node;
    if (node.kind == Node::Kind::element && !node.isRepeated) elements.push_back(at);
    for (auto child = node.children.rbegin(); child != node.children.rend(); ++child) {
      open.push_back({*child, at.inTemplate, at.inShadow});
    }
    if (node.content) open.push_back({node.content, true, at.inShadow});
    if (node.shadowRoot) open.push_back({node.shadowRoot, at.inTemplate, true});
  }
  return elements;
}

Text textOf(const Node& element) {
  Text text;
  for (const Node* const child : element.children) {
    if (child->kind == Node::Kind::text) {
      text.insert(text.end(), child->text.begin(), child->text.end());
    }
  }
  return text;
}

}  // namespace reference::page
