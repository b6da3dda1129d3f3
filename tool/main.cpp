// pagescan: the library on the command line. See docs/tool.md.
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <new>
#include <string>

#include "command_line.h"
#include "messages.h"

namespace {

using pagescan::ExitStatus;
using pagescan::Output;

// A reader that has seen enough is no failure worth a message.
ExitStatus finish(Output& output, ExitStatus status) {
  output.flush();
  if (output.error() == 0) return status;
  if (output.error() != EPIPE) {
    pagescan::tell(std::string("cannot write the output: ") + std::strerror(output.error()));
  }
  return pagescan::kFailed;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_DFL);  // whatever the parent left behind
  try {
    Output output(STDOUT_FILENO);
    const ExitStatus status = pagescan::runCommandLine(argc, argv, output);
    return finish(output, status);
  } catch (const std::bad_alloc&) {
    pagescan::tell("out of memory");
  } catch (const std::exception& error) {
    pagescan::tell(error.what());
  }
  return pagescan::kFailed;
}
