#include "save/encoding_told.h"

#include <algorithm>

#include "pagescan/page.h"
#include "pagescan/style_sheet.h"

namespace pagescan::tool {

namespace {

constexpr std::string_view kCharsetRule = "@charset \"";

bool isAscii(std::string_view text) {
  return std::none_of(text.begin(), text.end(),
                      [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

// The byte order mark of a Unicode encoding; empty for the others.
std::string_view markOf(std::string_view encoding) {
  if (encoding == "UTF-8") return "\xEF\xBB\xBF";
  if (encoding == "UTF-16LE") return "\xFF\xFE";
  if (encoding == "UTF-16BE") return "\xFE\xFF";
  return {};
}

bool beginsWith(std::string_view text, std::string_view beginning) {
  return text.substr(0, beginning.size()) == beginning;
}

std::string joined(std::string_view beginning, std::string_view text) {
  std::string result(beginning);
  return result.append(text);
}

// Labels that servers use for UTF-8.
bool isUtf8(std::string_view label) {
  StyleSheetOptions options;
  options.charset = label;
  return !label.empty() && StyleSheet("", options).encoding() == "UTF-8";
}

}  // namespace

bool pageTellsEncoding(std::string_view page, std::string_view encoding) {
  return Page(page).encoding() == encoding;
}

std::string withEncodingOfPage(std::string_view page, std::string_view encoding) {
  const std::string_view mark = markOf(encoding);
  if (!mark.empty()) return joined(mark, page);
  std::string declaration = "<?xml version=\"1.0\" encoding=\"";
  declaration.append(encoding).append("\"?>");
  return joined(declaration, page);
}

std::string withEncodingOfSheet(std::string_view sheet, std::string_view encoding) {
  const std::string_view mark = markOf(encoding);
  const bool isPlain = isAscii(sheet) && !beginsWith(encoding, "UTF-16");
  if (isPlain || (!mark.empty() && beginsWith(sheet, mark))) return std::string(sheet);
  if (!mark.empty()) return joined(mark, sheet);
  if (StyleSheet(sheet).encoding() == encoding) return std::string(sheet);
  std::string rule(kCharsetRule);
  rule.append(encoding).append("\";");
  return joined(rule, sheet);
}

std::string withEncodingOfScript(std::string_view script, std::string_view charset) {
  const std::string_view mark = markOf("UTF-8");
  const bool isTold = isAscii(script) || beginsWith(script, mark) || !isUtf8(charset);
  return isTold ? std::string(script) : joined(mark, script);
}

std::string charsetOfSheet(std::string_view sheet, const std::string& charset,
                           const std::string& encodingOfParent) {
  if (!charset.empty() || beginsWith(sheet, kCharsetRule)) return charset;
  return encodingOfParent;
}

}  // namespace pagescan::tool
