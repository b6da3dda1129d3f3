// The public classes over the parser.
#include "pagescan/url.h"

#include <utility>

#include "url/parser.h"
#include "url/resolver.h"
#include "url/scheme.h"

namespace pagescan {

using internal::Encoding;

bool Url::assign(std::string_view text, const Url* base, std::string_view encoding) {
  const internal::UrlView view{base ? std::string_view(base->text_) : std::string_view(),
                               base ? base->at_ : at_};
  const Encoding queryEncoding = internal::queryEncodingForLabel(encoding);
  if (!internal::parseUrl(text_, at_, text, base ? &view : nullptr, queryEncoding)) return false;
  isSpecial_ = internal::schemeKindOf(scheme()) != internal::SchemeKind::other;
  return true;
}

std::optional<Url> Url::parse(std::string_view text, std::string_view encoding) {
  std::optional<Url> url(std::in_place);
  if (!url->assign(text, nullptr, encoding)) url.reset();
  return url;
}

std::optional<Url> Url::parse(std::string_view text, const Url& base, std::string_view encoding) {
  std::optional<Url> url(std::in_place);
  if (!url->assign(text, &base, encoding)) url.reset();
  return url;
}

std::string_view Url::password() const {
  // Credentials end before an "@".
  if (at_.usernameEnd == at_.hostBegin || text_[at_.usernameEnd] != ':') return {};
  return part(at_.usernameEnd + 1, at_.hostBegin - 1);
}

std::optional<std::string_view> Url::host() const {
  if (at_.hostBegin == at_.schemeEnd + 1) return std::nullopt;
  return part(at_.hostBegin, at_.hostEnd);
}

std::optional<std::string_view> Url::port() const {
  if (at_.hostEnd == at_.pathBegin || text_[at_.hostEnd] != ':') return std::nullopt;
  return part(at_.hostEnd + 1, at_.pathBegin);
}

std::optional<std::string_view> Url::query() const {
  if (at_.queryBegin == at_.fragmentBegin) return std::nullopt;
  return part(at_.queryBegin + 1, at_.fragmentBegin);
}

std::optional<std::string_view> Url::fragment() const {
  if (at_.fragmentBegin == text_.size()) return std::nullopt;
  return part(at_.fragmentBegin + 1, text_.size());
}

bool Url::hasOpaquePath() const {
  return !host() && (path().empty() || path().front() != '/');
}

Base::Base(Url url) : url_(std::move(url)) {
  const internal::SchemeKind kind = internal::schemeKindOf(url_->scheme());
  if (kind != internal::SchemeKind::http && kind != internal::SchemeKind::https) return;
  const UrlOffsets& at = url_->offsets();
  directoryEnd_ = at.pathBegin + url_->path().rfind('/') + 1;
}

std::optional<Base> Base::parse(std::string_view url) {
  std::optional<Url> parsed = Url::parse(url);
  if (!parsed) return std::nullopt;
  return Base(*std::move(parsed));
}

std::optional<std::string> Base::resolve(std::string_view url, std::string_view encoding) const {
  std::optional<std::string> result(std::in_place);
  if (!internal::resolveInto(*result, url, *this, internal::queryEncodingForLabel(encoding))) {
    result.reset();
  }
  return result;
}

std::optional<std::string> resolve(std::string_view url, std::string_view base,
                                   std::string_view encoding) {
  if (base.empty()) return Base().resolve(url, encoding);
  const std::optional<Base> parsed = Base::parse(base);
  return parsed ? parsed->resolve(url, encoding) : std::nullopt;
}

}  // namespace pagescan
