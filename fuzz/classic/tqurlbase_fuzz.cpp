// A sequence of bases and links on one object, beside the twin.

#include "reference/classic/tqurlbase.h"
#include "support/input.h"
#include "tqurlbase.h"

namespace {

using fuzz::check;
using fuzz::textOf;

class Sequence {
 public:
  explicit Sequence(fuzz::Input& input) : input_(input) {}

  void run() {
    while (!input_.isEmpty()) {
      step();
      checkState();
    }
  }

 private:
  void step() {
    switch (input_.number(8)) {
      case 0:
        return setBase();
      case 1:
        check(base_.shortParse() == twin_.shortParse(), "a base is split as by the twin");
        return;
      case 2:
        check(base_.parse() == twin_.parse(), "a base is split as by the twin");
        return;
      case 3:
        return resolveLink();
      default:
        return resolveReference(input_.flag(), input_.flag());
    }
  }

  void setBase() {
    const std::string url(input_.text());
    check(base_.setBase(fuzz::stringOf(url)) == twin_.setBase(url), "any base is taken");
  }

  void resolveLink() {
    std::string expected(input_.text());
    RWCString link = fuzz::stringOf(expected);
    const std::string result = textOf(base_.calcUrl(link));
    check(result == twin_.calcUrl(expected), "a link is resolved as by the twin");
    check(textOf(link) == expected, "a link is cleaned as by the twin");
  }

  void resolveReference(bool resolveEmpty, bool decodePercent) {
    const std::string text(input_.text());
    const RWCString link = fuzz::stringOf(text);
    RWCString out("before");
    std::string expected = "before";
    base_.calcUrl(link, out, resolveEmpty, decodePercent);
    twin_.calcUrl(text, expected, resolveEmpty, decodePercent);
    check(textOf(out) == expected, "a reference is resolved as by the twin");
    check(textOf(link) == text, "a reference is not changed");
    RWCString same = link;
    base_.calcUrl(same, same, true, decodePercent);
    twin_.calcUrl(text, expected, true, decodePercent);
    check(textOf(same) == expected, "the result may go where the reference is");
  }

  void checkState() {
    check(textOf(base_.fullUrl) == twin_.fullUrl &&
              textOf(base_.baseNoQuery) == twin_.baseNoQuery &&
              textOf(base_.protocol) == twin_.protocol && textOf(base_.host) == twin_.host &&
              textOf(base_.dirPath) == twin_.dirPath && textOf(base_.fileName) == twin_.fileName &&
              base_.dirDepth == twin_.dirDepth && base_.parsed == twin_.parsed,
          "the parts are those of the twin");
  }

  fuzz::Input& input_;
  urlBase base_;
  reference::UrlBase twin_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  Sequence(input).run();
  return 0;
}
