// Pages and style sheets that resemble real ones in what the library's speed depends on: how often
// a "<" comes and opens a tag of interest, how much is script, style and comment, how often an "&"
// and a byte beyond ASCII comes.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "input.h"

namespace pagescan::bench {
namespace {

constexpr char kBase[] = "http://www.example.com/news/2024/index.html";

// Numbers that are the same in every run and with every compiler.
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  std::size_t below(std::size_t limit) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>(state_ >> 33U) % limit;
  }

  template <std::size_t count>
  std::string_view oneOf(const std::array<std::string_view, count>& choices) {
    return choices[below(count)];
  }

 private:
  std::uint64_t state_;
};

constexpr std::array<std::string_view, 24> kWords = {
    "the",    "market",  "of",    "a",       "report",       "said",   "and", "people",
    "city",   "new",     "in",    "council", "announcement", "for",    "on",  "weather",
    "season", "players", "after", "million", "government",   "review", "to",  "caf\xC3\xA9"};
constexpr std::array<std::string_view, 5> kReferences = {"&amp;", "&nbsp;", "&quot;", "&#8217;",
                                                         "&eacute;"};
constexpr std::array<std::string_view, 8> kUrlStarts = {"/images/",
                                                        "../img/",
                                                        "http://cdn.example.net/assets/",
                                                        "//s.example.org/lib/",
                                                        "media/",
                                                        "https://www.example.com/static/",
                                                        "./",
                                                        "/news/2024/11/"};
constexpr std::array<std::string_view, 6> kUrlEnds = {
    ".jpg", ".png", ".js", ".html", ".php?id=7&amp;ref=a%20b+c%2Fd", ".gif?v=2"};
constexpr std::array<std::string_view, 8> kScriptLines = {
    "  var items = document.getElementsByTagName(\"div\");\n",
    "  for (var i = 0; i < items.length; i++) {\n",
    "    if (items[i].className == 'ad' && width > 728) { hide(items[i]); }\n",
    "  }\n",
    "  window.dataLayer = window.dataLayer || [];\n",
    "  _gaq.push(['_setAccount', 'UA-1234567-8']);\n",
    "  document.write('<img src=\"/pixel.gif\" alt=\"\">');\n",
    "  function track(name, value) { return name + \"=\" + encodeURIComponent(value); }\n"};
constexpr std::array<std::string_view, 6> kStyleRules = {
    ".header .menu li { float: left; margin: 0 4px; }\n",
    "#content { width: 960px; color: #333; }\n",
    "a:hover { text-decoration: underline; }\n",
    "@media (max-width: 640px) { .side { display: none; } }\n",
    ".logo { background: url(/images/logo.png) no-repeat 0 0; }\n",
    ".box{border-radius:4px;transform:translate(0,-50%)}\n"};

// One page under way. What comes next is the kind of text that is furthest after its share.
class PageWriter {
 public:
  PageWriter(std::size_t number, Texts& links) : random_(number), links_(links) {}

  RWCString write(std::size_t length) {
    page_ = "<!DOCTYPE html>\n<html>\n<head>\n<title>A page</title>\n";
    if (random_.below(20) == 0) page_ += "<base href=\"http://www.example.com/news/\">\n";
    page_ += "</head>\n<body background=\"bg.gif\" onload=\"start()\">\n";
    while (page_.size() < length) writeKind(kindMissing());
    page_ += "</body>\n</html>\n";
    return RWCString(page_.data(), page_.size());
  }

 private:
  void writeText() {
    page_ += "<li class=\"item\"><a href=\"";
    writeUrl();
    page_ += "\">";
    writeWords(3);
    page_ += "</a></li>\n<p>";
    writeWords(45);
    if (random_.below(2) == 0) page_ += random_.oneOf(kReferences);
    page_ += "<b>";
    writeWords(1);
    page_ += "</b></p>\n";
  }

  void writeScript() {
    page_ += "<script type=\"text/javascript\">\n";
    writeLines(kScriptLines, 10);
    page_ += "</script>\n";
  }

  void writeStyle() {
    page_ += "<style>\n";
    writeLines(kStyleRules, 12);
    page_ += "</style>\n";
  }

  void writeComment() {
    page_ += "<!-- ";
    writeWords(12);
    page_ += " -->\n";
  }

  // The openings of tags of interest as often as pages have them.
  void writeTag() {
    static constexpr std::array<std::string_view, 16> kOpenings = {
        "<img class=\"photo\" alt=\"\" src=\"",
        "<img width=120 height=80 src=\"",
        "<img border='0' src=\"",
        "<IMG SRC=\"",
        "<img loading=\"lazy\" src=\"",
        "<script type=\"text/javascript\"></script><img src=\"",
        "<script src=\"",
        "<script async src=\"",
        "<link rel=\"stylesheet\" href=\"",
        "<link rel=\"alternate\" type=\"application/rss+xml\" href=\"",
        "<input type=\"image\" name=\"go\" src=\"",
        "<input type=\"text\" name=\"q\" value=\"",
        "<td class=\"cell\" width=\"20\" background=\"",
        "<table cellpadding=\"0\"><tr><td nowrap><img src=\"",
        "<iframe frameborder=\"0\" src=\"",
        "<embed src=\""};
    const std::string_view opening = random_.oneOf(kOpenings);
    page_ += opening;
    writeUrl();
    page_ += opening.substr(0, 7) == "<script" ? "\"></script>\n" : "\">\n";
  }

  void writeUrl() {
    std::string url(random_.oneOf(kUrlStarts));
    url += random_.oneOf(kWords);
    url += "-" + std::to_string(random_.below(10000));
    url += random_.oneOf(kUrlEnds);
    page_ += url;
    links_.emplace_back(url.data(), url.size());
  }

  void writeWords(std::size_t count) {
    for (; count > 0; --count) {
      page_ += random_.oneOf(kWords);
      page_ += ' ';
    }
  }

  template <std::size_t choices>
  void writeLines(const std::array<std::string_view, choices>& lines, std::size_t count) {
    for (; count > 0; --count) page_ += random_.oneOf(lines);
  }

  struct Kind {
    std::size_t percent;  // of the bytes
    void (PageWriter::*write)();
  };
  static constexpr std::array<Kind, 5> kKinds = {{{64, &PageWriter::writeText},
                                                  {23, &PageWriter::writeScript},
                                                  {4, &PageWriter::writeTag},
                                                  {7, &PageWriter::writeStyle},
                                                  {2, &PageWriter::writeComment}}};

  std::size_t kindMissing() const {
    std::size_t after = 0;
    for (std::size_t kind = 1; kind < kKinds.size(); ++kind) {
      if (written_[kind] * kKinds[after].percent < written_[after] * kKinds[kind].percent) {
        after = kind;
      }
    }
    return after;
  }

  void writeKind(std::size_t kind) {
    const std::size_t before = page_.size();
    (this->*kKinds[kind].write)();
    written_[kind] += page_.size() - before;
  }

  Random random_;
  Texts& links_;
  std::string page_;
  std::array<std::size_t, kKinds.size()> written_{};
};

RWCString sheet(std::size_t number) {
  Random random(number);
  std::string text = "/* A style sheet */\n@import url(\"base.css\");\n";
  for (std::size_t rules = 200 + 150 * number; rules > 0; --rules) {
    // Real sheets hold a URL in a few kilobytes.
    const std::string_view rule = random.oneOf(kStyleRules);
    const bool holdsUrl = rule.find("url(") != std::string_view::npos;
    if (!holdsUrl || random.below(8) == 0) text += rule;
  }
  return RWCString(text.data(), text.size());
}

}  // namespace

Input generatedInput() {
  constexpr std::size_t kPages = 60;
  constexpr std::size_t kSheets = 10;
  constexpr std::array<std::size_t, 5> kKilobytes = {12, 40, 85, 130, 400};
  Input input;
  input.name = "generated";
  for (std::size_t number = 0; number < kPages; ++number) {
    PageLinks& links = input.links.emplace_back(PageLinks{kBase, {}});
    PageWriter writer(number, links.links);
    input.pages.push_back(writer.write(1000 * kKilobytes[number % kKilobytes.size()]));
  }
  for (std::size_t number = 0; number < kSheets; ++number) input.sheets.push_back(sheet(number));
  input.queries = queriesOf(input.links);
  return input;
}

}  // namespace pagescan::bench
