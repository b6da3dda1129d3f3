// A domain beside the twin, its normal form, and Punycode there and back.

#include <optional>
#include <string>

#include "reference/url/percent.h"
#include "reference/url/url.h"
#include "support/input.h"
#include "url/host.h"
#include "url/punycode.h"
#include "url/unicode.h"

namespace {

using fuzz::check;
using reference::CodePoints;
namespace internal = pagescan::internal;

void checkHost(const CodePoints& domain) {
  const std::string text = reference::encodeUtf8(domain);
  const fuzz::Block block(text);
  std::string out;
  const bool isHost = internal::appendHost(out, {block.data(), block.size()}, true);
  const std::optional<CodePoints> wanted = reference::parseHost(domain, false);
  check(isHost == wanted.has_value(), "a domain is one where the twin has one");
  if (isHost) check(out == reference::encodeUtf8(*wanted), "a domain as the twin's");
}

void checkPunycode(const CodePoints& label) {
  std::string out;
  if (!internal::appendPunycode(out, label)) return;
  if (reference::decodeUtf8(out).size() > internal::kMostBytesToDecode) return;
  check(internal::decodedPunycode(reference::decodeUtf8(out)) == label,
        "Punycode reads what it writes");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kMost = 2000;  // the twin takes quadratic time
  fuzz::Input input(data, size);
  const CodePoints domain = reference::decodeUtf8(input.rest().substr(0, kMost));
  if (domain.empty()) return 0;
  checkHost(domain);
  std::u32string normal = domain;
  internal::normalize(normal);
  check(normal == reference::toNfc(domain), "a normal form as the twin's");
  checkPunycode(domain);
  return 0;
}
