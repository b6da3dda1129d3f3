// The names of kinds, slots and flags.
#include "pagescan/page.h"

namespace pagescan {

std::string_view nameOf(Kind kind) {
  switch (kind) {
    case Kind::load:
      return "load";
    case Kind::navigation:
      return "navigation";
    case Kind::form:
      return "form";
    case Kind::ping:
      return "ping";
    case Kind::connection:
      return "connection";
    case Kind::base:
      return "base";
    case Kind::metadata:
      return "metadata";
    case Kind::identifier:
      return "identifier";
    case Kind::fragment:
      return "fragment";
    case Kind::script:
      return "script";
    case Kind::dead:
      return "dead";
  }
  return "";
}

std::string_view nameOf(Slot slot) {
  switch (slot) {
    case Slot::url:
      return "url";
    case Slot::urlList:
      return "url_list";
    case Slot::commaList:
      return "comma_list";
    case Slot::srcset:
      return "srcset";
    case Slot::refresh:
      return "refresh";
    case Slot::cssUrl:
      return "css_url";
    case Slot::cssString:
      return "css_string";
    case Slot::json:
      return "json";
  }
  return "";
}

std::string_view nameOf(Flag flag) {
  switch (flag) {
    case kNoscript:
      return "noscript";
    case kTemplate:
      return "template";
    case kCandidate:
      return "candidate";
    case kLazy:
      return "lazy";
    case kConditional:
      return "conditional";
    case kNonstandard:
      return "nonstandard";
    case kNested:
      return "nested";
  }
  return "";
}

}  // namespace pagescan
