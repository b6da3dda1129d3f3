// pagescan save, run as a user would, beside a real server.
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <set>

#include "support/saved_site.h"
#include "tool/tool.h"

namespace pagescan::tests {
namespace {

namespace fs = std::filesystem;

class Save : public testing::Test {
 protected:
  static void SetUpTestSuite() { site_ = std::make_unique<Site>(); }
  static void TearDownTestSuite() { site_.reset(); }

  void SetUp() override {
    if (!site_->isServed()) GTEST_SKIP() << "nginx is not installed";
  }

  static std::string url(const std::string& path) { return site_->root() + path; }

  std::string copy(const std::string& name = "") const { return folder_.path() + "/copy" + name; }

  ProgramResult save(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"save", "--allow-private"});
    arguments.push_back(copy());
    return pagescanTool(arguments);
  }

  // The lines of the manifest that tell of a copy or a failure, by their paths.
  std::map<std::string, Record> manifest() const {
    std::map<std::string, Record> lines;
    for (const Record& line : recordsOf(readFile(copy("/manifest.jsonl")))) {
      const auto whole = line.at("url").get<std::string>();
      if (line.contains("location")) continue;
      const bool isOurs = whole.compare(0, site_->root().size(), site_->root()) == 0;
      lines[isOurs ? whole.substr(site_->root().size()) : whole] = line;
    }
    return lines;
  }

  // The bytes of the copy of a path.
  std::string copyOf(const std::map<std::string, Record>& lines, const std::string& path) const {
    return readFile(copy("/" + lines.at(path).at("name").get<std::string>()));
  }

  inline static std::unique_ptr<Site> site_;
  TemporaryFolder folder_;
};

// Expects what a list of a page's loads names to be a file beside it.
void expectFilesThere(const fs::path& text, bool isSheet, std::set<fs::path>& seen) {
  if (!seen.insert(fs::weakly_canonical(text)).second) return;
  std::vector<std::string> arguments = {"inventory", "--kind", "load", "--format", "jsonl", text};
  if (isSheet) arguments.insert(arguments.begin() + 1, "--css");
  for (const Record& line : recordsOf(outputOf(arguments))) {
    const auto value = line.at("value").get<std::string>();
    if (value.compare(0, 5, "data:") == 0) continue;
    const fs::path file = text.parent_path() / value;
    EXPECT_TRUE(fs::is_regular_file(file)) << text << " names " << value;
    if (file.extension() == ".html") expectFilesThere(file, false, seen);
    if (file.extension() == ".css") expectFilesThere(file, true, seen);
  }
}

TEST_F(Save, MakesAFolderThatNeedsNoServer) {
  const ProgramResult result = save({url("/page.html")});
  EXPECT_EQ(result.status, 0) << result.err;
  const std::string page = "pagescan: " + url("/page.html") + ": taken off: ";
  EXPECT_EQ(result.err, page + "integrity, 2 times\n" + page + "crossorigin, 2 times\n" + page +
                            "http-equiv (a policy or an encoding)\n" + page + "href of base\n");
  std::set<fs::path> texts;
  expectFilesThere(copy("/index.html"), false, texts);
  EXPECT_EQ(texts.size(), 8U);  // the page, three frames, four sheets
  EXPECT_FALSE(fs::exists(copy("/.saving")));
}

TEST_F(Save, WritesEachResourceOnceAndAsItCame) {
  ASSERT_EQ(save({url("/page.html")}).status, 0);
  const auto lines = manifest();
  for (const char* path :
       {"/img/one.png", "/img/A.png", "/img/a.png", "/js/app.js", "/packed/gzip.png", "/brotli.png",
        "/img/noscript.png", "/img/latin.png"}) {
    EXPECT_EQ(copyOf(lines, path), site_->file(path + 1)) << path;
  }
  EXPECT_EQ(copyOf(lines, "/hostile"), site_->file("img/one.png"));
  EXPECT_EQ(copyOf(lines, "/latin.css").substr(0, 24), "@charset \"ISO-8859-2\";.a");
  EXPECT_EQ(copyOf(lines, "/utf8.html").substr(0, 3), "\xEF\xBB\xBF");
  EXPECT_EQ(copyOf(lines, "/utf8.js"), "\xEF\xBB\xBF" + site_->file("utf8.js"));
  std::set<std::string> names, allowed = {"index.html", "manifest.jsonl", "files"};
  for (const auto& [path, line] : lines) {
    EXPECT_TRUE(names.insert(line.at("name")).second) << line;
    EXPECT_EQ(line.at("status"), 200) << line;
  }
  for (const auto& entry : fs::directory_iterator(copy())) {
    EXPECT_EQ(allowed.count(entry.path().filename()), 1U) << entry.path();
  }
  EXPECT_EQ(fs::directory_iterator(folder_.path())->path(), copy());
}

TEST_F(Save, TellsWhatFailedAndWhere) {
  const ProgramResult result =
      save({"--timeout", "1", "--max-size", "1000000", url("/errors.html")});
  EXPECT_EQ(result.status, 1);
  const auto lines = manifest();
  const struct {
    const char *path, *error;
    int line;
  } kCases[] = {
      {"/gone.png", "status 404", 2},
      {"/broken.png", "status 500", 3},
      {"/loop.png", "redirected more than 20 times", 4},
      {"/endless.png", "redirected more than 20 times", 5},
      {"/to-file.png", "redirected to file:///etc/passwd, which is not fetched", 6},
      {"/slow.png", "Timeout was reached", 7},
      {"ftp://127.0.0.1/x.png", "only http and https are fetched", 9},
      {"/bomb/zeros.png", "larger than 1000000 bytes (see --max-size)", 10},
  };
  const std::string copied = readFile(copy("/index.html"));
  for (const auto& [path, error, line] : kCases) {
    const std::string whole = path[0] == '/' ? url(path) : path;
    const std::string place = url("/errors.html") + ":" + std::to_string(line) + ":10";
    EXPECT_EQ(lines.at(path).at("error"), error) << path;
    EXPECT_EQ(lines.at(path).at("place"), place) << path;
    EXPECT_NE(result.err.find("pagescan: " + place + ": " + whole + ": " + error + "\n"),
              std::string::npos)
        << result.err;
    EXPECT_NE(copied.find("<img src=" + whole + ">"), std::string::npos) << path;
  }
  EXPECT_NE(result.err.find("/cut.png: Transferred a partial file\n"), std::string::npos);
  EXPECT_NE(copied.find("<img src=files/one.png>"), std::string::npos);
  EXPECT_EQ(std::distance(fs::directory_iterator(copy("/files")), {}), 1);
}

TEST_F(Save, FollowsRedirectsOfThePage) {
  EXPECT_EQ(save({url("/moved#x")}).status, 0);
  EXPECT_EQ(readFile(copy("/index.html")),
            "<!doctype html><img src=files/one.png><img src=files/img.png>");
  const Record first = recordsOf(readFile(copy("/manifest.jsonl"))).front();
  EXPECT_EQ(first.at("status"), 302);
  EXPECT_EQ(first.at("location"), url("/final/page.html"));
}

TEST_F(Save, RefusesPrivateAddressesUnlessAllowed) {
  const ProgramResult result = pagescanTool({"save", url("/page.html"), copy()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "pagescan: " + url("/page.html") +
                            ": the address 127.0.0.1 is not public (see --allow-private)\n");
  EXPECT_FALSE(fs::exists(copy()));
  const ProgramResult named =
      pagescanTool({"save", "http://localhost" + url("/").substr(16), copy()});
  EXPECT_NE(named.err.find("is not public"), std::string::npos) << named.err;
}

TEST_F(Save, SendsHeadersToTheServerOfThePageAlone) {
  EXPECT_EQ(
      save({"--header", "X-Secret: tell", "--user-agent", "tests/1", url("/secret.html")}).status,
      0);
  EXPECT_NE(site_->requests().find("GET /secret.png HTTP/1.1\" 200"), std::string::npos);
  EXPECT_NE(site_->requests().find("\"tests/1\""), std::string::npos);
  const std::string page = folder_.file("page.html", "<img src=" + url("/secret.png") + ">");
  EXPECT_EQ(save({"--header", "X-Secret: tell", "--url", "http://elsewhere.invalid/", page}).status,
            2)
      << "the folder is not empty";
  fs::remove_all(copy());
  EXPECT_EQ(save({"--header", "X-Secret: tell", "--url", "http://elsewhere.invalid/", page}).status,
            1);
  EXPECT_EQ(manifest().at("/secret.png").at("status"), 403);
}

TEST_F(Save, TakesThePageFromAFile) {
  const std::string page = folder_.file("page.html", "<p>mine<img src=../img/one.png>");
  EXPECT_EQ(save({"--url", url("/final/x.html"), page}).status, 0);
  EXPECT_EQ(readFile(copy("/index.html")), "<p>mine<img src=files/one.png>");
  EXPECT_EQ(site_->requests().find("/final/x.html"), std::string::npos);
}

TEST_F(Save, WritesOneFileThatHoldsAll) {
  EXPECT_EQ(save({"--single-file", url("/page.html")}).status, 0);
  const std::string page = readFile(copy("/index.html"));
  EXPECT_EQ(page.find("files/"), std::string::npos);
  EXPECT_NE(page.find("<script src=\"data:text/javascript;base64,"), std::string::npos);
  EXPECT_NE(page.find("<iframe src=\"data:text/html;charset=koi8-r;base64,"), std::string::npos);
  for (const Record& line : recordsOf(
           outputOf({"inventory", "--kind", "load", "--format", "jsonl", copy("/index.html")}))) {
    EXPECT_EQ(line.at("value").get<std::string>().substr(0, 5), "data:") << line;
  }
  EXPECT_FALSE(fs::exists(copy("/files")));
}

TEST_F(Save, GoesOnWithARunThatWasStopped) {
  // A run that ends in the middle, as if it had been killed: its journal has what it fetched.
  ASSERT_EQ(save({url("/many.html")}).status, 0);
  const auto lines = manifest();
  EXPECT_EQ(lines.size(), 301U);
  fs::create_directory(copy("/.saving"));
  std::string journal = "pagescan save 1\t" + url("/many.html") + "\n";
  const auto keep = [&](int number, const std::string& path, const std::string& bytes) {
    const Record& line = lines.at(path);
    std::ofstream(copy("/.saving/" + std::to_string(number)), std::ios::binary) << bytes;
    journal += std::to_string(number) + "\t" + line.at("type").get<std::string>() + "\t" +
               std::to_string(line.at("length").get<int>()) + "\t" +
               line.at("sha256").get<std::string>() + "\t" + line.at("time").get<std::string>() +
               "\t200\t" + url(path) + "\n";
  };
  keep(0, "/many.html", site_->file("many.html"));
  keep(1, "/many/1.png", site_->file("many/1.png"));
  keep(2, "/many/2.png", "damaged");
  std::ofstream(copy("/.saving/journal")) << journal << "3\timage/png\t12";
  const std::string expected = readFile(copy("/index.html"));
  fs::remove(copy("/index.html"));
  const std::size_t before = site_->requests().size();
  EXPECT_EQ(save({url("/many.html")}).status, 2) << "without --continue";
  EXPECT_EQ(save({"--continue", url("/page.html")}).status, 2) << "another page";
  const ProgramResult result = save({"--continue", url("/many.html")});
  EXPECT_EQ(result.status, 0) << result.err;
  const std::string asked = site_->requests().substr(before);
  EXPECT_EQ(asked.find("GET /many.html "), std::string::npos);
  EXPECT_EQ(asked.find("GET /many/1.png "), std::string::npos);
  EXPECT_NE(asked.find("GET /many/2.png "), std::string::npos);
  EXPECT_NE(asked.find("GET /many/3.png "), std::string::npos);
  EXPECT_EQ(readFile(copy("/index.html")), expected);
  EXPECT_EQ(readFile(copy("/files/2.png")), site_->file("many/2.png"));
  EXPECT_FALSE(fs::exists(copy("/.saving")));
}

TEST_F(Save, KeepsToItsLimits) {
  const ProgramResult result = save({"--max-count", "11", url("/many.html")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(std::distance(fs::directory_iterator(copy("/files")), {}), 10);
  EXPECT_NE(result.err.find("/many/10.png: one more than 11 resources (see --max-count)\n"),
            std::string::npos);
  fs::remove_all(copy());
  EXPECT_NE(save({"--max-total", "5000", url("/many.html")}).err.find("(see --max-total)"),
            std::string::npos);
}

TEST_F(Save, WantsAPage) {
  EXPECT_EQ(save({url("/img/one.png")}).err,
            "pagescan: " + url("/img/one.png") + ": is no page but image/png\n");
  EXPECT_EQ(save({url("/gone.png")}).err, "pagescan: " + url("/gone.png") + ": status 404\n");
  EXPECT_FALSE(fs::exists(copy()));
}

TEST(SaveUsage, IsChecked) {
  const std::vector<std::vector<std::string>> kCases = {
      {"save"},
      {"save", "http://h/"},
      {"save", "ftp://h/", "x"},
      {"save", "page.html", "x"},
      {"save", "--url", "page", "page.html", "x"},
      {"save", "--header", "no header", "http://h/", "x"},
      {"save", "--header", "a: b\nc: d", "http://h/", "x"},
      {"save", "--user-agent", "a\r\nb", "http://h/", "x"},
  };
  for (const auto& arguments : kCases) {
    EXPECT_EQ(pagescanTool(arguments).status, 2) << testing::PrintToString(arguments);
    EXPECT_FALSE(fs::exists("x"));
  }
}

}  // namespace
}  // namespace pagescan::tests
