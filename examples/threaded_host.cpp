// Parses many pages at once: threaded_host PAGE URL
//
// A parser, its records and its sink belong to one thread; nothing else is needed. Here each thread
// takes the next page of a list, makes a parser for it and writes down what it found.
#include <pagescan.h>

#include <algorithm>
#include <atomic>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "pages.h"

namespace {

constexpr std::size_t kPages = 64;
constexpr std::size_t kThreads = 4;

struct Result {
  std::size_t records = 0;
  unsigned long checksum = 0;
};

class Summary : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    ++result_.records;
    forEachLoaded(*record, [this](CZKHTMLDietAttributeObject& attribute) {
      const RWCString url = attribute.GetAttributeValue();
      result_.checksum +=
          CZKHTMLDietTransactionsObject::CalcCheckSum(url.data(), static_cast<int>(url.length()));
    });
    return true;
  }

  Result result() const { return result_; }

 private:
  Result result_;
};

Result parse(const std::string& page, const char* url) {
  Summary summary;
  CHTMLOffsetParser parser(url);
  parser.SetDietVirtualQueue(&summary);
  parser.ParseHTML(page.c_str(), page.size());
  return summary.result();
}

std::vector<Result> parseAll(const std::vector<std::string>& pages, const char* url) {
  std::vector<Result> results(pages.size());
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t page = next++; page < pages.size(); page = next++) {
      results[page] = parse(pages[page], url);
    }
  };
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  return results;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "Usage: threaded_host PAGE URL\n";
    return 2;
  }
  const auto page = readPage(argv[1]);
  if (!page) return 1;

  const Result expected = parse(*page, argv[2]);
  const std::vector<Result> results = parseAll(std::vector<std::string>(kPages, *page), argv[2]);
  const auto same = std::count_if(results.begin(), results.end(), [&](const Result& result) {
    return result.records == expected.records && result.checksum == expected.checksum;
  });
  std::cout << expected.records << " records; the same on " << same << " of " << kPages
            << " pages, by " << kThreads << " threads\n";
  return same == static_cast<std::ptrdiff_t>(kPages) ? 0 : 1;
}
