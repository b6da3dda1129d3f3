// What the program says to its user, on standard error, one line a message.
#ifndef PAGESCAN_TOOL_MESSAGES_H
#define PAGESCAN_TOOL_MESSAGES_H

#include <string>
#include <string_view>

namespace pagescan::tool {

void tell(std::string_view message);

// The message is about one input: "-" is called standard input.
void tellAbout(const std::string& inputName, std::string_view message);

}  // namespace pagescan::tool

#endif
