#include "legacy_pages.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "encoding/encoder.h"

namespace pagescan::bench {

using namespace internal;
namespace {

struct Language {
  Encoding encoding;
  std::u32string_view name;
  std::u32string_view words;  // separated by spaces, most of them as frequent as in plain text
  bool hasSpaces;
};

constexpr std::u32string_view kJapanese =
    U"今日 は 新しい ニュース を 読む 日本 の 東京 で 会議 が 開かれ ました 政府 は 経済 について "
    U"発表 した と 伝え られて います 写真 詳細 こちら サイト 情報 検索 お知らせ 。 、 ・";
constexpr std::u32string_view kChinese =
    U"今天 的 新闻 报道 说 中国 经济 发展 很 快 人们 在 北京 开会 讨论 问题 图片 视频 搜索 首页 "
    U"联系 "
    U"我们 更多 信息 网站 服务 用户 登录 注册 。 ， 、";

constexpr Language kLanguages[] = {
    {Encoding::windows1252, U"French",
     U"le marché de la ville est fermé après une journée d'été très animée où les élèves ont été à "
     U"l'école pour la fête et les joueurs sont arrivés en retard à cause de la météo",
     true},
    {Encoding::windows1251, U"Russian",
     U"сегодня в городе прошла встреча по вопросам развития экономики и культуры на которой были "
     U"представлены новые проекты а также результаты работы за последний год подробнее читайте",
     true},
    {Encoding::koi8R, U"Russian",
     U"сегодня в городе прошла встреча по вопросам развития экономики и культуры на которой были "
     U"представлены новые проекты а также результаты работы за последний год подробнее читайте",
     true},
    {Encoding::shiftJis, U"Japanese", kJapanese, false},
    {Encoding::eucJp, U"Japanese", kJapanese, false},
    {Encoding::eucKr, U"Korean",
     U"오늘 서울에서 새로운 경제 정책에 대한 회의가 열렸다 정부는 이번 발표에서 많은 사람들이 "
     U"참여할 "
     U"수 있도록 하겠다고 밝혔다 사진 동영상 검색 뉴스 더보기 로그인",
     true},
    {Encoding::gbk, U"Chinese", kChinese, false},
    {Encoding::gb18030, U"Chinese", kChinese, false},
    {Encoding::big5, U"Chinese",
     U"今天 的 新聞 報導 說 臺灣 經濟 發展 很 快 人們 在 臺北 開會 討論 問題 圖片 影片 搜尋 首頁 "
     U"聯絡 "
     U"我們 更多 資訊 網站 服務 使用者 登入 註冊 。 ， 、",
     false},
};

class PageWriter {
 public:
  PageWriter(const Language& language, std::uint64_t seed) : language_(language), state_(seed) {
    for (std::size_t at = 0; at < language.words.size();) {
      const std::size_t end = std::min(language.words.find(U' ', at), language.words.size());
      words_.push_back(language.words.substr(at, end - at));
      at = end + 1;
    }
  }

  std::u32string write(std::size_t length) {
    page_ = U"<!DOCTYPE html>\n<html>\n<head>\n<title>";
    writeWords(4);
    page_ += U"</title>\n</head>\n<body>\n";
    while (page_.size() < length) writeItem();
    return page_ + U"</body>\n</html>\n";
  }

 private:
  std::size_t below(std::size_t limit) {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::size_t>(state_ >> 33U) % limit;
  }

  void writeWords(std::size_t count) {
    for (; count > 0; --count) {
      page_ += words_[below(words_.size())];
      if (language_.hasSpaces) page_ += U' ';
    }
  }

  void writeItem() {
    page_ += U"<li class=\"item\"><a href=\"/news/2024/11/index.html?id=4711\" title=\"";
    writeWords(2 + below(3));
    page_ +=
        U"\"><img src=\"/images/small/picture.jpg\" width=\"120\" height=\"90\"></a></li>\n"
        U"<script>var items = document.getElementsByTagName('div'); track(items);</script>\n<p>";
    writeWords(8 + below(16));
    page_ += U"<br>\n<a class=\"more\" href=\"javascript:show(12)\">";
    writeWords(1 + below(3));
    page_ += U"</a></p>\n";
  }

  const Language& language_;
  std::uint64_t state_;
  std::vector<std::u32string_view> words_;
  std::u32string page_;
};

RWCString inEncoding(const std::u32string& text, Encoding encoding) {
  std::string bytes;
  QueryEncoder encoder(encoding);
  for (const char32_t c : text) encoder.append(c, bytes);
  return RWCString(bytes.data(), bytes.size());
}

}  // namespace

std::vector<LegacyPages> legacyPages() {
  constexpr std::uint64_t kPages = 16;
  constexpr std::size_t kLength = 40000;
  std::vector<LegacyPages> all;
  for (const Language& language : kLanguages) {
    const std::string name(language.name.begin(), language.name.end());
    LegacyPages& made = all.emplace_back(LegacyPages{language.encoding, name, {}});
    for (std::uint64_t seed = 1; seed <= kPages; ++seed) {
      made.pages.push_back(
          inEncoding(PageWriter(language, seed).write(kLength), language.encoding));
    }
  }
  return all;
}

}  // namespace pagescan::bench
