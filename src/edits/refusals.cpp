// The words for why an edit is not made.
#include "pagescan/edits.h"

namespace pagescan {

std::string_view nameOf(EditRefusal reason) {
  switch (reason) {
    case EditRefusal::noReference:
      return "no_reference";
    case EditRefusal::notExpected:
      return "not_expected";
    case EditRefusal::overlaps:
      return "overlaps";
    case EditRefusal::notUtf8:
      return "not_utf8";
    case EditRefusal::noEscape:
      return "no_escape";
    case EditRefusal::notInEncoding:
      return "not_in_encoding";
    case EditRefusal::split:
      return "split";
    case EditRefusal::dividedByMarkup:
      return "divided_by_markup";
    case EditRefusal::changesEncoding:
      return "changes_encoding";
    case EditRefusal::changesOthers:
      return "changes_others";
    case EditRefusal::tooLarge:
      return "too_large";
  }
  return {};
}

std::string_view sentenceOf(EditRefusal reason) {
  switch (reason) {
    case EditRefusal::noReference:
      return "there is no such reference";
    case EditRefusal::notExpected:
      return "something else than the text expected stands there";
    case EditRefusal::overlaps:
      return "an earlier edit holds these bytes, too";
    case EditRefusal::notUtf8:
      return "the new value is not UTF-8";
    case EditRefusal::noEscape:
      return "the new value has a character that cannot be written in this place";
    case EditRefusal::notInEncoding:
      return "the new value has a character that the page's encoding lacks, and this place has no "
             "escape for it";
    case EditRefusal::split:
      return "read again, the new value would be several, another one or none";
    case EditRefusal::dividedByMarkup:
      return "tags stand between the bytes of this URL";
    case EditRefusal::changesEncoding:
      return "the page would be read in another encoding";
    case EditRefusal::changesOthers:
      return "other references would change, come or go";
    case EditRefusal::tooLarge:
      return "the result would have more than 4294967295 bytes";
  }
  return {};
}

}  // namespace pagescan
