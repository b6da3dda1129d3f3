#include "reference/page/style_references.h"

#include <algorithm>
#include <utility>

#include "reference/page/css_tokens.h"

namespace reference::page {

namespace {

using Kind = CssToken::Kind;

char32_t closerOf(const CssToken& token) {
  if (token.kind == Kind::function) return ')';
  if (token.kind != Kind::delimiter) return 0;
  return token.code == '(' ? ')' : token.code == '[' ? ']' : token.code == '{' ? '}' : 0;
}

bool isDelimiter(const CssToken& token, char32_t code) {
  return token.kind == Kind::delimiter && token.code == code;
}

bool isSkipped(const CssToken& token) {
  return token.kind == Kind::whitespace || token.kind == Kind::comment || token.kind == Kind::cdo ||
         token.kind == Kind::cdc;
}

bool isImageSet(const std::string& name) {
  return isOneOf(name, {"image-set", "-webkit-image-set"});
}

struct Open {
  char32_t closer;
  std::string function;
};

// The open brackets. A closing one closes the innermost alone, and only one of its kind.
class Brackets {
 public:
  void see(const CssToken& token) {
    if (const char32_t closer = closerOf(token)) {
      open_.push_back({closer, token.name});
    } else if (!open_.empty() && isDelimiter(token, open_.back().closer)) {
      open_.pop_back();
    }
  }
  std::size_t depth() const { return open_.size(); }
  std::string innermostFunction() const { return open_.empty() ? "" : open_.back().function; }
  bool insideImageSet() const {
    return std::any_of(open_.begin(), open_.end(),
                       [](const Open& open) { return isImageSet(open.function); });
  }

 private:
  std::vector<Open> open_;
};

class StyleReader {
 public:
  StyleReader(const Text& text, StyleForm form) : tokens_(cssTokens(text)), form_(form) {}

  std::vector<StyleReference> run() {
    for (at_ = 0; at_ < tokens_.size(); ++at_) {
      const CssToken& token = tokens_[at_];
      if (!isSkipped(token)) {
        if (form_ == StyleForm::sheet) beforeTokenOfSheet(token);
        if (form_ == StyleForm::declarations) beforeTokenOfDeclarations(token);
        find(token);
      }
      brackets_.see(token);
    }
    return std::move(found_);
  }

 private:
  // What the string or url here would be as the first thing of an at-rule.
  enum class Role { none, import, nameSpace, nameSpaceOrPrefix };

  // Follows the rules at the top of a sheet: an @import counts until anything but @charset, @layer
  // and @import rules without a block has come.
  void beforeTokenOfSheet(const CssToken& token) {
    if (brackets_.depth() > 0) return;
    const bool isAtKeyword = token.kind == Kind::atKeyword;
    if (isAtKeyword && token.name == "import") {
      importIsInTime_ = importsAreInTime_ && !inLeadingRule_;
    }
    if (!inLeadingRule_) {
      inLeadingRule_ = isAtKeyword && isOneOf(token.name, {"import", "layer", "charset"});
      if (!inLeadingRule_) importsAreInTime_ = false;
    } else if (isDelimiter(token, ';')) {
      inLeadingRule_ = false;
    } else if (isDelimiter(token, '{')) {
      inLeadingRule_ = false;
      importsAreInTime_ = false;
    }
  }

  // Follows where the value of a custom property begins and ends.
  void beforeTokenOfDeclarations(const CssToken& token) {
    if (brackets_.depth() > 0) return;
    if (isDelimiter(token, ';')) {
      atDeclarationStart_ = true;
      inCustomProperty_ = false;
      return;
    }
    if (std::exchange(atDeclarationStart_, false) && token.kind == Kind::ident &&
        token.name.starts_with("--")) {
      std::size_t next = at_ + 1;
      while (next < tokens_.size() && isSkipped(tokens_[next])) ++next;
      inCustomProperty_ = next < tokens_.size() && isDelimiter(tokens_[next], ':');
    }
  }

  void find(const CssToken& token) {
    const Role role = std::exchange(role_, Role::none);
    if (token.kind == Kind::atKeyword && form_ == StyleForm::sheet) {
      importDepth_ = brackets_.depth();
      if (token.name == "import") role_ = Role::import;
      if (token.name == "namespace") role_ = Role::nameSpaceOrPrefix;
    } else if (token.kind == Kind::ident && role == Role::nameSpaceOrPrefix) {
      role_ = Role::nameSpace;
    } else if (token.kind == Kind::function && token.name == "url") {
      role_ = role;
      if (role == Role::nameSpaceOrPrefix) role_ = Role::nameSpace;
    } else if (token.kind == Kind::url) {
      add(token, role);
    } else if (token.kind == Kind::string) {
      const std::string function = brackets_.innermostFunction();
      const bool counts = isImageSet(function) || isOneOf(function, {"url", "src"});
      if (role != Role::none || counts) add(token, role);
    }
  }

  void add(const CssToken& token, Role role) {
    if (std::all_of(token.value.begin(), token.value.end(),
                    [](const Char& c) { return isWhitespace(c.code); })) {
      return;
    }
    StyleReference made;
    made.begin = token.begin;
    made.end = token.end;
    made.value = token.value;
    made.isString = token.kind == Kind::string;
    made.kind = kindOf(token, role);
    made.isCandidate = brackets_.insideImageSet();
    made.isConditional = form_ == StyleForm::sheet ? role != Role::import || isImportConditional()
                                                   : inCustomProperty_;
    found_.push_back(made);
  }

  std::string kindOf(const CssToken& token, Role role) const {
    if (role == Role::nameSpace || role == Role::nameSpaceOrPrefix) return "identifier";
    if (role == Role::none && brackets_.innermostFunction() == "src") return "dead";
    return token.value.front().code == '#' ? "fragment" : "load";
  }

  // For the URL of an @import, here.
  bool isImportConditional() const {
    if (importDepth_ > 0 || !importIsInTime_) return true;
    Brackets brackets = brackets_;
    for (std::size_t i = at_ + 1; i < tokens_.size(); ++i) {
      const CssToken& token = tokens_[i];
      if (isDelimiter(token, ';') && brackets.depth() == 0) return false;
      if (isDelimiter(token, '{')) return true;
      if (token.kind == Kind::function && token.name == "supports") return true;
      brackets.see(token);
    }
    return false;
  }

  const std::vector<CssToken> tokens_;
  const StyleForm form_;
  std::size_t at_ = 0;
  Brackets brackets_;
  Role role_ = Role::none;
  std::size_t importDepth_ = 0;
  bool importsAreInTime_ = true;
  bool importIsInTime_ = false;
  bool inLeadingRule_ = false;
  bool atDeclarationStart_ = true;
  bool inCustomProperty_ = false;
  std::vector<StyleReference> found_;
};

}  // namespace

std::vector<StyleReference> styleReferences(const Text& text, StyleForm form) {
  return StyleReader(text, form).run();
}

}  // namespace reference::page
