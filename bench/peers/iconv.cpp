// iconv of the C library: conversions; a conversion to itself checks a text.
#include <iconv.h>

#include <memory>
#include <string>

#include "peers.h"

namespace pagescan::bench {
namespace {

struct Converter {
  Converter(const char* to, const char* from) : handle(iconv_open(to, from)) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { iconv_close(handle); }
  iconv_t handle;
};

// A character without a place in the other set becomes "?".
std::size_t run(const Converter& converter, std::string_view text) {
  static std::string buffer;
  if (buffer.size() < 3 * text.size()) buffer.resize(3 * text.size());
  char* out = buffer.data();
  std::size_t outLeft = buffer.size();
  for (std::size_t at = 0; at < text.size();) {
    char* in = const_cast<char*>(text.data() + at);
    std::size_t inLeft = text.size() - at;
    iconv(converter.handle, &in, &inLeft, &out, &outLeft);
    if (inLeft == 0) break;
    *out++ = '?';
    --outLeft;
    at = characterEnd(text, text.size() - inLeft);
  }
  return buffer.size() - outLeft;
}

std::size_t checkUtf8(std::string_view text) {
  static const Converter converter("UTF-8", "UTF-8");
  return run(converter, text);
}

std::size_t latin1ToUtf8(std::string_view text) {
  static const Converter converter("UTF-8", "ISO-8859-1");
  return run(converter, text);
}

std::size_t utf8ToLatin1(std::string_view text) {
  static const Converter converter("ISO-8859-1", "UTF-8");
  return run(converter, text);
}

Decode decoderOf(const std::string& encoding) {
  const auto converter = std::make_shared<const Converter>("UTF-8", encoding.c_str());
  return [converter](std::string_view text) { return run(*converter, text); };
}

const PeerRegistration kIconv({.name = "iconv",
                               .checkUtf8 = checkUtf8,
                               .latin1ToUtf8 = latin1ToUtf8,
                               .utf8ToLatin1 = utf8ToLatin1,
                               .decoder = decoderOf});

}  // namespace
}  // namespace pagescan::bench
