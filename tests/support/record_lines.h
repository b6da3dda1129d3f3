// Tag records as lines of text, so that a table row can hold what a page yields:
//   IMG src=a.gif@10->http://h/a.gif lowsrc=l.gif@22->http://h/l.gif
#ifndef PAGESCAN_TESTS_SUPPORT_RECORD_LINES_H
#define PAGESCAN_TESTS_SUPPORT_RECORD_LINES_H

#include <string>

#include "zkhtmldietvirtualqueue.h"

namespace pagescan::tests {

// The record's line with its end; attributes in the order in which the record dumps them.
std::string lineOf(CZKHTMLDietTransactionsObject& record);

// A sink that writes down each record as it comes.
class RecordLines : public CZKHtmlDietVirtualQueue {
 public:
  bool insert(CZKHTMLDietTransactionsObject* record) override {
    text += lineOf(*record);
    return false;
  }

  std::string text;
};

}  // namespace pagescan::tests

#endif
