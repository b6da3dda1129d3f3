// Links and bases that end in the middle of something, next to memory that nothing may read.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "pagescan/url.h"
#include "support/generated_texts.h"
#include "support/placement.h"

namespace pagescan::tests {
namespace {

struct Row {
  Here here;
  std::string_view link;
  std::string_view base;  // empty: none
  std::string_view expected;
};

constexpr Row kRows[] = {
    {HERE, "", "http://h/a/b?q#f", "http://h/a/b?q"},
    {HERE, "x", "http://h/a/b", "http://h/a/x"},
    {HERE, "../x/./y/..", "http://h/a/b/c", "http://h/a/x/"},
    {HERE, "?", "http://h/a", "http://h/a?"},
    {HERE, "#", "http://h/a", "http://h/a#"},
    {HERE, "//i", "http://h/a", "http://i/"},
    {HERE, "http:x", "http://h/a/b", "http://h/a/x"},
    {HERE, "http://h:80", "", "http://h/"},
    {HERE, "http://u:p@h:8080/", "", "http://u:p@h:8080/"},
    {HERE, "http://[1:2::3]", "", "http://[1:2::3]/"},
    {HERE, "http://[1:2::3", "", "none"},
    {HERE, "http://[::1.2.3.4]/", "", "http://[::102:304]/"},
    {HERE, "http://0x7f.1", "", "http://127.0.0.1/"},
    {HERE, "http://1.2.3.256", "", "none"},
    {HERE, "http://a%", "", "none"},
    {HERE, "http://a%4", "", "none"},
    {HERE, "http://a%41", "", "http://aa/"},
    {HERE, "/a%2", "http://h", "http://h/a%2"},
    {HERE, "/%2E%2", "http://h/a/b", "http://h/%2E%2"},
    {HERE, "/a/%2e%2E", "http://h", "http://h/"},
    {HERE, "caf\xC3\xA9?\xC3\xA9#\xC3\xA9", "http://h/", "http://h/caf%C3%A9?%C3%A9#%C3%A9"},
    {HERE, "\xC3", "http://h/", "http://h/%EF%BF%BD"},
    {HERE, "\xE3\x81", "http://h/", "http://h/%EF%BF%BD"},
    {HERE, "?\xF0\x9F\x98", "http://h/", "http://h/?%EF%BF%BD"},
    {HERE,
     "http://b\xC3\xBC"
     "cher.example",
     "", "http://xn--bcher-kva.example/"},
    {HERE, "http://b\xC3", "", "none"},
    {HERE,
     "http://xn--bcher-kva\xE3\x80\x82"
     "example",
     "", "http://xn--bcher-kva.example/"},
    {HERE, "\\\\i\\a", "http://h/", "http://i/a"},
    {HERE, "  x\t\ny  ", "http://h/", "http://h/xy"},
    {HERE, "file:///C|/a/..", "", "file:///C:/"},
    {HERE, "/D:", "file:///C:/a", "file:///D:"},
    {HERE, "C|", "file:///a/b", "file:///C:"},
    {HERE, "mailto:a b ", "", "mailto:a b"},
    {HERE, "data:,x#y", "", "data:,x#y"},
    {HERE, "#z", "mailto:a", "mailto:a#z"},
    {HERE, "x", "mailto:a", "none"},
    {HERE, "http://a:65536", "", "none"},
    {HERE, "http://a:", "", "http://a/"},
    {HERE, "http://", "", "none"},
    {HERE, "h", "", "none"},
    {HERE, "foo://h/a/../b", "", "foo://h/b"},
    {HERE, "foo:/.//a", "", "foo:/.//a"},
    {HERE, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", "http://h/",
     "http://h/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa"},
    {HERE, "a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/..", "http://h/",
     "http://h/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/a/"},
    {HERE, "'\"<>`{}^|", "http://h/", "http://h/'%22%3C%3E%60%7B%7D%5E|"},
};

TEST(Url, ReadsNothingBesideItsTexts) {
  forEachPlacement(kRows, [](const Row& row, Placement& placement) {
    const std::string_view link = placement.bytes(row.link);
    const std::string_view base = placement.bytes(row.base);
    EXPECT_EQ(resolve(link, base).value_or("none"), row.expected);
    const std::optional<Base> parsed = row.base.empty() ? Base() : Base::parse(base);
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->resolve(link).value_or("none"), row.expected);
    const std::optional<Url> url =
        parsed->url() == nullptr ? Url::parse(link) : Url::parse(link, *parsed->url());
    EXPECT_EQ(url ? url->href() : "none", row.expected);
  });
}

constexpr Row kQueries[] = {
    {HERE, "?\xC3\xA9", "windows-1252", "http://h/?%E9"},
    {HERE, "?\xC3", "windows-1252", "http://h/?%26%2365533%3B"},
    {HERE, "?\xE3\x81\x82", "shift_jis", "http://h/?%82%A0"},
    {HERE, "?\xE3\x81\x82", "iso-2022-jp", "http://h/?%1B$B$%22%1B(B"},
    {HERE, "?\xE3\x81", "gb18030", "http://h/?%841%A47"},
    {HERE, "?\xF0\x9F\x98\x80", "big5", "http://h/?%26%23128512%3B"},
    {HERE, "?a", "no-such-label", "http://h/?a"},
};

TEST(Url, ReadsNothingBesideItsQueryAndLabel) {
  forEachPlacement(kQueries, [](const Row& row, Placement& placement) {
    EXPECT_EQ(resolve(placement.bytes(row.link), "http://h/", placement.bytes(row.base)),
              row.expected);
  });
}

// Each beginning of a link with all that one can have, by each version of the kernels.
TEST(Url, ReadsNothingBesideABeginningOfALink) {
  constexpr std::string_view kLink =
      "https://us%C3:p\xC3\xA4@b\xC3\xBC.xn--bcher-kva.example:8080/./a/%2e%2E/\xE4\xB8\xAD/c'^?"
      "\xE2\x82\xAC=\xFF&'#\xF0\x9F\x98\x80`";
  constexpr std::string_view kPlainLink =
      "https://www.example.com/a/directory/of/more/bytes/than/are/looked/at/together/page.html?q";
  forEachKernelLevel([&] {
    for (const std::string_view link : {kLink, kPlainLink}) {
      for (std::size_t size = 0; size <= link.size(); ++size) {
        const std::string beginning(link.substr(0, size));
        const auto expected = resolve(beginning, "http://h/", "gbk");
        for (const Placement::Kind kind : Placement::kKinds) {
          Placement place(kind);
          EXPECT_EQ(resolve(place.bytes(beginning), "http://h/", "gbk"), expected);
        }
      }
    }
  });
}

}  // namespace
}  // namespace pagescan::tests
