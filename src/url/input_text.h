// What the parser makes of a text before it reads it.
#ifndef PAGESCAN_URL_INPUT_TEXT_H
#define PAGESCAN_URL_INPUT_TEXT_H

#include <string>
#include <string_view>

namespace pagescan::internal {

// The text without the C0 controls and spaces at its ends and without its tabs and line ends, and
// with U+FFFD for malformed UTF-8: the first steps of the URL Standard's "basic URL parser".
// storage   holds the result where it is not a part of `text`, which nearly always it is
std::string_view inputText(std::string_view text, std::string& storage);

}  // namespace pagescan::internal

#endif
