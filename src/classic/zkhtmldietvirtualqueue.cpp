#include "zkhtmldietvirtualqueue.h"

CZKHtmlDietVirtualQueue::CZKHtmlDietVirtualQueue() = default;

CZKHtmlDietVirtualQueue::~CZKHtmlDietVirtualQueue() = default;

bool CZKHtmlDietVirtualQueue::insert(CZKHTMLDietTransactionsObject*) {
  return true;
}
