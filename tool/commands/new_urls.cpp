#include "commands/new_urls.h"

#include <optional>
#include <utility>

#include "pagescan/url.h"
#include "percent.h"

namespace pagescan::tool {

namespace {

constexpr unsigned bitOf(Kind kind) {
  return 1U << static_cast<unsigned>(kind);
}

std::string_view withoutFragment(std::string_view url) {
  return url.substr(0, url.find('#'));
}

std::string baseOf(const Page& page, const Reference& reference, std::string_view) {
  return page.base(reference);
}
std::string baseOf(const StyleSheet&, const Reference&, std::string_view url) {
  return std::string(url);
}

bool isAbsoluteFor(std::string_view value, std::string_view target) {
  const std::optional<Url> url = Url::parse(value);
  return url && url->href() == target;
}

template <typename Document>
class Rewriter {
 public:
  Rewriter(const Document& document, std::string_view url, const UrlRules& rules)
      : document_(document), url_(url), rules_(rules) {}

  std::vector<Edit> edits() {
    std::vector<Edit> edits;
    const std::vector<Reference>& references = document_.references();
    for (std::size_t i = 0; i < references.size(); ++i) {
      if ((rules_.kinds & bitOf(references[i].kind)) == 0) continue;
      const std::optional<std::string> url = document_.url(references[i]);
      if (!url) continue;
      std::string value = document_.value(references[i]);
      if (isPlaceInPage(value, *url)) continue;
      std::optional<std::string> wanted = wantedValue(references[i], value, *url);
      if (wanted && *wanted != value) edits.push_back({i, *std::move(wanted), std::move(value)});
    }
    return edits;
  }

 private:
  // "#top" stays what it is wherever the page goes.
  bool isPlaceInPage(std::string_view value, std::string_view url) const {
    const std::size_t first = value.find_first_not_of(" \t\n\f\r");
    return first != std::string_view::npos && value[first] == '#' &&
           withoutFragment(url) == withoutFragment(url_);
  }

  std::string moved(std::string_view url) const {
    const UrlMove* longest = nullptr;
    for (const UrlMove& move : rules_.moves) {
      const bool fits = url.substr(0, move.from.size()) == move.from;
      if (fits && (longest == nullptr || move.from.size() > longest->from.size())) longest = &move;
    }
    if (longest == nullptr) return std::string(url);
    return longest->to + std::string(url.substr(longest->from.size()));
  }

  // What a reference will resolve against: the page moves with what is around it, and the URL of a
  // base element where it is rewritten.
  const std::string& newBaseOf(const Reference& reference) {
    const std::string base = baseOf(document_, reference, url_);
    if (base == oldBase_) return newBase_;
    const bool moves = base == url_ || (rules_.kinds & bitOf(Kind::base)) != 0;
    oldBase_ = base;
    newBase_ = moves ? moved(base) : std::string(base);
    return newBase_;
  }

  // Whether a value, left as it is, will mean the target.
  bool meansAlready(const Reference& reference, std::string_view value, std::string_view url,
                    std::string_view target) {
    const std::string& newBase = newBaseOf(reference);
    if (newBase == oldBase_) return url == target;
    const auto resolved = pagescan::resolve(value, newBase, document_.encoding());
    return resolved && *resolved == target;
  }

  // The new value of a reference; none where it stays.
  std::optional<std::string> wantedValue(const Reference& reference, std::string_view value,
                                         std::string_view url) {
    std::string target = moved(url);
    switch (rules_.form) {
      case UrlForm::absolute:
        return isAbsoluteFor(value, target) ? std::nullopt : std::optional(target);
      case UrlForm::relative:
        return relativeValue(reference, value, url, std::move(target));
      case UrlForm::proxied:
        return proxiedValue(target);
      case UrlForm::asItIs:
        break;
    }
    if (meansAlready(reference, value, url, target)) return std::nullopt;
    return target;
  }

  // JSON knows absolute URLs, or names that are none.
  std::optional<std::string> relativeValue(const Reference& reference, std::string_view value,
                                           std::string_view url, std::string target) {
    const bool isAbsolute = isAbsoluteFor(value, target);
    if (!isAbsolute && meansAlready(reference, value, url, target)) return std::nullopt;
    const std::optional<Url> base = Url::parse(newBaseOf(reference));
    const std::optional<Url> parsed = Url::parse(target);
    if (base && parsed && reference.slot != Slot::json) {
      std::string relative = parsed->relativeTo(*base);
      if (relative != target) return relative;
    }
    return isAbsolute ? std::nullopt : std::optional(std::move(target));
  }

  // The fragment is for the browser, and stays outside.
  std::optional<std::string> proxiedValue(std::string_view target) const {
    const std::string_view scheme = target.substr(0, target.find(':'));
    if (scheme != "http" && scheme != "https") return std::nullopt;
    const std::string_view whole = withoutFragment(target);
    return rules_.beforeUrl + percentEncoded(whole) + rules_.afterUrl +
           std::string(target.substr(whole.size()));
  }

  const Document& document_;
  std::string_view url_;
  const UrlRules& rules_;
  std::string oldBase_, newBase_;  // of the last reference
};

}  // namespace

unsigned usualKinds(UrlForm form) {
  if (form == UrlForm::proxied) {
    return bitOf(Kind::load) | bitOf(Kind::navigation) | bitOf(Kind::form) | bitOf(Kind::script);
  }
  return ~(bitOf(Kind::identifier) | bitOf(Kind::fragment));
}

UrlMove moveOf(const std::string& text, std::string& problem) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos) {
    problem = "\"" + text + "\" is not of the form FROM=TO";
    return {};
  }
  UrlMove move{text.substr(0, equals), text.substr(equals + 1)};
  for (std::string* const side : {&move.from, &move.to}) {
    const std::optional<Url> url = Url::parse(*side);
    if (!url) {
      problem = "\"" + *side + "\" is no absolute URL";
      return {};
    }
    *side = url->href();
  }
  // "https://a.test" became "https://a.test/": the other side must not lose its "/" by that.
  if (move.from.back() == '/' && move.to.back() != '/') move.to += '/';
  return move;
}

std::vector<Edit> editsFor(const Page& page, std::string_view url, const UrlRules& rules) {
  return Rewriter<Page>(page, url, rules).edits();
}

std::vector<Edit> editsFor(const StyleSheet& sheet, std::string_view url, const UrlRules& rules) {
  return Rewriter<StyleSheet>(sheet, url, rules).edits();
}

}  // namespace pagescan::tool
