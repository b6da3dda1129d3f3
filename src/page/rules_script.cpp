// Whether a script element holds JavaScript.
#include <algorithm>
#include <iterator>

#include "page/rules.h"
#include "page/words.h"

namespace pagescan::internal {
namespace {

// The JavaScript MIME types of the MIME Sniffing Standard, 4.6.
constexpr std::string_view kJavaScriptTypes[] = {
    "application/ecmascript",
    "application/javascript",
    "application/x-ecmascript",
    "application/x-javascript",
    "text/ecmascript",
    "text/javascript",
    "text/javascript1.0",
    "text/javascript1.1",
    "text/javascript1.2",
    "text/javascript1.3",
    "text/javascript1.4",
    "text/javascript1.5",
    "text/jscript",
    "text/livescript",
    "text/x-ecmascript",
    "text/x-javascript",
};
static_assert(std::size(kJavaScriptTypes) == 16);

bool isJavaScript(std::string_view type) {
  return std::any_of(std::begin(kJavaScriptTypes), std::end(kJavaScriptTypes),
                     [&](std::string_view known) { return equalsIgnoringCase(type, known); });
}

bool isJavaScriptLanguage(std::string_view language) {
  constexpr std::string_view kText = "text/";
  return std::any_of(std::begin(kJavaScriptTypes), std::end(kJavaScriptTypes),
                     [&](std::string_view known) {
                       return known.substr(0, kText.size()) == kText &&
                              equalsIgnoringCase(language, known.substr(kText.size()));
                     });
}

enum class ScriptType { classic, module, data };

// Source   HTML Standard, 4.12.1.1 "prepare the script element"; for SVG `type` alone decides
ScriptType typeOf(const Situation& situation) {
  if (const auto type = situation.text(Attribute::type)) {
    if (type->empty() || isJavaScript(withoutSpaceAround(*type))) return ScriptType::classic;
    return equalsIgnoringCase(*type, "module") ? ScriptType::module : ScriptType::data;
  }
  if (!situation.isHtml()) return ScriptType::classic;
  const std::string_view language = situation.text(Attribute::language).value_or("");
  return language.empty() || isJavaScriptLanguage(language) ? ScriptType::classic
                                                            : ScriptType::data;
}

}  // namespace

std::optional<Judgement> judgeScript(const Situation& situation, const TagAttribute&,
                                     const Place&) {
  const ScriptType type = typeOf(situation);
  if (type == ScriptType::data) return Judgement{Kind::dead};
  const bool isHtml = situation.isHtml();
  const bool isForOthers =
      isHtml && type == ScriptType::classic && situation.has(Attribute::nomodule);
  const bool isConditional = !situation.scripting() || isForOthers;
  return Judgement{Kind::load, isConditional ? Flags{kConditional} : Flags{0}};
}

}  // namespace pagescan::internal
