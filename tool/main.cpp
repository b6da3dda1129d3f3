// pagescan: the libraries on the command line. See docs/tool.md.
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <new>
#include <string>

#include "command_line.h"
#include "output/messages.h"

namespace {

using pagescan::tool::ExitStatus;
using pagescan::tool::Output;

// What an exception stops is told; what was written before it stays.
ExitStatus run(int argc, char** argv, Output& output) {
  try {
    return pagescan::tool::runCommandLine({argv + 1, argv + argc}, output);
  } catch (const std::bad_alloc&) {
    pagescan::tool::tell("out of memory");
  } catch (const std::exception& error) {
    pagescan::tool::tell(error.what());
  }
  return pagescan::tool::kFailed;
}

// A reader that has seen enough is no failure worth a message.
ExitStatus finish(Output& output, ExitStatus status) {
  output.flush();
  if (output.error() == 0) return status;
  if (output.error() != EPIPE) {
    pagescan::tool::tell(std::string("cannot write the output: ") + std::strerror(output.error()));
  }
  return pagescan::tool::kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_DFL);  // whatever the parent left it as
  Output output(STDOUT_FILENO);
  const ExitStatus status = run(argc, argv, output);
  return finish(output, status);
}
