#include "url/host.h"

#include <algorithm>

#include "url/domain.h"
#include "url/ip_address.h"
#include "url/percent_encoding.h"
#include "url/percent_sets.h"

namespace pagescan::internal {
namespace {

bool holdsAnyOf(const ByteClass& set, std::string_view text) {
  return std::any_of(text.begin(), text.end(), [&set](char c) { return set.contains(c); });
}

bool appendDomainOrIpv4(std::string& out, std::string_view text) {
  const std::size_t begin = out.size();
  const bool isEncoded = text.find('%') != std::string_view::npos;
  if (!appendAsciiDomain(out, isEncoded ? percentDecoded(text) : text)) return false;
  const std::string_view domain = std::string_view(out).substr(begin);
  if (domain.empty() || holdsAnyOf(kForbiddenInDomain, domain)) return false;
  if (!endsInNumber(domain)) return true;
  const std::string number(domain);
  out.resize(begin);
  return appendIpv4(out, number);
}

}  // namespace

bool appendHost(std::string& out, std::string_view text, bool isSpecial) {
  if (!text.empty() && text.front() == '[') {
    return text.back() == ']' && appendIpv6(out, text.substr(1, text.size() - 2));
  }
  if (isSpecial) return appendDomainOrIpv4(out, text);
  if (holdsAnyOf(kForbiddenInHost, text)) return false;
  appendPercentEncoded(out, text, kC0ControlSet);
  return true;
}

}  // namespace pagescan::internal
