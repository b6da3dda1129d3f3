// The CSS tokens of the twin, which the style reader is held to, against the suite of tokenizers.
#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "reference/page/css_tokens.h"
#include "support/suite_cases.h"

namespace pagescan::tests {
namespace {

using nlohmann::json;
using reference::page::CssToken;
using reference::page::toUtf8;
using Kind = CssToken::Kind;

constexpr std::size_t kFewestCases = 149;

std::string delimiterType(char32_t code) {
  switch (code) {
    case ':':
      return "colon-token";
    case ';':
      return "semicolon-token";
    case ',':
      return "comma-token";
    case '(':
    case ')':
    case '[':
    case ']':
    case '{':
    case '}':
      return static_cast<char>(code) + std::string("-token");
    default:
      return "delim-token";
  }
}

std::string typeOf(const CssToken& token) {
  switch (token.kind) {
    case Kind::whitespace:
      return "whitespace-token";
    case Kind::ident:
      return "ident-token";
    case Kind::function:
      return "function-token";
    case Kind::atKeyword:
      return "at-keyword-token";
    case Kind::string:
      return "string-token";
    case Kind::badString:
      return "bad-string-token";
    case Kind::url:
      return "url-token";
    case Kind::badUrl:
      return "bad-url-token";
    case Kind::comment:
      return "comment";
    case Kind::cdo:
      return "CDO-token";
    case Kind::cdc:
      return "CDC-token";
    case Kind::hash:
      return "hash-token";
    case Kind::number:
      return "number-token";
    case Kind::percentage:
      return "percentage-token";
    case Kind::dimension:
      return "dimension-token";
    case Kind::delimiter:
      return delimiterType(token.code);
  }
  return {};
}

json numberOf(const CssToken& token) {
  json number = {{"value", token.number}};
  if (token.sign != 0) number["signCharacter"] = std::string(1, token.sign);
  if (token.kind != Kind::percentage) number["type"] = token.isInteger ? "integer" : "number";
  if (token.kind == Kind::dimension) number["unit"] = token.written;
  return number;
}

// What the token spells, as the suite writes it; null for a token that has its type alone.
json valueOf(const CssToken& token) {
  switch (token.kind) {
    case Kind::ident:
    case Kind::function:
    case Kind::atKeyword:
      return {{"value", token.written}};
    case Kind::hash:
      return {{"value", token.written}, {"type", token.isId ? "id" : "unrestricted"}};
    case Kind::string:
    case Kind::url:
      return {{"value", toUtf8(token.value)}};
    case Kind::number:
    case Kind::percentage:
    case Kind::dimension:
      return numberOf(token);
    case Kind::delimiter:
      if (delimiterType(token.code) != "delim-token") return nullptr;
      return {{"value", toUtf8({{token.code, 0, 0}})}};
    default:
      return nullptr;
  }
}

json tokensOf(std::string_view css) {
  json tokens = json::array();
  for (const CssToken& token : cssTokens(reference::page::fromUtf8(css))) {
    tokens.push_back({{"type", typeOf(token)},
                      {"startIndex", utf16Length(css.substr(0, token.tokenBegin))},
                      {"endIndex", utf16Length(css.substr(0, token.tokenEnd))},
                      {"structured", valueOf(token)}});
  }
  return tokens;
}

// The folders of the cases, in order.
std::set<std::filesystem::path> caseFolders(const std::filesystem::path& suite) {
  std::set<std::filesystem::path> folders;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(suite)) {
    if (entry.path().filename() == "tokens.json") folders.insert(entry.path().parent_path());
  }
  return folders;
}

TEST(CssTokens, AreThoseOfTheSuite) {
  const auto suite = std::filesystem::path(PAGESCAN_SHARED_DIR) / "suites" / "css-tokenizer-tests";
  if (!std::filesystem::exists(suite)) GTEST_SKIP() << "the suite is not there";
  const std::set<std::filesystem::path> folders = caseFolders(suite);
  EXPECT_GE(folders.size(), kFewestCases);
  for (const std::filesystem::path& folder : folders) {
    json expected = json::parse(fileBytes(folder / "tokens.json"));
    for (json& token : expected) token.erase("raw");  // the bytes between the two indexes
    EXPECT_EQ(tokensOf(fileBytes(folder / "source.css")), expected) << folder;
  }
}

}  // namespace
}  // namespace pagescan::tests
