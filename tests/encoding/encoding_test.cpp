#include "encoding/encoding.h"

#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "base/byte_class.h"
#include "encoding/generated/labels.h"
#include "encodings.h"
#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

using namespace std::string_view_literals;

struct LabelCase {
  Here here;
  std::string_view label;
  std::optional<Encoding> expected;
};
constexpr LabelCase kLabelCases[] = {
    {HERE, "utf-8", Encoding::utf8},
    {HERE, "UTF8", Encoding::utf8},
    {HERE, "latin1", Encoding::windows1252},
    {HERE, "ISO-8859-1", Encoding::windows1252},
    {HERE, "us-ascii", Encoding::windows1252},
    {HERE, "iso-8859-9", Encoding::windows1254},
    {HERE, "TIS-620", Encoding::windows874},
    {HERE, "gb2312", Encoding::gbk},
    {HERE, "x-sjis", Encoding::shiftJis},
    {HERE, "ks_c_5601-1987", Encoding::eucKr},
    {HERE, "utf-16", Encoding::utf16Le},
    {HERE, "unicodeFFFE", Encoding::utf16Be},
    {HERE, "hz-gb-2312", Encoding::replacement},
    {HERE, "logical", Encoding::iso8859_8I},
    {HERE, "866", Encoding::ibm866},  // the first one in order
    {HERE, "x-x-big5", Encoding::big5},
    // White space around a label.
    {HERE, " \t\n\f\rutf-8 \t\n\f\r", Encoding::utf8},
    {HERE, "\vutf-8", std::nullopt},
    {HERE, "utf-8\0"sv, std::nullopt},
    {HERE, "utf -8", std::nullopt},
    // No labels.
    {HERE, "", std::nullopt},
    {HERE, " ", std::nullopt},
    {HERE, "utf", std::nullopt},
    {HERE, "utf-7", std::nullopt},
    {HERE, "utf-8utf-8utf-8utf-8utf-8utf-8", std::nullopt},
    {HERE, "\xC5\x85tf-8", std::nullopt},
    // ASCII case alone is ignored: the Kelvin sign is no "k".
    {HERE, "\xE2\x84\xAAoi8-r", std::nullopt},
};

TEST(EncodingForLabel, IgnoresCaseAndWhiteSpaceAround) {
  forEachPlacement(kLabelCases, [](const LabelCase& row, Placement& place) {
    EXPECT_EQ(encodingForLabel(place.bytes(row.label)), row.expected);
  });
}

TEST(EncodingForLabel, KnowsEveryLabelInUpperCase) {
  for (const LabelRow& row : kLabels) {
    std::string upper(row.label);
    for (char& c : upper) c = toUpper(c);
    EXPECT_EQ(encodingForLabel(upper), row.encoding) << upper;
  }
}

TEST(NameOf, IsALabelOfItsEncoding) {
  std::set<std::string_view> names;
  for (const Encoding encoding : kAllEncodings) {
    EXPECT_EQ(encodingForLabel(nameOf(encoding)), encoding);
    names.insert(nameOf(encoding));
  }
  EXPECT_EQ(names.size(), kAllEncodings.size());
}

TEST(OutputEncodingOf, HasAnEncoder) {
  for (const Encoding encoding : kAllEncodings) {
    const bool hasNone = isUtf16(encoding) || encoding == Encoding::replacement;
    EXPECT_EQ(outputEncodingOf(encoding), hasNone ? Encoding::utf8 : encoding);
  }
}

}  // namespace
}  // namespace pagescan::tests
