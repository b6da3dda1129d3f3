// What is told about wrong usage.
#ifndef PAGESCAN_TOOL_COMPLAINTS_H
#define PAGESCAN_TOOL_COMPLAINTS_H

#include <string>

namespace CLI {
class App;
class Error;
}  // namespace CLI

namespace pagescan::tool {

// The complaint as a plain sentence, with a pointer to the help that tells more. Nothing that the
// user typed can act on the terminal.
std::string complaintAbout(const CLI::App* app, const CLI::Error& error);

}  // namespace pagescan::tool

#endif
