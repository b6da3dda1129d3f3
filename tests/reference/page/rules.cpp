#include "reference/page/rules.h"

#include <algorithm>
#include <vector>

namespace reference::page {

namespace {

std::string lowerValue(const Node& element, std::string_view name) {
  return toAsciiLower(element.value(name));
}

bool has(const Node& element, std::string_view name) {
  return element.attribute(name) != nullptr;
}

bool isLazy(const Node& element) {
  return lowerValue(element, "loading") == "lazy";
}

// The current node of the parser when the element was inserted.
bool parentIs(const Node& element, std::initializer_list<std::string_view> names) {
  return element.openParent && element.openParent->isHtmlOneOf(names);
}

bool isMediaOther(const Node& element) {
  const std::string media = lowerValue(element, "media");
  return !isOneOf(stripped(media), {"", "all", "screen"});
}

// --- link -------------------------------------------------------------------------------------

bool isIcon(std::string_view word) {
  return isOneOf(word, {"icon", "apple-touch-icon", "apple-touch-icon-precomposed", "mask-icon",
                        "fluid-icon"});
}

bool isLoadingWord(std::string_view word) {
  return isIcon(word) || isOneOf(word, {"stylesheet", "preload", "modulepreload", "prefetch",
                                        "prerender", "manifest", "compression-dictionary"});
}

bool isPreloadedImageSet(const Node& link) {
  return lowerValue(link, "as") == "image" && has(link, "imagesrcset");
}

bool isSheetConditional(const Node& link) {
  const std::string type = lowerValue(link, "type");
  const std::string_view essence = stripped(std::string_view(type).substr(0, type.find(';')));
  return has(link, "disabled") || !isOneOf(essence, {"", "text/css"});
}

bool isPreloadConditional(const Node& link, bool scripting) {
  const std::string as = lowerValue(link, "as");
  return isMediaOther(link) || !link.value("type").empty() ||
         !isOneOf(as, {"fetch", "font", "image", "script", "style", "track"}) ||
         (as == "script" && !scripting);
}

std::set<std::string> flagsOfWord(std::string_view word, const Node& link, bool scripting) {
  std::set<std::string> flags;
  if (isIcon(word) || (word == "preload" && isPreloadedImageSet(link))) flags.insert("candidate");
  if ((isIcon(word) && word != "icon") ||
      isOneOf(word, {"prefetch", "prerender", "manifest", "compression-dictionary"})) {
    flags.insert("lazy");
  }
  const bool isConditional =
      (word == "stylesheet" && isSheetConditional(link)) ||
      (word == "preload" && isPreloadConditional(link, scripting)) ||
      (word == "modulepreload" &&
       (isMediaOther(link) || !scripting ||
        !isOneOf(lowerValue(link, "as"), {"", "script", "style", "json"}))) ||
      (word == "icon" && (isMediaOther(link) || !parentIs(link, {"head"}))) || word == "prerender";
  if (isConditional) flags.insert("conditional");
  return flags;
}

Verdict judgeLink(const Node& link, bool scripting) {
  bool loads = false;
  std::set<std::string> common;
  const std::vector<std::string> words = splitOnWhitespace(lowerValue(link, "rel"));
  for (const std::string& word : words) {
    if (!isLoadingWord(word)) continue;
    std::set<std::string> flags = flagsOfWord(word, link, scripting);
    if (loads) {
      std::erase_if(common, [&](const std::string& flag) { return flags.count(flag) == 0; });
    } else {
      common = flags;
    }
    loads = true;
  }
  const auto hasWord = [&](std::string_view word) {
    return std::find(words.begin(), words.end(), word) != words.end();
  };
  if (loads) return {"load", common};
  if (hasWord("preconnect") || hasWord("dns-prefetch")) return {"connection", {}};
  if (hasWord("expect")) return {"fragment", {}};
  return {"metadata", {}};
}

Verdict judgeImageSrcset(const Node& link) {
  const std::vector<std::string> words = splitOnWhitespace(lowerValue(link, "rel"));
  const bool preloads = std::find(words.begin(), words.end(), "preload") != words.end();
  if (preloads && lowerValue(link, "as") == "image") return {"load", {"candidate"}};
  return {"dead", {}};
}

// --- scripts ----------------------------------------------------------------------------------

bool isJavaScript(std::string_view type) {
  return isOneOf(
      type, {"application/ecmascript", "application/javascript", "application/x-ecmascript",
             "application/x-javascript", "text/ecmascript", "text/javascript", "text/javascript1.0",
             "text/javascript1.1", "text/javascript1.2", "text/javascript1.3", "text/javascript1.4",
             "text/javascript1.5", "text/jscript", "text/livescript", "text/x-ecmascript",
             "text/x-javascript"});
}

Verdict judgeScript(const Node& script, bool scripting) {
  const std::string type = scriptTypeOf(script);
  if (type != "text/javascript" && type != "module") return {"dead", {}};
  const bool isSkipped =
      type != "module" && script.space == Namespace::html && has(script, "nomodule");
  if (isSkipped || !scripting) return {"load", {"conditional"}};
  return {"load", {}};
}

// --- embedded content ---------------------------------------------------------------------------

Verdict judgeSource(const Node& source, std::string_view attribute, bool scripting) {
  const bool isSrcset = attribute == "srcset";
  if (parentIs(source, {"picture"})) {
    return isSrcset ? Verdict{"load", {"candidate"}} : Verdict{"dead", {}};
  }
  if (isSrcset || !parentIs(source, {"video", "audio"}) || has(*source.openParent, "src")) {
    return {"dead", {}};
  }
  const bool lazy = lowerValue(*source.openParent, "preload") == "none" ||
                    (scripting && isLazy(*source.openParent));
  return lazy ? Verdict{"load", {"candidate", "lazy"}} : Verdict{"load", {"candidate"}};
}

Verdict judgeTrack(const Node& track, bool scripting) {
  if (!parentIs(track, {"video", "audio"})) return {"dead", {}};
  Verdict verdict = {"load", {}};
  if (!has(track, "default")) verdict.flags.insert("conditional");
  if (scripting && isLazy(*track.openParent)) verdict.flags.insert("lazy");
  return verdict;
}

Verdict judgePlugin(const Node& element, std::string_view value) {
  const std::string path = toAsciiLower(stripped(value.substr(0, value.find_first_of("?#"))));
  const bool isConditional = !element.value("type").empty() ||
                             (element.name == "object" && !element.value("classid").empty()) ||
                             element.insideObjectOrMedia || path.ends_with(".swf");
  return isConditional ? Verdict{"load", {"conditional"}} : Verdict{"load", {}};
}

Verdict judgeImage(const Node& image, bool scripting) {
  Verdict verdict = {"load", {}};
  if (has(image, "srcset") || parentIs(image, {"picture"})) verdict.flags.insert("candidate");
  if (scripting && isLazy(image)) verdict.flags.insert("lazy");
  return verdict;
}

Verdict judgeSvg(const PlaceRow& row, const Node& element, std::string_view attribute,
                 std::string_view value, bool scripting) {
  if (attribute == "xlink:href" && has(element, "href")) return {"dead", {}};
  if (row.rule == "svg-ref") return {value.starts_with('#') ? "fragment" : "dead", {}};
  if (element.name == "script") return judgeScript(element, scripting);
  if (isOneOf(element.name, {"use", "feImage"}) && value.starts_with('#')) return {"fragment", {}};
  return {row.kind, {}};
}

}  // namespace

std::string scriptTypeOf(const Node& script) {
  std::string type;
  if (script.attribute("type")) {
    type = lowerValue(script, "type");
  } else if (script.space == Namespace::html && !script.value("language").empty()) {
    type = "text/" + lowerValue(script, "language");
    return isJavaScript(type) ? "text/javascript" : type;
  }
  if (type.empty() || isJavaScript(stripped(type))) return "text/javascript";
  return type;
}

bool isRowFor(const PlaceRow& row, const Node& element, std::string_view attribute) {
  const std::string space = element.space == Namespace::html  ? "html"
                            : element.space == Namespace::svg ? "svg"
                                                              : "mathml";
  if (row.space != "any" && row.space != space) return false;
  if (row.element != "*" && row.element != element.name) return false;
  if (row.attribute != attribute) return false;
  if (row.rule == "refresh") return lowerValue(element, "http-equiv") == "refresh";
  if (row.rule == "meta") {
    for (const char* const name : {"property", "name", "itemprop"}) {
      for (const std::string& word : splitOnWhitespace(lowerValue(element, name))) {
        if (word == row.metaName) return true;
      }
    }
    return false;
  }
  if (row.rule == "json") {
    const std::string type = scriptTypeOf(element);
    return stripped(type.substr(0, type.find(';'))) == "application/ld+json" ||
           isOneOf(type, {"importmap", "speculationrules"});
  }
  return true;
}

Verdict judge(const PlaceRow& row, const Node& element, std::string_view attribute,
              std::string_view value, bool scripting) {
  const std::string& rule = row.rule;
  const bool lazy = scripting && isLazy(element);
  if (rule == "link") return judgeLink(element, scripting);
  if (rule == "imagesrcset") return judgeImageSrcset(element);
  if (rule == "img-src") return judgeImage(element, scripting);
  if (rule == "candidate") {
    return {"load",
            lazy ? std::set<std::string>{"candidate", "lazy"} : std::set<std::string>{"candidate"}};
  }
  if (rule == "source") return judgeSource(element, attribute, scripting);
  if (rule == "iframe" || rule == "frame") {
    if (has(element, "srcdoc")) return {"dead", {}};
    if (rule == "iframe" && lazy) return {"load", {"lazy"}};
    return {"load", {}};
  }
  if (rule == "plugin") return judgePlugin(element, value);
  if (rule == "script") return judgeScript(element, scripting);
  if (rule == "media") {
    if (lazy || lowerValue(element, "preload") == "none") return {"load", {"lazy"}};
    return {"load", {}};
  }
  if (rule == "poster")
    return {"load", isLazy(element) ? std::set<std::string>{"lazy"} : std::set<std::string>{}};
  if (rule == "track") return judgeTrack(element, scripting);
  if (rule == "input") return {lowerValue(element, "type") == "image" ? "load" : "dead", {}};
  if (rule == "svg-href" || rule == "svg-ref") {
    return judgeSvg(row, element, attribute, value, scripting);
  }
  if (rule == "nonstandard") return {row.kind, {"nonstandard"}};
  return {row.kind, {}};
}

}  // namespace reference::page
