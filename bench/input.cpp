#include "input.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "pagescan.h"

namespace pagescan::bench {
namespace {

namespace fs = std::filesystem;

constexpr char kDefaultBase[] = "http://www.example.com/news/2024/index.html";

struct NamedText {
  std::string name;
  RWCString text;
};

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The files of a folder in the order of their names; none when there is no such folder.
std::vector<fs::path> filesOf(const fs::path& folder) {
  std::vector<fs::path> files;
  if (!fs::is_directory(folder)) return files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

// As every contender takes it: some read up to the first NUL, and one may not return.
bool readPage(const fs::path& path, RWCString& page) {
  const std::string bytes = readFile(path);
  page = RWCString(bytes.c_str());
  return page.length() > 0 && tqFindEndlessScript(page) == RWCString::npos;
}

std::vector<NamedText> readPages(const fs::path& folder) {
  std::vector<NamedText> pages;
  for (const fs::path& path : filesOf(folder)) {
    RWCString page;
    if (path.extension() != ".css" && readPage(path, page)) {
      pages.push_back({path.filename().string(), page});
    }
  }
  return pages;
}

bool canBeParsedWhole(const RWCString& sheet) {
  CHTMLOffsetParser parser(kDefaultBase);
  try {
    parser.ParseCSS(sheet);
    return true;
  } catch (const RWBoundsErr&) {
    return false;
  }
}

Texts readSheets(const fs::path& folder) {
  Texts sheets;
  for (const fs::path& path : filesOf(folder)) {
    const std::string bytes = readFile(path);
    const RWCString sheet(bytes.c_str());
    if (path.extension() == ".css" && canBeParsedWhole(sheet)) sheets.push_back(sheet);
  }
  return sheets;
}

std::vector<std::vector<std::string>> readRows(const fs::path& path) {
  std::vector<std::vector<std::string>> rows;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
      if (c == '\t') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    rows.push_back(std::move(fields));
  }
  return rows;
}

// What the library itself finds in pages of which nothing else is known.
std::vector<PageLinks> linksIn(const Texts& pages) {
  class LinkCollector : public CZKHtmlDietVirtualQueue {
   public:
    explicit LinkCollector(Texts& links) : links_(links) {}
    bool insert(CZKHTMLDietTransactionsObject* record) override {
      forEachAttribute(*record, [&](CZKHTMLDietAttributeObject& attribute) {
        links_.emplace_back(attribute.GetOriginalAttributeValue());
      });
      return true;
    }

   private:
    Texts& links_;
  };
  std::vector<PageLinks> result;
  for (const RWCString& page : pages) {
    result.push_back({kDefaultBase, {}});
    LinkCollector collector(result.back().links);
    CHTMLOffsetParser parser(kDefaultBase);
    parser.SetDietVirtualQueue(&collector);
    parser.ParseHTML(page.data(), page.length());
  }
  return result;
}

std::vector<PageLinks> readLinks(const fs::path& folder) {
  std::map<std::string, PageLinks> linksOf;
  for (const auto& row : readRows(folder / "page-bases.tsv")) {
    if (row.size() == 2) linksOf[row[0]].base = row[1];
  }
  for (const auto& row : readRows(folder / "links.tsv")) {
    if (row.size() == 4) linksOf[row[0]].links.emplace_back(row[3].data(), row[3].size());
  }
  std::vector<PageLinks> result;
  for (auto& [page, links] : linksOf) {
    if (!links.base.empty() && !links.links.empty()) result.push_back(std::move(links));
  }
  return result;
}

}  // namespace

Input readInput(const fs::path& folder) {
  const bool hasParts = fs::is_directory(folder / "pages");
  Input input;
  input.name = "real";
  for (NamedText& page : readPages(hasParts ? folder / "pages" : folder)) {
    input.pages.push_back(std::move(page.text));
  }
  if (input.pages.empty()) throw std::runtime_error(folder.string() + " holds no pages");
  input.sheets = readSheets(hasParts ? folder / "css" : folder);
  input.links = readLinks(folder);
  if (input.links.empty()) input.links = linksIn(input.pages);
  input.queries = queriesOf(input.links);
  return input;
}

Texts queriesOf(const std::vector<PageLinks>& pages) {
  Texts queries;
  for (const PageLinks& page : pages) {
    for (const RWCString& link : page.links) {
      const std::size_t mark = link.index('?');
      if (mark == RWCString::npos || mark + 1 == link.length()) continue;
      queries.emplace_back(link.data() + mark + 1, link.length() - mark - 1);
    }
  }
  return queries;
}

std::size_t bytesOf(const Texts& texts) {
  std::size_t bytes = 0;
  for (const RWCString& text : texts) bytes += text.length();
  return bytes;
}

Work workOver(const Texts& texts, const std::string& item) {
  const std::size_t bytes = bytesOf(texts);
  return {std::to_string(texts.size()) + " " + item + "s, " + std::to_string(bytes / 1000) + " KB",
          item, texts.size(), bytes};
}

}  // namespace pagescan::bench
