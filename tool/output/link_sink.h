// LinkSink: the parser's sink that writes out each record while the parser goes on.
#ifndef PAGESCAN_TOOL_LINK_SINK_H
#define PAGESCAN_TOOL_LINK_SINK_H

#include <string>
#include <string_view>
#include <vector>

#include "output/records_output.h"
#include "rw/rwcstring.h"
#include "tqurlbase.h"
#include "zkhtmldietattributeobject.h"
#include "zkhtmldietvirtualqueue.h"

namespace pagescan::tool {

// The text as it was read and the copy that the parser gets: free of NUL bytes, byte i of the text
// standing at `lead` + i.
struct ScannedText {
  const RWCString& text;
  const RWCString& copy;
  int lead = 0;
  bool listsRel = true;  // whether the attribute "rel" is listed
};

// Borrows everything that it is given. No value is lost: the text's own bytes are shown where the
// copy differs, and a resolved value in which escapes gave NUL bytes is shown whole.
class LinkSink final : public CZKHtmlDietVirtualQueue {
 public:
  LinkSink(RecordsOutput& records, const std::string& baseUrl, const ScannedText& scanned);

  bool insert(CZKHTMLDietTransactionsObject* record) override;

  // Where the values that were found begin in the copy, in the order of their records.
  const std::vector<int>& offsets() const { return offsets_; }

 private:
  void write(std::string_view tag, CZKHTMLDietAttributeObject& attribute);
  std::string asWritten(CZKHTMLDietAttributeObject& attribute) const;
  RWCString resolved(CZKHTMLDietAttributeObject& attribute);

  RecordsOutput& records_;
  urlBase base_;
  bool baseHasEscapes_;
  ScannedText scanned_;
  std::vector<int> offsets_;
};

}  // namespace pagescan::tool

#endif
