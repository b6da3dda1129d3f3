#include "reference/classic/zkhtmloffsetparser.h"

#include <cstddef>
#include <map>

#include "reference/classic/strings.h"
#include "reference/classic/tqurlbase.h"
#include "reference/classic/zkhtmlattributefinder.h"
#include "reference/classic/zkhtmlparseutils.h"

namespace reference {

namespace {

std::string upToNul(const std::string& text) {
  return text.substr(0, text.find('\0'));
}

Attribute resolvedAttribute(UrlBase& base, const std::string& name, const std::string& original,
                            int offset) {
  std::string resolved;
  base.calcUrl(original, resolved, false, true);
  return {name, resolved, original, offset};
}

// ---- the tag table

using TagTable = std::map<std::string, std::vector<std::string>>;

constexpr std::size_t kCells = 6;

const char* const kTagRows[][kCells] = {
    {"BASE", "href", "", "", "", ""},
    {"BODY", "background", "", "", "", ""},
    {"TABLE", "background", "", "", "", ""},
    {"TD", "background", "", "", "", ""},
    {"TH", "background", "", "", "", ""},
    {"APPLET", "code", "codebase", "src", "archive", "data"},
    {"OBJECT", "code", "codebase", "classid", "archive", ""},
    {"EMBED", "src", "", "", "", ""},
    {"FRAME", "src", "", "", "", ""},
    {"IFRAME", "src", "", "", "", ""},
    {"IMG", "src", "lowsrc", "dynsrc", "", ""},
    {"SCRIPT", "src", "", "", "", ""},
    {"LINK", "href", "rel", "", "", ""},
    {"INPUT", "src", "", "", "", ""},
    {"XML", "src", "", "", "", ""},
    {"TEST", "", "", "", "", ""},
    {"?IMPORT", "implementation", "", "", "", ""},
    {"", "", "", "", "", ""},
};

// A row's names end at the first empty cell, even where that cell belongs to the next row: APPLET's
// full row runs on through OBJECT's.
TagTable buildTagTable() {
  std::vector<std::string> cells;
  for (const auto& row : kTagRows) cells.insert(cells.end(), row, row + kCells);
  TagTable table;
  for (std::size_t row = 0; !cells[row].empty(); row += kCells) {
    std::vector<std::string> names;
    for (std::size_t cell = row + 1; !cells[cell].empty(); ++cell) names.push_back(cells[cell]);
    if (!names.empty()) table.emplace(cells[row], names);
  }
  return table;
}

const TagTable& tagTable() {
  static const TagTable table = buildTagTable();
  return table;
}

// ---- the HTML pass

class HtmlParser {
 public:
  HtmlParser(const std::string& pageUrl, const std::string& blanked)
      : html_(blanked), base_(pageUrl) {}

  std::vector<Record> run() {
    do {
      const std::string name = uppered(findTagName());
      if (tagTable().count(name) != 0) parseElement(name);
    } while (position_ < html_.length());
    return records_;
  }

 private:
  static bool isDelimiter(char c) { return isBlank(c) || c == '<' || c == '>' || c == '~'; }

  std::string findTagName() {
    std::string name;
    const std::size_t end = html_.length();
    while (position_ < end && html_[position_] != '<') ++position_;
    while (position_ < end && isDelimiter(html_[position_])) ++position_;
    while (position_ < end && !isDelimiter(html_[position_])) name += html_[position_++];
    return name;
  }

  // Called with the position just after the tag's name.
  void parseElement(const std::string& element) {
    if (byteAt(html_, position_) == '/') return;
    if (position_ >= html_.length()) return;
    const std::size_t tagEnd = index(html_, ">", position_);
    if (tagEnd == npos) return;
    std::map<std::string, std::string> values;
    std::map<std::string, int> offsets;
    unsigned long position = position_;
    FindAttributes(html_, position, values, offsets);
    Record record{element, {}};
    for (const std::string& name : tagTable().at(element)) {
      if (values.count(name) == 0 || offsets.count(name) == 0) continue;
      insertAttribute(record, resolvedAttribute(base_, name, values[name], offsets[name]));
    }
    position_ = tagEnd;
    const bool frame = element == "FRAME" || element == "IFRAME";
    if (record.attributes.empty() && frame) record.attributes = {{"src", "", "", -1}};
    if (!record.attributes.empty()) records_.push_back(record);
  }

  std::string html_;
  std::size_t position_ = 0;
  UrlBase base_;
  std::vector<Record> records_;
};

// ---- the style pass

class StyleParser {
 public:
  StyleParser(const std::string& pageUrl, const std::string& css) : css_(css), base_(pageUrl) {}

  StylePass run() {
    while (iterate()) {
    }
    return pass_;
  }

 private:
  // Whether the first position is there and the second is absent or comes later.
  static bool precedes(std::size_t first, std::size_t second) {
    return first != npos && (second == npos || first < second);
  }

  // One iteration of the scan; false stops it.
  bool iterate() {
    const std::size_t comment = index(css_, "/*", scanStart_);
    const std::size_t import = index(css_, "@import", scanStart_, Case::ignore);
    const std::size_t url = index(css_, "url(", scanStart_, Case::ignore);
    const std::size_t quote = index(css_, "\"", scanStart_);
    const bool isUrl = url != npos;
    const std::size_t token = isUrl ? url : quote;

    if (precedes(comment, import) && precedes(comment, token)) return skipComment(comment);
    if (token == npos) return false;
    const std::size_t urlStart = token + (isUrl ? 4 : 1);
    if (urlStart >= css_.length()) return false;
    const std::size_t urlEnd = index(css_, isUrl ? ")" : "\"", urlStart);
    if (urlEnd == npos) return false;
    return precedes(import, token) ? takeImport(import, urlStart, urlEnd)
                                   : takeUrl(urlStart, urlEnd);
  }

  bool skipComment(std::size_t comment) {
    const std::size_t end = index(css_, "*/", scanStart_);
    if (end == npos) return false;
    scanStart_ = (end > comment ? end : comment) + 2;
    return true;
  }

  bool takeImport(std::size_t import, std::size_t urlStart, std::size_t urlEnd) {
    const std::size_t semicolon = index(css_, ";", import);
    if (semicolon == npos) return false;
    if (urlStart <= urlEnd && urlEnd <= semicolon) emit(urlStart, urlEnd, true);
    scanStart_ = semicolon + 1;
    return true;
  }

  bool takeUrl(std::size_t urlStart, std::size_t urlEnd) {
    if (!propertyNameIsBounded(urlStart)) {
      pass_.boundsError = true;
      return false;
    }
    emit(urlStart, urlEnd, false);
    scanStart_ = urlEnd + 1;
    return true;
  }

  // Walks back from the last ":" before the URL to the delimiter before the property's name.
  bool propertyNameIsBounded(std::size_t urlStart) const {
    const std::size_t colon = css_.substr(0, urlStart).rfind(':');
    if (colon == npos) return true;
    for (std::size_t i = colon + 1; i > 0; --i) {
      const char c = css_[i - 1];
      if (isBlank(c) || c == ';' || c == '{') return true;
    }
    return false;
  }

  // Records the URL unless it is empty or a fragment that is not wanted.
  void emit(std::size_t urlStart, std::size_t urlEnd, bool fragmentsToo) {
    std::string raw = css_.substr(urlStart, urlEnd - urlStart);
    std::size_t offset = urlStart;
    const char first = css_[urlStart];
    if (first == '"' || first == '\'') {
      raw = strip(raw, Strip::both, first);
      ++offset;
    }
    if (raw.empty() || (raw[0] == '#' && !fragmentsToo)) return;
    Record record{"IMG", {}};
    insertAttribute(record, resolvedAttribute(base_, "src", raw, static_cast<int>(offset)));
    pass_.records.push_back(record);
  }

  const std::string& css_;
  UrlBase base_;
  std::size_t scanStart_ = 0;
  StylePass pass_;
};

}  // namespace

HtmlPass ParseHTML(const std::string& pageUrl, const std::string& page) {
  HtmlPass pass;
  std::string html = upToNul(page);
  std::size_t endlessAt = npos;
  pass.endless = !tqOverwriteScriptWithBlanks(html, endlessAt);
  if (pass.endless) return pass;
  tqOverwriteTagWithBlanks(html, "<!--", "-->");
  pass.records = HtmlParser(upToNul(pageUrl), html).run();
  return pass;
}

StylePass ParseCSS(const std::string& pageUrl, const std::string& css) {
  return StyleParser(upToNul(pageUrl), css).run();
}

}  // namespace reference
