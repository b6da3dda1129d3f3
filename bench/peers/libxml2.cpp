// libxml2: makes a page's tree or tells its tags one by one, resolves and escapes, converts.
#include <libxml/HTMLparser.h>
#include <libxml/encoding.h>
#include <libxml/uri.h>

#include <memory>
#include <string>
#include <utility>

#include "peers.h"

namespace pagescan::bench {
namespace {

const xmlChar* xmlText(const char* text) {
  return reinterpret_cast<const xmlChar*>(text);
}

std::size_t freed(xmlChar* text) {
  const bool isThere = text != nullptr;
  xmlFree(text);
  return isThere ? 1 : 0;
}

std::size_t parsePage(std::string_view page) {
  constexpr int kQuiet = HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
  const htmlDocPtr document = htmlReadMemory(page.data(), static_cast<int>(page.size()), nullptr,
                                             nullptr, HTML_PARSE_RECOVER | kQuiet);
  xmlFreeDoc(document);
  return document == nullptr ? 0 : 1;
}

std::size_t countTags(std::string_view page) {
  std::size_t tags = 0;
  htmlSAXHandler handler{};
  handler.startElement = [](void* context, const xmlChar*, const xmlChar**) {
    ++*static_cast<std::size_t*>(context);
  };
  const htmlParserCtxtPtr parser =
      htmlCreateMemoryParserCtxt(page.data(), static_cast<int>(page.size()));
  htmlSAXHandler* const own = std::exchange(parser->sax, &handler);
  parser->userData = &tags;
  htmlParseDocument(parser);
  parser->sax = own;
  htmlFreeParserCtxt(parser);
  return tags;
}

// Its complaints about pages and URLs go nowhere.
void ignoreError(void* /*context*/, const char* /*format*/, ...) {}
const bool kIsQuiet = (xmlSetGenericErrorFunc(nullptr, ignoreError), true);

Resolve resolver(const std::string& base) {
  return [base](std::string_view link) {
    return freed(xmlBuildURI(xmlText(link.data()), xmlText(base.c_str())));
  };
}

std::size_t encode(std::string_view text) {
  return freed(xmlURIEscapeStr(xmlText(text.data()), xmlText("")));
}

std::size_t decode(std::string_view text) {
  char* const result = xmlURIUnescapeString(text.data(), static_cast<int>(text.size()), nullptr);
  return freed(reinterpret_cast<xmlChar*>(result));
}

std::size_t checkUtf8(std::string_view text) {
  return static_cast<std::size_t>(xmlCheckUTF8(xmlText(text.data())));
}

using Conversion = int (*)(unsigned char* out, int* outLength, const unsigned char* in,
                           int* inLength);

// A character without a place in the other set becomes "?".
template <Conversion convert>
std::size_t converted(std::string_view text) {
  static std::string buffer;
  if (buffer.size() < 3 * text.size()) buffer.resize(3 * text.size());
  const auto out = reinterpret_cast<unsigned char*>(buffer.data());
  std::size_t written = 0;
  for (std::size_t at = 0; at < text.size();) {
    int outLength = static_cast<int>(buffer.size() - written);
    int inLength = static_cast<int>(text.size() - at);
    convert(out + written, &outLength, xmlText(text.data() + at), &inLength);
    written += static_cast<std::size_t>(outLength);
    at += static_cast<std::size_t>(inLength);
    if (at == text.size()) break;
    out[written++] = '?';
    at = characterEnd(text, at);
  }
  return written;
}

const PeerRegistration kLibxml2({.name = "libxml2",
                                 .parsePage = parsePage,
                                 .resolver = resolver,
                                 .encode = encode,
                                 .decode = decode,
                                 .checkUtf8 = checkUtf8,
                                 .latin1ToUtf8 = converted<isolat1ToUTF8>,
                                 .utf8ToLatin1 = converted<UTF8Toisolat1>});
const PeerRegistration kLibxml2Events({.name = "libxml2, events", .parsePage = countTags});

}  // namespace
}  // namespace pagescan::bench
