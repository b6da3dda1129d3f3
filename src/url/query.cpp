#include "url/query.h"

#include "encoding/encoder.h"
#include "url/percent_encoding.h"
#include "url/utf8_reader.h"

namespace pagescan::internal {

void appendEncodedQuery(std::string& out, std::string_view text, const ByteClass& set,
                        Encoding encoding) {
  if (encoding == Encoding::utf8) return appendPercentEncoded(out, text, set);
  QueryEncoder encoder(encoding);
  std::string bytes;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = readUtf8(text, at);
    bytes.clear();
    const bool isEncoded = encoder.append(character, bytes);
    appendPercentEncoded(out, bytes, set);
    if (!isEncoded) {
      out += "%26%23";
      out += std::to_string(static_cast<unsigned long>(encoder.refused(character)));
      out += "%3B";
    }
  }
  bytes.clear();
  encoder.finish(bytes);
  appendPercentEncoded(out, bytes, set);
}

}  // namespace pagescan::internal
