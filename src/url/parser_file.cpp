// The states of "file:" URLs.
#include "url/host.h"
#include "url/parser_states.h"

namespace pagescan::internal {

using std::string_view;

// "File state".
bool Parser::file() {
  if (atSlash()) {
    skip(1);
    return fileAfterSlash();
  }
  if (base_ == nullptr || kindOf(*base_) != SchemeKind::file) {
    out_ = "file:";
    at_.schemeEnd = out_.size() - 1;
    beginAuthority();
    endHost();
    return path();
  }
  if (atEnd() || atQueryOrFragment() || !startsWithDriveLetter(rest_)) return relative();
  copyUntilPath();
  return path();
}

// "File slash state".
bool Parser::fileAfterSlash() {
  const bool hasFileBase = base_ != nullptr && kindOf(*base_) == SchemeKind::file;
  if (atSlash() || !hasFileBase) {
    out_ = "file:";
    at_.schemeEnd = out_.size() - 1;
    beginAuthority();
    if (atSlash()) {
      skip(1);
      return fileHost();
    }
    endHost();
    return path();
  }
  copyUntilPath();
  if (!startsWithDriveLetter(rest_) && beginsWithNormalDriveLetter(pathOf(*base_))) {
    out_ += pathOf(*base_).substr(0, 3);
  }
  return path();
}

// "File host state".
bool Parser::fileHost() {
  const string_view host = rest_.substr(0, rest_.find_first_of("/\\?#"));
  if (isDriveLetter(host)) {
    endHost();
    return path();
  }
  skip(host.size());
  if (!host.empty()) {
    if (!appendHost(out_, host, true)) return false;
    if (string_view(out_).substr(at_.hostBegin) == "localhost") out_.resize(at_.hostBegin);
  }
  endHost();
  return pathStart();
}

}  // namespace pagescan::internal
