// The list of active formatting elements and the adoption agency algorithm: 13.2.4.3, 13.2.6.4.7.
#include <algorithm>
#include <utility>

#include "reference/page/tree_builder.h"

namespace reference::page {

namespace {

// The same name and the same attributes, in any order.
bool areAlike(const Node& a, const Node& b) {
  if (a.space != b.space || a.name != b.name || a.attributes.size() != b.attributes.size()) {
    return false;
  }
  return std::all_of(a.attributes.begin(), a.attributes.end(), [&](const Attribute& attribute) {
    const Attribute* const other = b.attribute(attribute.name);
    return other && toUtf8(other->value) == toUtf8(attribute.value);
  });
}

}  // namespace

// "Push onto the list of active formatting elements", with its Noah's Ark clause.
void TreeBuilder::pushFormatting(Node* element) {
  int alike = 0;
  std::size_t earliest = 0;
  for (std::size_t i = formatting_.size(); i-- > 0 && formatting_[i] != nullptr;) {
    if (!areAlike(*formatting_[i], *element)) continue;
    ++alike;
    earliest = i;
  }
  if (alike >= 3) formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(earliest));
  formatting_.push_back(element);
}

void TreeBuilder::reconstructFormatting() {
  std::size_t first = formatting_.size();
  while (first > 0 && formatting_[first - 1] != nullptr && !isOpen(formatting_[first - 1])) --first;
  for (std::size_t i = first; i < formatting_.size(); ++i) {
    const Place place = appropriatePlace();
    Node* const clone = cloneOf(*formatting_[i]);
    insertAtPlace(*clone, place);
    open_.push_back(clone);
    formatting_[i] = clone;
  }
}

void TreeBuilder::clearFormattingToMarker() {
  while (!formatting_.empty()) {
    const bool isMarker = formatting_.back() == nullptr;
    formatting_.pop_back();
    if (isMarker) return;
  }
}

// The last one of that name after the last marker, or null.
Node* TreeBuilder::formattingAfterMarker(std::string_view name) const {
  for (auto entry = formatting_.rbegin(); entry != formatting_.rend() && *entry; ++entry) {
    if ((*entry)->isHtml(name)) return *entry;
  }
  return nullptr;
}

std::size_t TreeBuilder::formattingIndex(const Node* node) const {
  return static_cast<std::size_t>(std::find(formatting_.begin(), formatting_.end(), node) -
                                  formatting_.begin());
}

void TreeBuilder::removeFromFormatting(const Node* node) {
  const std::size_t index = formattingIndex(node);
  if (index < formatting_.size()) {
    formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

// Another element for the same start tag.
Node* TreeBuilder::cloneOf(const Node& element) {
  Node* const clone = tree_.make(Node::Kind::element);
  clone->name = element.name;
  clone->attributes = element.attributes;
  clone->fromTag = element.fromTag;
  clone->isRepeated = true;
  clone->tag = element.tag;
  clone->openParent = element.openParent;
  clone->insideObjectOrMedia = element.insideObjectOrMedia;
  return clone;
}

void TreeBuilder::adopt(std::string_view name) {
  const Node* const current = currentNode();
  if (current->isHtml(name) && formattingIndex(current) == formatting_.size()) {
    pop();
    return;
  }
  for (int round = 0; round < 8; ++round) {
    if (!adoptOnce(name)) return;
  }
}

// One round of the outer loop. Returns whether there may be another one.
bool TreeBuilder::adoptOnce(std::string_view name) {
  Node* const formattingElement = formattingAfterMarker(name);
  if (formattingElement == nullptr) {
    anyOtherEndTag(name);
    return false;
  }
  if (!isOpen(formattingElement)) {
    removeFromFormatting(formattingElement);
    return false;
  }
  if (!isInScope([&](const Node& node) { return &node == formattingElement; }, Scope::standard)) {
    return false;
  }
  const auto at = std::find(open_.begin(), open_.end(), formattingElement);
  const auto furthest = std::find_if(at, open_.end(), [](const Node* n) { return isSpecial(*n); });
  if (furthest == open_.end()) {
    open_.erase(at, open_.end());
    removeFromFormatting(formattingElement);
    return false;
  }
  Node* const furthestBlock = *furthest;
  Node* const commonAncestor = *(at - 1);
  std::size_t bookmark = formattingIndex(formattingElement);
  Node* const lastNode = moveUpTo(formattingElement, furthestBlock, bookmark);
  detach(*lastNode);
  insertAtPlace(*lastNode, appropriatePlace(commonAncestor));

  Node* const clone = cloneOf(*formattingElement);
  clone->children = std::move(furthestBlock->children);
  furthestBlock->children.clear();
  for (Node* const child : clone->children) child->parent = clone;
  append(*furthestBlock, *clone);

  const std::size_t old = formattingIndex(formattingElement);
  formatting_.erase(formatting_.begin() + static_cast<std::ptrdiff_t>(old));
  if (old < bookmark) --bookmark;
  formatting_.insert(formatting_.begin() + static_cast<std::ptrdiff_t>(bookmark), clone);
  removeFromStack(formattingElement);
  open_.insert(std::find(open_.begin(), open_.end(), furthestBlock) + 1, clone);
  return true;
}

// The inner loop. Returns the last node; `bookmark` is an index of the list of formatting elements.
Node* TreeBuilder::moveUpTo(Node* formattingElement, Node* furthestBlock, std::size_t& bookmark) {
  Node* lastNode = furthestBlock;
  auto position = static_cast<std::size_t>(std::find(open_.begin(), open_.end(), furthestBlock) -
                                           open_.begin());
  for (int counter = 1;; ++counter) {
    // The element above, also where the one below has just been removed from the stack.
    Node* node = open_[--position];
    if (node == formattingElement) return lastNode;
    std::size_t index = formattingIndex(node);
    if (counter > 3 && index < formatting_.size()) {
      if (index < bookmark) --bookmark;
      removeFromFormatting(node);
      index = formatting_.size();
    }
    if (index == formatting_.size()) {
      removeFromStack(node);
      continue;
    }
    Node* const clone = cloneOf(*node);
    formatting_[index] = clone;
    open_[position] = clone;
    node = clone;
    if (lastNode == furthestBlock) bookmark = index + 1;
    append(*node, *lastNode);
    lastNode = node;
  }
}

}  // namespace reference::page
