// The states of the URL Standard's parser. For parser*.cpp alone.
#ifndef PAGESCAN_URL_PARSER_STATES_H
#define PAGESCAN_URL_PARSER_STATES_H

#include <string>
#include <string_view>

#include "encoding/encoding.h"
#include "pagescan/url.h"
#include "url/path.h"
#include "url/scheme.h"
#include "url/url_view.h"

namespace pagescan::internal {

// A function for each state or group of states; what a state leaves to the next one is in `rest_`,
// the input that is not read yet. The components are written in the order in which they are
// serialised, so that each function appends and notes where.
class Parser {
 public:
  Parser(std::string& out, UrlOffsets& at, std::string_view input, const UrlView* base,
         Encoding queryEncoding)
      : out_(out), at_(at), rest_(input), base_(base), queryEncoding_(queryEncoding) {}

  bool parse() { return readScheme() ? afterScheme() : withoutScheme(); }

 private:
  // Reading.
  bool atEnd() const { return rest_.empty(); }
  bool at(char c) const { return !atEnd() && rest_.front() == c; }
  bool atSlash() const { return at('/') || (isSpecial() && at('\\')); }
  bool atQueryOrFragment() const { return at('?') || at('#'); }
  void skip(std::size_t count) { rest_.remove_prefix(count); }
  std::string_view take(std::size_t count);
  std::size_t pathSegmentSize() const;

  bool isSpecial() const { return kind_ != SchemeKind::other; }
  bool isFile() const { return kind_ == SchemeKind::file; }

  // The states.
  bool readScheme();
  bool afterScheme();
  bool withoutScheme();
  bool relative();
  bool afterSlashes();
  bool authority();
  bool hostAndPort(std::string_view text);
  bool port(std::string_view digits);
  bool file();
  bool fileAfterSlash();
  bool fileHost();
  bool pathStart();
  bool path();
  bool opaquePath();
  bool query();
  bool fragment();

  // Writing.
  void userinfo(std::string_view text);
  void beginAuthority();
  void endHost();
  void writeNoHost();
  void copyUntilPath();
  void copyUntil(std::size_t end);
  PathWriter pathWriter() { return {out_, at_.pathBegin, isFile()}; }
  bool hasHost() const { return at_.hostBegin > at_.schemeEnd + 1; }

  std::string& out_;
  UrlOffsets& at_;
  std::string_view rest_;
  const UrlView* const base_;
  const Encoding queryEncoding_;
  SchemeKind kind_ = SchemeKind::other;
};

}  // namespace pagescan::internal

#endif
