// Percent decoding and the checks, beside the twins, and undone by encoding where a check says so.

#include "reference/classic/zkurlencoding.h"
#include "support/input.h"
#include "zkurlencoding.h"

using fuzz::check;
using fuzz::textOf;

namespace {

class Placeholder {
 public:
  explicit Placeholder(const fuzz::CString& text) {
    persentEscape = text.data();
    persentEscapeLength = text.length() - 1;
  }
  Placeholder(const Placeholder&) = delete;
  Placeholder& operator=(const Placeholder&) = delete;
  ~Placeholder() {
    persentEscape = before_;
    persentEscapeLength = lengthBefore_;
  }

 private:
  const char* before_ = persentEscape;
  int lengthBefore_ = persentEscapeLength;
};

bool isUndone(std::string_view part, UrlEncoding::EncodingType flavour) {
  RWCString decoded = fuzz::stringOf(part);
  UrlEncoding::DecodeString(decoded, flavour);
  RWCString encoded;
  UrlEncoding::EncodeString(decoded, encoded, flavour);
  return textOf(encoded) == part;
}

// Whether encoding undoes decoding for each name and value.
bool isUndoneInParts(std::string_view text, UrlEncoding::EncodingType flavour) {
  while (!text.empty()) {
    const std::string_view item = text.substr(0, text.find('&'));
    const std::size_t equals = std::min(item.find('='), item.size());
    const std::string_view value = item.substr(std::min(equals + 1, item.size()));
    if (!isUndone(item.substr(0, equals), flavour) || !isUndone(value, flavour)) return false;
    text.remove_prefix(std::min(item.size() + 1, text.size()));
  }
  return true;
}

void checkFlavour(const std::string& text, int type, const std::string& placeholder) {
  const auto flavour = static_cast<UrlEncoding::EncodingType>(type);
  RWCString decoded = fuzz::stringOf(text);
  std::string expected = text;
  const bool isDecoded = UrlEncoding::DecodeString(decoded, flavour);
  check(isDecoded == reference::DecodeString(expected, type, placeholder) &&
            textOf(decoded) == expected,
        "a text is decoded as by the twin");
  const bool passes = UrlEncoding::CheckUrlDecoding(fuzz::stringOf(text), flavour);
  check(passes == reference::CheckUrlDecoding(text, type, placeholder),
        "a text is checked as by the twin");
  check(passes == isUndoneInParts(text, flavour), "a check tells whether encoding undoes decoding");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const int type = static_cast<int>(input.number(12)) - 1;
  const fuzz::CString placeholder(input.text());
  const std::string text(input.rest());

  checkFlavour(text, type, reference::kPlaceholder);
  check(UrlEncoding::CheckUrlDecoding(fuzz::stringOf(text)) == reference::CheckUrlDecoding(text),
        "the flavour is recognised as by the twin");
  if (placeholder.length() > 1) {
    const Placeholder changed(placeholder);
    checkFlavour(text, type, placeholder.data());
  }
  return 0;
}
