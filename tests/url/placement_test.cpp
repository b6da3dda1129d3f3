// Texts whose last byte stands before an unreadable page, or whose first one after such a page:
// nothing else of the page is read. The texts begin what their last bytes leave open.
#include "support/placement.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "pagescan/url.h"
#include "support/generated_texts.h"

namespace pagescan::tests {
namespace {

using std::string_view;

struct Text {
  Here here;
  string_view text;
};

constexpr Text kTexts[] = {
    {HERE, ""},
    {HERE, "h"},
    {HERE, "http:"},
    {HERE, "http:/"},
    {HERE, "http://"},
    {HERE, "https://h"},
    {HERE, "https://h."},
    {HERE, "https://www.example.com"},
    {HERE, "https://www.example.com/directory/page"},
    {HERE, "https://www.example.com/a/directory/of/more/than/one/vector/of/64/bytes/page.html?q#f"},
    {HERE, "https://h:"},
    {HERE, "https://h:8"},
    {HERE, "https://u@"},
    {HERE, "https://u:p@h"},
    {HERE, "https://["},
    {HERE, "https://[::1"},
    {HERE, "https://[::1]"},
    {HERE, "https://[::1.2.3.4]"},
    {HERE, "https://1.2.3"},
    {HERE, "https://0x"},
    {HERE, "https://1.0x"},
    {HERE, "https://h%"},
    {HERE, "https://h%4"},
    {HERE, "https://h%41"},
    {HERE, "https://xn--"},
    {HERE, "https://b\xC3\xBC"},
    {HERE, "https://b\xC3"},
    {HERE, "https://xn--bcher-kva.\xE3\x80\x82"},
    {HERE, "file:"},
    {HERE, "file:///C"},
    {HERE, "file:///C|"},
    {HERE, "file:c:"},
    {HERE, "s:"},
    {HERE, "s://"},
    {HERE, "s:/."},
    {HERE, "s:/.//"},
    {HERE, "mailto:a "},
    {HERE, "data:,%"},
    {HERE, "/"},
    {HERE, "//"},
    {HERE, "\\"},
    {HERE, "."},
    {HERE, ".."},
    {HERE, "a/.."},
    {HERE, "a/%2e%2"},
    {HERE, "a/%2e%2e"},
    {HERE, "a%"},
    {HERE, "a b"},
    {HERE, " \t\n"},
    {HERE, "a\t"},
    {HERE, "a\xF0\x9F\x98"},
    {HERE, "?"},
    {HERE, "?q\xE2\x82\xAC"},
    {HERE, "?q\xE2\x82"},
    {HERE, "?'"},
    {HERE, "#"},
    {HERE, "#f`"},
    {HERE, "#f\xC3"},
};

constexpr string_view kBases[] = {"http://h/a/b?q#f", "file:///C:/d/e", "s://h/a", "mailto:x"};

TEST(UrlTexts, AreNeverReadBeyondTheirEnds) {
  forEachKernelLevel([] {
    forEachPlacement(kTexts, [](const Text& row, Placement& place) {
      const string_view text = place.bytes(row.text);
      const std::optional<Url> parsed = Url::parse(text);
      const std::optional<Url> asBefore = Url::parse(std::string(row.text));
      ASSERT_EQ(parsed.has_value(), asBefore.has_value());
      if (parsed) {
        EXPECT_EQ(parsed->href(), asBefore->href());
        EXPECT_EQ(resolve("x", text), resolve("x", parsed->href()));
      }
      for (const string_view base : kBases) {
        const string_view placed = place.bytes(base);
        EXPECT_EQ(resolve(text, placed), resolve(std::string(row.text), base)) << base;
        for (const string_view encoding : {"windows-1252", "gb18030", "iso-2022-jp"}) {
          EXPECT_EQ(resolve(text, placed, place.bytes(encoding)),
                    resolve(std::string(row.text), base, encoding));
        }
      }
    });
  });
}

// Each beginning of a text with all that a URL can have.
TEST(UrlTexts, AreNeverReadBeyondTheirEndsWhereverTheyEnd) {
  const string_view whole =
      "https://us%C3:p\xC3\xA4@b\xC3\xBC.xn--bcher-kva.example:8080/./a/%2e%2E/\xE4\xB8\xAD/c'^?"
      "\xE2\x82\xAC=\xFF&'#\xF0\x9F\x98\x80`";
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    for (const Placement::Kind kind : Placement::kKinds) {
      Placement place(kind);
      const std::string beginning(whole.substr(0, size));
      for (const string_view encoding : {"UTF-8", "gbk"}) {
        EXPECT_EQ(resolve(place.bytes(beginning), "http://h/", encoding),
                  resolve(beginning, "http://h/", encoding));
      }
    }
  }
}

}  // namespace
}  // namespace pagescan::tests
