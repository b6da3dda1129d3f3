// The inputs of a command: files, or standard input.
#ifndef PAGESCAN_TOOL_INPUT_H
#define PAGESCAN_TOOL_INPUT_H

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "exit_status.h"
#include "output/output.h"
#include "rw/rwcstring.h"

namespace pagescan::tool {

using Names = std::vector<std::string>;

// All bytes of the file `name`, or of standard input for "-". Empty-handed, with the reason told,
// when they cannot be read.
std::optional<RWCString> readInput(const std::string& name);

// What a command does with one input; it may change the bytes. Returns whether that succeeded.
using UseInput = std::function<bool(const std::string& name, RWCString& bytes)>;

// Reads one input after the other, standard input when none is named, and puts each to use. One
// that fails does not stop those behind it; an output that fails does.
ExitStatus forEachInput(const Names& names, const Output& output, const UseInput& use);

}  // namespace pagescan::tool

#endif
