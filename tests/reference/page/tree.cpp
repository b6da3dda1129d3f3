#include "reference/page/tree.h"

#include <algorithm>

namespace reference::page {

bool Node::isHtml(std::string_view wanted) const {
  return kind == Kind::element && space == Namespace::html && name == wanted;
}

bool Node::isHtmlOneOf(std::initializer_list<std::string_view> names) const {
  return kind == Kind::element && space == Namespace::html && isOneOf(name, names);
}

bool Node::isSvg(std::string_view wanted) const {
  return kind == Kind::element && space == Namespace::svg && name == wanted;
}

bool Node::isMathml(std::string_view wanted) const {
  return kind == Kind::element && space == Namespace::mathml && name == wanted;
}

const Attribute* Node::attribute(std::string_view wanted) const {
  for (const Attribute& candidate : attributes) {
    if (candidate.name == wanted) return &candidate;
  }
  return nullptr;
}

std::string Node::value(std::string_view wanted) const {
  const Attribute* const found = attribute(wanted);
  return found ? toUtf8(found->value) : std::string();
}

Tree::Tree() : document(make(Node::Kind::document)) {}

Node* Tree::make(Node::Kind kind) {
  nodes.push_back(std::make_unique<Node>());
  nodes.back()->kind = kind;
  return nodes.back().get();
}

std::size_t indexInParent(const Node& node) {
  const auto& siblings = node.parent->children;
  return static_cast<std::size_t>(std::find(siblings.begin(), siblings.end(), &node) -
                                  siblings.begin());
}

void detach(Node& node) {
  if (node.parent == nullptr) return;
  auto& siblings = node.parent->children;
  siblings.erase(siblings.begin() + static_cast<std::ptrdiff_t>(indexInParent(node)));
  node.parent = nullptr;
}

void insertAt(Node& parent, std::size_t index, Node& child) {
  detach(child);
  parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(index), &child);
  child.parent = &parent;
}

void append(Node& parent, Node& child) {
  detach(child);
  insertAt(parent, parent.children.size(), child);
}

}  // namespace reference::page
