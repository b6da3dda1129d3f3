// Reads a page as a whole: its encoding first.
#include "page/page_reading.h"

#include <algorithm>
#include <utility>

#include "base/words.h"
#include "encoding/sniffing.h"
#include "page/part_reader.h"
#include "page/values.h"

namespace pagescan::internal {
namespace {

bool isAscii(std::string_view bytes) {
  std::uint64_t joined = 0;
  for (; bytes.size() >= sizeof joined; bytes.remove_prefix(sizeof joined)) {
    joined |= loadWord<std::uint64_t>(bytes.data());
  }
  for (const char c : bytes) joined |= toByte(c);
  return (joined & 0x8080808080808080) == 0;
}

std::unique_ptr<PageReading> readOnce(std::string_view bytes, const PageOptions& options,
                                      const KnownEncoding& known) {
  const Places::Table* const own = options.places == nullptr ? nullptr : options.places->table();
  auto reading = std::make_unique<PageReading>(options.url, options.profiles, own);
  reading->encoding = known.encoding;
  reading->encodingIsSettled = known.isSettled;
  if (known.encoding == Encoding::replacement) bytes = {};
  reading->text =
      std::make_unique<TextLayer>(bytes, std::min(known.bomLength, bytes.size()), known.encoding);
  Part part;
  part.range = {0, static_cast<std::uint32_t>(reading->text->text().size())};
  part.scripting = options.scripting;
  PartReader(*reading, *reading->text, part).read();
  return reading;
}

}  // namespace

void PageReading::noteBytes(std::string_view bytes) {
  if (!encodingIsSettled && !dependsOnEncoding) dependsOnEncoding = !isAscii(bytes);
}

// Source   HTML Standard, 13.2.3.1 "Parsing with a known character encoding" and after; the meta
//          elements of the whole head count here, not those of the first bytes alone
KnownEncoding encodingOf(std::string_view bytes, std::string_view charset) {
  if (const auto bom = bomOf(bytes)) return {bom->encoding, true, bom->length};
  if (const auto named = encodingForLabel(charset)) return {*named, true, 0};
  const Encoding guess = prescan(bytes).value_or(Encoding::windows1252);
  return {guess, isUtf16(guess), 0};
}

std::unique_ptr<PageReading> readPage(std::string_view bytes, const PageOptions& options) {
  KnownEncoding known = encodingOf(bytes, options.charset);
  auto reading = readOnce(bytes, options, known);
  if (reading->mustReadAgain) {
    known.encoding = reading->encoding;
    known.isSettled = true;
    reading = readOnce(bytes, options, known);
  }
  std::sort(reading->values.begin(), reading->values.end(),
            [](const StoredValue& a, const StoredValue& b) {
              return std::pair(a.begin, a.tag) < std::pair(b.begin, b.tag);
            });
  reading->documents.resolveBases(bytes.size(), [&reading](const Reference& base) {
    return std::string(ValueReader(*reading).read(base));
  });
  return reading;
}

}  // namespace pagescan::internal
