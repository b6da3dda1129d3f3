// What the examples share: reading a page, and telling what a page loads.
#ifndef PAGESCAN_EXAMPLES_PAGES_H
#define PAGESCAN_EXAMPLES_PAGES_H

#include <pagescan.h>

#include <fstream>
#include <iostream>
#include <optional>
#include <string>

// The bytes of a page that can be parsed, or nothing, with a message, for one that cannot.
inline std::optional<std::string> readPage(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::string page;
  for (char piece[4096]; file;) {
    file.read(piece, sizeof piece);
    page.append(piece, static_cast<std::size_t>(file.gcount()));
  }
  const bool isRead = file.is_open() && !file.bad();  // a directory can be opened but not read
  if (!isRead) {
    std::cerr << path << ": cannot be read\n";
    return std::nullopt;
  }
  // The parser's text ends at the first NUL, and blanking scripts may not return.
  if (page.find('\0') != std::string::npos) {
    std::cerr << path << ": holds a NUL byte\n";
    return std::nullopt;
  }
  if (tqFindEndlessScript(RWCString(page.data(), page.size())) != RWCString::npos) {
    std::cerr << path << ": has a script tag that does not end\n";
    return std::nullopt;
  }
  return page;
}

// Calls use(attribute) for each attribute of a record that names something the page loads: not the
// base, nor a relation, nor a class identifier, nor an empty value.
template <typename Use>
void forEachLoaded(CZKHTMLDietTransactionsObject& record, Use use) {
  if (RWCString(record.GetTagName()) == "BASE") return;
  pagescan::forEachAttribute(record, [&](CZKHTMLDietAttributeObject& attribute) {
    const RWCString name = attribute.GetAttributeName();
    if (name == "rel" || name == "classid") return;
    if (RWCString(attribute.GetOriginalAttributeValue()).length() > 0) use(attribute);
  });
}

// The URL against which a page's values are to be resolved: that of its first BASE, else its own.
inline std::string baseOf(const std::string& page, const char* url) {
  struct BaseFinder : CZKHtmlDietVirtualQueue {
    bool insert(CZKHTMLDietTransactionsObject* record) override {
      const bool isFirst = base.length() == 0 && RWCString(record->GetTagName()) == "BASE";
      if (isFirst) base = record->GetFirstAttributeObject()->GetAttributeValue();
      return true;
    }
    RWCString base;
  };
  BaseFinder finder;
  CHTMLOffsetParser parser(url);
  parser.SetDietVirtualQueue(&finder);
  parser.ParseHTML(page.c_str(), page.size());
  CTQCharSet::fsGetSingleton()->convert(finder.base);
  return finder.base.length() > 0 ? finder.base.data() : url;
}

// Whether an absolute URL is one of http or https.
inline bool isWebUrl(const RWCString& url) {
  constexpr int kHttp = 3;
  constexpr int kHttps = 4;
  int schemeLength = 0;
  const int code = getProtocol(url, schemeLength);
  return code == kHttp || code == kHttps;
}

#endif
