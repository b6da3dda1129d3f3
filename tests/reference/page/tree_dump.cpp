#include "reference/page/tree_dump.h"

#include <map>

namespace reference::page {

namespace {

std::string prefixOf(Namespace space) {
  return space == Namespace::svg ? "svg " : space == Namespace::mathml ? "math " : "";
}

std::string doctypeLine(const Node& node) {
  std::string line = "<!DOCTYPE " + node.name;
  if (node.hasPublicOrSystem) {
    line += " \"" + node.publicIdentifier + "\" \"" + node.systemIdentifier + "\"";
  }
  return line + ">";
}

class Dumper {
 public:
  void children(const Node& node, std::size_t depth) {
    for (const Node* const child : node.children) one(*child, depth);
  }

  std::string out;

 private:
  void line(std::size_t depth, const std::string& text) {
    out += "| " + std::string(2 * depth, ' ') + text + "\n";
  }

  void one(const Node& node, std::size_t depth) {
    switch (node.kind) {
      case Node::Kind::element:
        element(node, depth);
        return;
      case Node::Kind::text:
        line(depth, "\"" + toUtf8(node.text) + "\"");
        return;
      case Node::Kind::comment:
        line(depth, "<!-- " + node.data + " -->");
        return;
      case Node::Kind::instruction:
        line(depth, "<?" + node.name + " " + node.data + ">");
        return;
      case Node::Kind::doctype:
        line(depth, doctypeLine(node));
        return;
      case Node::Kind::document:
      case Node::Kind::fragment:
        children(node, depth);
        return;
    }
  }

  void element(const Node& node, std::size_t depth) {
    line(depth, "<" + prefixOf(node.space) + node.name + ">");
    std::map<std::string, std::string> sorted;
    for (const Attribute& attribute : node.attributes) {
      sorted[attribute.nameInTree.empty() ? attribute.name : attribute.nameInTree] =
          toUtf8(attribute.value);
    }
    for (const auto& [name, value] : sorted) line(depth + 1, name + "=\"" + value + "\"");
    if (node.shadowRoot) {
      line(depth + 1, "#shadow-root");
      children(*node.shadowRoot, depth + 2);
    }
    if (node.content) {
      line(depth + 1, "content");
      children(*node.content, depth + 2);
    }
    children(node, depth + 1);
  }
};

}  // namespace

std::string dump(const Node& root) {
  Dumper dumper;
  dumper.children(root, 0);
  return dumper.out;
}

}  // namespace reference::page
