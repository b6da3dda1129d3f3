// Foreign content: 13.2.6.5, and the adjustments of 13.2.6.1.
#include <map>

#include "reference/page/tree_builder.h"

namespace reference::page {

bool isMathmlTextIntegrationPoint(const Node& node) {
  return node.space == Namespace::mathml && isOneOf(node.name, {"mi", "mo", "mn", "ms", "mtext"});
}

bool isHtmlIntegrationPoint(const Node& node) {
  if (node.isMathml("annotation-xml")) {
    const std::string encoding = toAsciiLower(node.value("encoding"));
    return isOneOf(encoding, {"text/html", "application/xhtml+xml"});
  }
  return node.space == Namespace::svg && isOneOf(node.name, {"foreignObject", "desc", "title"});
}

void TreeBuilder::foreignContent(Token& token) {
  switch (token.kind) {
    case Token::Kind::character:
      if (token.character.code == 0) {
        insertCharacter({kReplacement, token.character.begin, token.character.end});
      } else {
        insertCharacter(token.character);
        if (!isWhitespace(token.character.code)) framesetOk_ = false;
      }
      return;
    case Token::Kind::comment:
    case Token::Kind::instruction:
      insertComment(token);
      return;
    case Token::Kind::startTag:
      foreignStartTag(token);
      return;
    case Token::Kind::endTag:
      foreignEndTag(token);
      return;
    case Token::Kind::doctype:
    case Token::Kind::endOfFile:
      return;
  }
}

namespace {

// Tags that end foreign content.
bool breaksOut(const Token& token) {
  if (token.kind == Token::Kind::endTag) return isOneOf(token.name, {"br", "p"});
  if (token.name == "font") {
    for (const Attribute& attribute : token.attributes) {
      if (isOneOf(attribute.name, {"color", "face", "size"})) return true;
    }
    return false;
  }
  return isOneOf(
      token.name,
      {"b",      "big",  "blockquote", "body",  "br",   "center", "code",    "dd",   "div",
       "dl",     "dt",   "em",         "embed", "h1",   "h2",     "h3",      "h4",   "h5",
       "h6",     "head", "hr",         "i",     "img",  "li",     "listing", "menu", "meta",
       "nobr",   "ol",   "p",          "pre",   "ruby", "s",      "small",   "span", "strong",
       "strike", "sub",  "sup",        "table", "tt",   "u",      "ul",      "var"});
}

}  // namespace

void TreeBuilder::foreignStartTag(Token& token) {
  if (breaksOut(token)) {
    while (currentNode()->space != Namespace::html &&
           !isMathmlTextIntegrationPoint(*currentNode()) &&
           !isHtmlIntegrationPoint(*currentNode())) {
      pop();
    }
    useRulesOf(mode_, token);
    return;
  }
  insertElement(token, adjustedCurrentNode()->space);
  if (token.selfClosing) pop();
}

void TreeBuilder::foreignEndTag(Token& token) {
  if (breaksOut(token)) {
    foreignStartTag(token);
    return;
  }
  // An svg script's end tag does the same as any other one.
  for (std::size_t i = open_.size() - 1;; --i) {
    if (i == 0) return;
    if (toAsciiLower(open_[i]->name) == token.name) {
      open_.resize(i);
      return;
    }
    if (open_[i - 1]->space == Namespace::html) break;
  }
  useRulesOf(mode_, token);
}

void adjustSvgName(std::string& name) {
  for (const std::string_view adjusted : {"altGlyph",
                                          "altGlyphDef",
                                          "altGlyphItem",
                                          "animateColor",
                                          "animateMotion",
                                          "animateTransform",
                                          "clipPath",
                                          "feBlend",
                                          "feColorMatrix",
                                          "feComponentTransfer",
                                          "feComposite",
                                          "feConvolveMatrix",
                                          "feDiffuseLighting",
                                          "feDisplacementMap",
                                          "feDistantLight",
                                          "feDropShadow",
                                          "feFlood",
                                          "feFuncA",
                                          "feFuncB",
                                          "feFuncG",
                                          "feFuncR",
                                          "feGaussianBlur",
                                          "feImage",
                                          "feMerge",
                                          "feMergeNode",
                                          "feMorphology",
                                          "feOffset",
                                          "fePointLight",
                                          "feSpecularLighting",
                                          "feSpotLight",
                                          "feTile",
                                          "feTurbulence",
                                          "foreignObject",
                                          "glyphRef",
                                          "linearGradient",
                                          "radialGradient",
                                          "textPath"}) {
    if (toAsciiLower(adjusted) == name) name = adjusted;
  }
}

void adjustAttributes(std::vector<Attribute>& attributes, Namespace space) {
  static constexpr std::string_view kSvg[] = {"attributeName",
                                              "attributeType",
                                              "baseFrequency",
                                              "baseProfile",
                                              "calcMode",
                                              "clipPathUnits",
                                              "diffuseConstant",
                                              "edgeMode",
                                              "filterUnits",
                                              "glyphRef",
                                              "gradientTransform",
                                              "gradientUnits",
                                              "kernelMatrix",
                                              "kernelUnitLength",
                                              "keyPoints",
                                              "keySplines",
                                              "keyTimes",
                                              "lengthAdjust",
                                              "limitingConeAngle",
                                              "markerHeight",
                                              "markerUnits",
                                              "markerWidth",
                                              "maskContentUnits",
                                              "maskUnits",
                                              "numOctaves",
                                              "pathLength",
                                              "patternContentUnits",
                                              "patternTransform",
                                              "patternUnits",
                                              "pointsAtX",
                                              "pointsAtY",
                                              "pointsAtZ",
                                              "preserveAlpha",
                                              "preserveAspectRatio",
                                              "primitiveUnits",
                                              "refX",
                                              "refY",
                                              "repeatCount",
                                              "repeatDur",
                                              "requiredExtensions",
                                              "requiredFeatures",
                                              "specularConstant",
                                              "specularExponent",
                                              "spreadMethod",
                                              "startOffset",
                                              "stdDeviation",
                                              "stitchTiles",
                                              "surfaceScale",
                                              "systemLanguage",
                                              "tableValues",
                                              "targetX",
                                              "targetY",
                                              "textLength",
                                              "viewBox",
                                              "viewTarget",
                                              "xChannelSelector",
                                              "yChannelSelector",
                                              "zoomAndPan"};
  static const std::map<std::string_view, std::string_view> kForeign = {
      {"xlink:actuate", "xlink actuate"}, {"xlink:arcrole", "xlink arcrole"},
      {"xlink:href", "xlink href"},       {"xlink:role", "xlink role"},
      {"xlink:show", "xlink show"},       {"xlink:title", "xlink title"},
      {"xlink:type", "xlink type"},       {"xml:lang", "xml lang"},
      {"xml:space", "xml space"},         {"xmlns", "xmlns"},
      {"xmlns:xlink", "xmlns xlink"}};
  for (Attribute& attribute : attributes) {
    if (space == Namespace::mathml && attribute.name == "definitionurl") {
      attribute.nameInTree = "definitionURL";
    }
    if (space == Namespace::svg) {
      for (const std::string_view adjusted : kSvg) {
        if (toAsciiLower(adjusted) == attribute.name) attribute.nameInTree = adjusted;
      }
    }
    const auto foreign = kForeign.find(attribute.name);
    if (foreign != kForeign.end()) attribute.nameInTree = foreign->second;
  }
}

}  // namespace reference::page
