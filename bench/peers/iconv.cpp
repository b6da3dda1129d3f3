// iconv of the C library: conversions; a conversion to itself checks a text.
#include <iconv.h>

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

std::size_t run(const Converter& converter, std::string_view text) {
  static std::string buffer;
  if (buffer.size() < 3 * text.size()) buffer.resize(3 * text.size());
  char* in = const_cast<char*>(text.data());
  char* out = buffer.data();
  std::size_t inLeft = text.size();
  std::size_t outLeft = buffer.size();
  // A character that has no place in the other set stops iconv; it goes on behind it, as "?".
  while (iconv(converter.handle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1) &&
         inLeft > 1) {
    ++in;
    --inLeft;
    *out++ = '?';
    --outLeft;
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

const PeerRegistration kIconv({.name = "iconv",
                               .checkUtf8 = checkUtf8,
                               .latin1ToUtf8 = latin1ToUtf8,
                               .utf8ToLatin1 = utf8ToLatin1});

}  // namespace
}  // namespace pagescan::bench
