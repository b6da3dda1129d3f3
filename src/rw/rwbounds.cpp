#include "rw/rwbounds.h"

#include <cstdio>
#include <string>

namespace {

std::string message(std::size_t index, std::size_t lastValid) {
  char text[sizeof RWTOOL_INDEXERR + 48];
  std::snprintf(text, sizeof text, RWTOOL_INDEXERR, index, lastValid);
  return text;
}

}  // namespace

RWBoundsErr::RWBoundsErr(std::size_t index, std::size_t lastValid)
    : std::out_of_range(message(index, lastValid)) {}

RWBoundsErr::RWBoundsErr(const RWBoundsErr&) noexcept = default;
RWBoundsErr& RWBoundsErr::operator=(const RWBoundsErr&) noexcept = default;
RWBoundsErr::~RWBoundsErr() noexcept = default;
