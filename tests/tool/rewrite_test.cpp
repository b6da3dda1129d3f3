// pagescan rewrite, run as a user would.
#include <sys/stat.h>

#include <filesystem>

#include "tool/tool.h"

namespace pagescan::tests {
namespace {

namespace fs = std::filesystem;

constexpr char kPage[] =
    "<!doctype html>\n"
    "<a href=?q=1>one</a>\n"
    "<iframe srcdoc=\"<p style='background:url(&quot;paper.png&quot;)'>\"></iframe>\n"
    "<img srcset=\"cat.jpg, cat-2x.jpg 2x\">\n"
    "<a href='#top'>up</a>\n";

constexpr char kAbsolutePage[] =
    "<!doctype html>\n"
    "<a href=https://a.test/b/?q=1>one</a>\n"
    "<iframe srcdoc=\"<p "
    "style='background:url(&quot;https://a.test/b/paper.png&quot;)'>\"></iframe>\n"
    "<img srcset=\"https://a.test/b/cat.jpg, https://a.test/b/cat-2x.jpg 2x\">\n"
    "<a href='#top'>up</a>\n";

// What becomes of a page on standard input.
std::string rewritten(std::vector<std::string> options, const std::string& page) {
  options.insert(options.begin(), "rewrite");
  return outputOf(options, page);
}

ProgramResult failed(std::vector<std::string> options, const std::string& page = "") {
  options.insert(options.begin(), "rewrite");
  return pagescanTool(options, page);
}

TEST(Rewrite, WritesUrlsInFullAndShort) {
  EXPECT_EQ(rewritten({"--url=https://a.test/b/", "--absolute"}, kPage), kAbsolutePage);
  EXPECT_EQ(rewritten({"--url=https://a.test/b/", "--relative"}, kAbsolutePage), kPage);
  EXPECT_EQ(rewritten({"--url=https://a.test/b/c", "--relative"},
                      "<base href=/d/><a href=https://a.test/b/e><a href=//x.test/>"),
            "<base href=/d/><a href=../b/e><a href=//x.test/>");
}

TEST(Rewrite, LeavesWhatIsWrittenAsWanted) {
  const std::string page =
      "<a href='HTTPS://A.test:443/x'><a href=mailto:x><a href='javascript:y'>";
  EXPECT_EQ(rewritten({"--url=https://b.test/", "--absolute"}, page), page);
  EXPECT_EQ(rewritten({"--url=https://b.test/", "--relative"}, page), page);
}

TEST(Rewrite, MovesUrlsByTheirLongestBeginning) {
  EXPECT_EQ(
      rewritten({"--map=http://a.test=https://b.test", "--map=http://a.test/img/=https://c/"},
                "<a href=http://a.test><img src=http://a.test/img/1><img src=http://a.test.x/>"),
      "<a href=https://b.test/><img src=https://c/1><img src=http://a.test.x/>");
}

TEST(Rewrite, RelativeLinksMoveWithTheirPage) {
  EXPECT_EQ(rewritten({"--url=http://a.test/d/p", "--map=http://a.test=https://b.test"},
                      "<a href=x><a href=/y><a href=//a.test/z>"),
            "<a href=x><a href=/y><a href=https://b.test/z>");
  EXPECT_EQ(rewritten({"--url=http://a.test/d/p", "--map=http://a.test/i/=https://b.test/"},
                      "<img src=../i/x><img src=y>"),
            "<img src=https://b.test/x><img src=y>");
}

TEST(Rewrite, PutsUrlsIntoATemplate) {
  EXPECT_EQ(rewritten({"--url=http://h/", "--template=https://p/?u={}&v"},
                      "<a href='a?b&amp;c#d'><a href=mailto:x><link rel=canonical href=/>"),
            "<a href='https://p/?u=http%3A%2F%2Fh%2Fa%3Fb%26c&amp;v#d'><a href=mailto:x>"
            "<link rel=canonical href=/>");
}

TEST(Rewrite, KindsAndProfilesChooseWhatIsRewritten) {
  EXPECT_EQ(rewritten({"--url=http://h/", "--absolute", "--kind=load"}, "<a href=x><img src=y>"),
            "<a href=x><img src=http://h/y>");
  EXPECT_EQ(rewritten({"--url=http://h/", "--absolute", "--profile=lazy"}, "<img data-src=y>"),
            "<img data-src=http://h/y>");
  EXPECT_EQ(rewritten({"--url=http://h/", "--absolute", "--css"}, "a{b:url(c)}d{e:url(#f)}"),
            "a{b:url(http://h/c)}d{e:url(#f)}");
}

TEST(Rewrite, ShowsADiffThatPatchReads) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", kPage);
  EXPECT_EQ(
      outputOf({"rewrite", "--url=https://a.test/b/", "--absolute", "--dry-run", page}),
      "--- " + page + "\n+++ " + page +
          "\n"
          "@@ -1,5 +1,5 @@\n"
          " <!doctype html>\n"
          "-<a href=?q=1>one</a>\n"
          "-<iframe srcdoc=\"<p style='background:url(&quot;paper.png&quot;)'>\"></iframe>\n"
          "-<img srcset=\"cat.jpg, cat-2x.jpg 2x\">\n"
          "+<a href=https://a.test/b/?q=1>one</a>\n"
          "+<iframe srcdoc=\"<p style='background:url(&quot;https://a.test/b/paper.png&quot;)'>"
          "\"></iframe>\n"
          "+<img srcset=\"https://a.test/b/cat.jpg, https://a.test/b/cat-2x.jpg 2x\">\n"
          " <a href='#top'>up</a>\n");
  EXPECT_EQ(readFile(page), kPage);
}

TEST(Rewrite, DiffsHaveThreeLinesOfContextAndTellOfAMissingEnd) {
  TemporaryFolder folder;
  const std::string page = folder.file("p", "<a href=1>\n2\n3\n4\n5\n6\n7\n8\n9\n<a href=0>");
  EXPECT_EQ(outputOf({"rewrite", "--url=http://h/", "--absolute", "--dry-run", page}),
            "--- " + page + "\n+++ " + page +
                "\n"
                "@@ -1,4 +1,4 @@\n"
                "-<a href=1>\n+<a href=http://h/1>\n 2\n 3\n 4\n"
                "@@ -7,4 +7,4 @@\n"
                " 7\n 8\n 9\n"
                "-<a href=0>\n\\ No newline at end of file\n"
                "+<a href=http://h/0>\n\\ No newline at end of file\n");
}

TEST(Rewrite, ReplacesFilesAndKeepsModeAndTimes) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", "<a href=x>");
  const std::string other = folder.file("q.html", "<p>");
  ASSERT_EQ(::chmod(page.c_str(), 0640), 0);
  const fs::file_time_type past = fs::last_write_time(page) - std::chrono::hours(1000);
  fs::last_write_time(page, past);
  EXPECT_EQ(outputOf({"rewrite", "--url=http://h/", "--absolute", "--in-place=.old", page, other}),
            "");
  EXPECT_EQ(readFile(page), "<a href=http://h/x>");
  EXPECT_EQ(readFile(page + ".old"), "<a href=x>");
  EXPECT_FALSE(fs::exists(other + ".old"));
  EXPECT_EQ(fs::status(page).permissions(), fs::perms(0640));
  EXPECT_EQ(fs::last_write_time(page), past);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3);
}

TEST(Rewrite, ReplacesWhatALinkLeadsTo) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", "<a href=x>");
  const std::string link = folder.path() + "/link";
  fs::create_symlink(page, link);
  outputOf({"rewrite", "--url=http://h/", "--absolute", "--in-place", link});
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(readFile(page), "<a href=http://h/x>");
}

TEST(Rewrite, WritesToAnotherFile) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", "<a href=x>");
  const std::string result = folder.path() + "/result";
  outputOf({"rewrite", "--url=http://h/", "--absolute", "-o", result, page});
  EXPECT_EQ(readFile(result), "<a href=http://h/x>");
  EXPECT_EQ(readFile(page), "<a href=x>");
}

TEST(Rewrite, MovesAMirroredSite) {
  TemporaryFolder folder;
  fs::create_directories(folder.path() + "/site/a b");
  const std::string page = folder.file("site/a b/p.html", "<a href=http://o.test/q><img src=i>");
  const std::string index = folder.file("site/index.html", "<a href='http://o.test/a%20b/p.html'>");
  const std::string sheet = folder.file("site/s.css", "a{b:url(http://o.test/i)}");
  const std::string picture = folder.file("site/i.png", "<a href=http://o.test/>");
  const std::string site = folder.path() + "/site";
  for (const char* const jobs : {"1", "3"}) {
    outputOf({"rewrite", "--base-url-from-path=" + site + "=http://o.test/", "--relative",
              "--in-place", "--jobs", jobs, site});
    EXPECT_EQ(readFile(page), "<a href=../q><img src=i>");
    EXPECT_EQ(readFile(index), "<a href='a%20b/p.html'>");
    EXPECT_EQ(readFile(sheet), "a{b:url(i)}");
    EXPECT_EQ(readFile(picture), "<a href=http://o.test/>");
  }
  outputOf({"rewrite", "--base-url-from-path=" + site + "=http://o.test/", "--absolute",
            "--map=http://o.test=https://n.test", "--in-place", site});
  EXPECT_EQ(readFile(page), "<a href=https://n.test/q><img src=https://n.test/a%20b/i>");
}

TEST(Rewrite, MakesTheEditsOfAList) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", "<script integrity=x src='a&amp;b'></script>");
  const std::string edits =
      folder.file("e",
                  "{\"start\":25,\"end\":32,\"expected\":\"a&b\",\"url\":\"c&d\"}\n\n"
                  "{\"start\":7,\"end\":19,\"expected\":\" integrity=x\",\"bytes\":\"\"}\n");
  EXPECT_EQ(outputOf({"rewrite", "--edits", edits, page}), "<script src='c&amp;d'></script>");
}

TEST(Rewrite, TellsAllReasonsAndWritesNothing) {
  TemporaryFolder folder;
  const std::string good = folder.file("a.html", "<a href=x>");
  const std::string bad = folder.file("b.html", "<p>\n<img srcset='x 1x, y 2x'><a href=z>");
  const std::string edits = folder.file(
      "e", "{\"file\":\"" + good +
               "\",\"start\":8,\"end\":9,\"expected\":\"x\",\"url\":\"new\"}\n"
               "{\"file\":\"" +
               bad +
               "\",\"start\":17,\"end\":18,\"expected\":\"x\",\"url\":\"a b\"}\n"
               "{\"file\":\"" +
               bad +
               "\",\"start\":23,\"end\":24,\"expected\":\"q\",\"url\":\"b\"}\n"
               "{\"file\":\"" +
               bad +
               "\",\"start\":1,\"end\":2,\"expected\":\"p\",\"url\":\"b\"}\n"
               "{\"file\":\"" +
               bad + "\",\"start\":37,\"end\":38,\"expected\":\"z\",\"url\":\"\\u001b\"}\n");
  const ProgramResult result = failed({"--edits", edits, "--in-place", "--jobs=2", good, bad});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err,
            "pagescan: " + bad +
                ":1:2: offset 1: line 4 of the edits: there is no such reference: \"b\"\n" +
                "pagescan: " + bad +
                ":2:14: offset 17: line 2 of the edits: read again, the new value would be "
                "several, another one or none: \"a b\"\n" +
                "pagescan: " + bad +
                ":2:20: offset 23: line 3 of the edits: something else than the text "
                "expected stands there: \"b\"\n");
  EXPECT_EQ(readFile(good), "<a href=x>");
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3);
}

TEST(Rewrite, AFailureAnywhereLeavesEveryFileAlone) {
  TemporaryFolder folder;
  const std::string page = folder.file("p.html", "<a href=x>");
  const ProgramResult result =
      failed({"--url=http://h/", "--absolute", "--in-place", page, folder.path() + "/missing"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "pagescan: " + folder.path() + "/missing: No such file or directory\n");
  EXPECT_EQ(readFile(page), "<a href=x>");
}

TEST(Rewrite, TellsWhatIsWrongWithTheList) {
  TemporaryFolder folder;
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"x", "line 1: no JSON object"},
      {"\n{\"start\":1}", "line 2: \"start\" and \"end\" must be offsets"},
      {"{\"start\":1,\"end\":-1}", "line 1: \"start\" and \"end\" must be offsets"},
      {"{\"start\":1,\"end\":2}", "line 1: \"expected\" must be a string"},
      {"{\"start\":1,\"end\":2,\"expected\":\"\"}",
       "line 1: either \"url\" or \"bytes\" must be a string"},
  };
  for (const auto& [list, message] : rows) {
    const std::string edits = folder.file("e", list);
    const ProgramResult result = failed({"--edits", edits}, "<a href=x>");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "pagescan: " + edits + ": " + message + "\n");
  }
}

TEST(Rewrite, SaysWhatItNeeds) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows = {
      {{}, "one of --absolute, --relative, --map, --template and --edits is required"},
      {{"--absolute"}, "--absolute and --relative need --url or --base-url-from-path"},
      {{"--url=http://h/", "--absolute", "--relative"},
       "--absolute, --relative and --template exclude one another"},
      {{"--edits=x", "--absolute"},
       "--edits excludes --absolute, --relative, --map and --template"},
      {{"--absolute", "--url=http://h/", "--base-url-from-path=x=http://h/"},
       "--url and --base-url-from-path exclude one another"},
      {{"--absolute", "--url=http://h/", "--dry-run", "--in-place"},
       "--dry-run, --in-place and -o exclude one another"},
      {{"--map=x"}, "--map: \"x\" is not of the form FROM=TO"},
      {{"--map=x=http://h/"}, "--map: \"x\" is no absolute URL"},
      {{"--template=x"}, "--template: there is no {} in it"},
      {{"--map=http://a=http://b", "x", "y"}, "several inputs need --in-place or --dry-run"},
      {{"--map=http://a=http://b", "--in-place"},
       "standard input cannot be replaced: --in-place needs files"},
      {{"--base-url-from-path=x", "--absolute"},
       "--base-url-from-path: \"x\" is not of the form FOLDER=URL"},
  };
  for (const auto& [options, message] : rows) {
    const ProgramResult result = failed(options);
    EXPECT_EQ(result.status, 2) << message;
    EXPECT_EQ(result.err, "pagescan: " + message + "\n");
  }
}

}  // namespace
}  // namespace pagescan::tests
