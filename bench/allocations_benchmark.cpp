// What a page costs of the heap: blocks, bytes, and the peak.
#include <algorithm>
#include <string>
#include <string_view>

#include "allocations.h"
#include "pagescan/page.h"
#include "peers.h"
#include "sections.h"
#include "table.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldiettransactiondata.h"
#include "zkhtmldietvirtualqueue.h"
#include "zkhtmloffsetparser.h"

namespace pagescan::bench {
namespace {

constexpr char kPageUrl[] = "http://www.example.com/news/2024/index.html";

struct Cost {
  std::size_t pages = 0;
  std::size_t pageBytes = 0;
  std::size_t blocks = 0;
  std::size_t bytes = 0;
  double worstPeak = 0;  // over a page, as a multiple of the page
};

void add(Cost& cost, const RWCString& page, const Allocations& allocations) {
  ++cost.pages;
  cost.pageBytes += page.length();
  cost.blocks += allocations.count;
  cost.bytes += allocations.bytes;
  const auto length = static_cast<double>(page.length());
  cost.worstPeak = std::max(cost.worstPeak, static_cast<double>(allocations.peak) / length);
}

// What the records of ParseHTML cost.
struct RecordCost {
  std::size_t records = 0;
  std::size_t attributes = 0;
  std::size_t blocks = 0;
  std::size_t bytes = 0;  // held until the parser dies
  long mostAbove = 0;     // bytes by which a peak was above the page and what its records hold
  double worstPeak = 0;   // the highest peak, as a multiple of that sum
};

class Counter : public CZKHtmlDietVirtualQueue {
 public:
  explicit Counter(RecordCost& cost) : cost_(cost) {}
  bool insert(CZKHTMLDietTransactionsObject* record) override;

 private:
  RecordCost& cost_;
};

bool Counter::insert(CZKHTMLDietTransactionsObject* record) {
  RWOrdered names;
  record->GetAttributeNames(names);
  ++cost_.records;
  cost_.attributes += names.entries();
  return true;
}

void countRecords(const RWCString& page, RecordCost& cost) {
  Counter counter(cost);
  CHTMLOffsetParser parser(kPageUrl);
  parser.SetDietVirtualQueue(&counter);
  parser.ParseHTML(page.data(), page.length());
}

// A parser that has read a page, and what that took.
struct Parsed {
  explicit Parsed(const RWCString& page) {
    parser.ParseHTML(page.data(), page.length());
    allocations = count.soFar();
  }

  CHTMLOffsetParser parser{kPageUrl};
  AllocationCount count;
  Allocations allocations;
};

void addParser(const RWCString& page, Cost& pageCost, RecordCost& cost) {
  countRecords(page, cost);
  RWCString blankPage;
  blankPage.resize(page.length(), ' ');
  const Allocations withoutRecords = Parsed(blankPage).allocations;
  const Parsed parsed(page);
  const Allocations& withRecords = parsed.allocations;
  add(pageCost, page, withRecords);
  cost.blocks += withRecords.count - withoutRecords.count;
  const std::size_t held = withRecords.live - withoutRecords.live;
  cost.bytes += held;
  // Blocks are larger than what they were asked for: the page counts as its copy does.
  const auto allowed = static_cast<long>(withoutRecords.live + held);
  const auto peak = static_cast<long>(withRecords.peak);
  cost.mostAbove = std::max(cost.mostAbove, peak - allowed);
  cost.worstPeak =
      std::max(cost.worstPeak, static_cast<double>(peak) / static_cast<double>(allowed));
}

// What the references of Page cost.
struct ReferenceCost {
  std::size_t references = 0;
  std::size_t blocks = 0;
  long mostAbove = 0;  // bytes by which a peak was above the page and 48 bytes a reference
};

void addReader(const RWCString& page, Cost& pageCost, ReferenceCost& cost) {
  constexpr std::size_t kBytesAReference = 48;
  PageOptions options;
  options.url = kPageUrl;
  const AllocationCount count;
  const Page reader(std::string_view(page.data(), page.length()), options);
  const Allocations allocations = count.soFar();
  add(pageCost, page, allocations);
  const std::size_t references = reader.references().size();
  cost.references += references;
  cost.blocks += allocations.count;
  const auto allowed = static_cast<long>(page.length() + kBytesAReference * references);
  cost.mostAbove = std::max(cost.mostAbove, static_cast<long>(allocations.peak) - allowed);
}

double each(std::size_t total, std::size_t count) {
  return count == 0 ? 0 : static_cast<double>(total) / static_cast<double>(count);
}

void addRow(Table& table, const std::string& name, const Cost& cost) {
  table.addRow({name, shortNumber(each(cost.blocks, cost.pages)),
                shortNumber(each(cost.bytes, cost.pages) / 1e3),
                shortNumber(each(cost.bytes, cost.pageBytes)), shortNumber(cost.worstPeak)});
}

Cost costOf(const Peer& peer, const Texts& pages) {
  Cost cost;
  for (const RWCString& page : pages) {
    const std::string_view text(page.data(), page.length());
    peer.parsePage(text);  // what it makes once is not counted
    const AllocationCount count;
    peer.parsePage(text);
    add(cost, page, count.soFar());
  }
  return cost;
}

void writeRecords(std::ostream& out, const RecordCost& cost) {
  Table table({"of the records of `ParseHTML`", ""});
  table.addRow({"records", std::to_string(cost.records)});
  table.addRow({"attributes in a record", shortNumber(each(cost.attributes, cost.records))});
  table.addRow({"blocks taken for a record", shortNumber(each(cost.blocks, cost.records))});
  table.addRow({"blocks taken for an attribute", shortNumber(each(cost.blocks, cost.attributes))});
  table.addRow({"bytes held by a record", shortNumber(each(cost.bytes, cost.records))});
  table.addRow({"most bytes of a peak above the page and what its records hold",
                std::to_string(cost.mostAbove)});
  table.addRow({"highest peak, as a multiple of the page and what its records hold",
                shortNumber(cost.worstPeak)});
  out << table;
}

void writeReferences(std::ostream& out, const ReferenceCost& cost) {
  Table table({"of the references of `Page`", ""});
  table.addRow({"references", std::to_string(cost.references)});
  table.addRow({"blocks taken for a reference", shortNumber(each(cost.blocks, cost.references))});
  table.addRow({"most bytes of a peak above the page and 48 bytes a reference",
                std::to_string(cost.mostAbove)});
  out << table;
}

}  // namespace

void writeAllocations(std::ostream& out, const Input& input) {
  out << "### Allocations\n\nOver " << workOver(input.pages, "page").description << ".\n\n";
  Cost parserCost;
  RecordCost recordCost;
  Cost readerCost;
  ReferenceCost referenceCost;
  for (const RWCString& page : input.pages) {
    addParser(page, parserCost, recordCost);
    addReader(page, readerCost, referenceCost);
  }
  Table table({"finding the links of a page", "blocks per page", "KB per page",
               "bytes per byte of page", "highest peak / page"});
  addRow(table, kLibrary, parserCost);
  addRow(table, "pagescan::Page", readerCost);
  for (const Peer& peer : peers()) {
    if (peer.parsePage != nullptr) addRow(table, peer.name, costOf(peer, input.pages));
  }
  out << table;
  writeRecords(out, recordCost);
  writeReferences(out, referenceCost);
}

}  // namespace pagescan::bench
