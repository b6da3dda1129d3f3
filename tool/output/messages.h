// What the program says to its user, on standard error, one line a message.
#ifndef PAGESCAN_TOOL_MESSAGES_H
#define PAGESCAN_TOOL_MESSAGES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::tool {

void tell(std::string_view message);

// The name of an input for people; "-" is standard input.
std::string shownName(const std::string& inputName);

// The message is about one input.
void tellAbout(const std::string& inputName, std::string_view message);

// The message is about these places of an input. Ten of them are named, the others counted.
void tellOffsets(const std::string& inputName, const std::vector<std::size_t>& offsets,
                 const std::string& message);

}  // namespace pagescan::tool

#endif
