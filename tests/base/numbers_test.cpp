#include "base/numbers.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "support/placement.h"

namespace pagescan::tests {

using namespace internal;
namespace {

struct IntegerCase {
  Here here;
  std::string_view text;
  std::optional<int> expected;
};
constexpr IntegerCase kIntegers[] = {
    {HERE, "0", 0},
    {HERE, "42", 42},
    {HERE, "+42", 42},
    {HERE, "-42", -42},
    {HERE, " \t\n\v\f\r7", 7},
    {HERE, "12x", 12},
    // The base.
    {HERE, "010", 8},
    {HERE, "-010", -8},
    {HERE, "09", 0},
    {HERE, "0x1F", 31},
    {HERE, "0XfF", 255},
    {HERE, "-0x10", -16},
    {HERE, "0x", 0},
    {HERE, "0xg", 0},
    // Nothing that could be read.
    {HERE, "", std::nullopt},
    {HERE, " ", std::nullopt},
    {HERE, "-", std::nullopt},
    {HERE, " +", std::nullopt},
    {HERE, "--1", std::nullopt},
    {HERE, "x1", std::nullopt},
    // The low 32 bits of a number that saturates at 64.
    {HERE, "2147483648", -2147483647 - 1},
    {HERE, "4294967297", 1},
    {HERE, "-4294967297", -1},
    {HERE, "9223372036854775807", -1},
    {HERE, "9223372036854775808", -1},
    {HERE, "99999999999999999999", -1},
    {HERE, "-9223372036854775808", 0},
    {HERE, "-9223372036854775809", 0},
    {HERE, "0xfffffffffffffffff", -1},
};

TEST(ReadInteger, ReadsAsFormattedInputDoes) {
  forEachPlacement(kIntegers, [](const IntegerCase& row, Placement& place) {
    const std::string_view text = place.bytes(row.text);
    EXPECT_EQ(readInteger(text.data(), text.data() + text.size()), row.expected);
  });
}

}  // namespace
}  // namespace pagescan::tests
