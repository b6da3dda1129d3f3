// CZKHtmlDietVirtualQueue: the sink to which a parser announces each record.
#ifndef PAGESCAN_ZKHTMLDIETVIRTUALQUEUE_H
#define PAGESCAN_ZKHTMLDIETVIRTUALQUEUE_H

#include "pagescan_export.h"

class CZKHTMLDietTransactionsObject;

// To be subclassed by the host, which owns the sink.
class PAGESCAN_EXPORT CZKHtmlDietVirtualQueue {
 public:
  CZKHtmlDietVirtualQueue();
  virtual ~CZKHtmlDietVirtualQueue();

  // Called once for each record, complete, on the thread that parses. The record stays the
  // parser's and lives until the parser is destroyed. The parser ignores the result; this version
  // does nothing and returns true. What it may have that parser do: see SetDietVirtualQueue.
  // An exception that leaves it ends the pass; the record shown is then destroyed.
  virtual bool insert(CZKHTMLDietTransactionsObject* record);
};

#endif
