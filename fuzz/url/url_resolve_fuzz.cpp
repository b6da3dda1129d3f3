// A link against a base in some encoding, beside the twin; and what every result promises.

#include <optional>
#include <string>
#include <string_view>

#include "pagescan/url.h"
#include "reference/url/percent.h"
#include "reference/url/url.h"
#include "support/input.h"
#include "url/resolver.h"

namespace {

using fuzz::check;
using pagescan::Base;
using pagescan::Url;
using pagescan::internal::Encoding;
using pagescan::internal::kEncodingCount;

std::optional<std::string> byLibrary(std::string_view link, const Base& base, Encoding encoding) {
  const fuzz::Block block(link);
  std::string out;
  if (!pagescan::internal::resolveInto(out, {block.data(), block.size()}, base, encoding)) {
    return std::nullopt;
  }
  return out;
}

// The components cover the text: put together with their delimiters they are it.
void checkComponents(const Url& url) {
  std::string text(url.scheme());
  text += ':';
  if (url.host()) {
    text += "//";
    text += url.username();
    if (!url.password().empty()) text.append(":").append(url.password());
    if (!url.username().empty() || !url.password().empty()) text += '@';
    text += *url.host();
    if (url.port()) text.append(":").append(*url.port());
  } else if (url.path().substr(0, 2) == "//") {
    text += "/.";
  }
  text += url.path();
  if (url.query()) text.append("?").append(*url.query());
  if (url.fragment()) text.append("#").append(*url.fragment());
  check(text == url.href(), "the components make up the URL");
}

void checkResult(const std::string& href) {
  for (const char c : href) check(c >= 0x20 && c < 0x7F, "a URL is visible ASCII and spaces");
  const std::optional<Url> again = Url::parse(href);
  check(again && again->href() == href, "a URL parses to itself");
  checkComponents(*again);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const auto encoding = static_cast<Encoding>(input.number(kEncodingCount));
  const std::string_view baseText = input.text();
  const std::string_view link = input.rest();
  const auto record = reference::parseUrl(baseText, nullptr, Encoding::utf8);
  const std::optional<Base> parsed = Base::parse(baseText);
  check(parsed.has_value() == record.has_value(), "a base is one where the twin has one");
  if (parsed) check(parsed->url()->href() == reference::serialize(*record), "a base as the twin's");
  const Base base = parsed.value_or(Base());

  const auto wanted = reference::parseUrl(link, record ? &*record : nullptr, encoding);
  const std::optional<std::string> url = byLibrary(link, base, encoding);
  check(url.has_value() == wanted.has_value(), "a link resolves where the twin's does");
  if (!url) return 0;
  check(*url == reference::serialize(*wanted), "a link resolves as the twin's");
  checkResult(*url);
  return 0;
}
