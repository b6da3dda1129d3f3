// Which rule of "in body" (HTML Standard, 13.2.6.4.7) a tag falls under, by its name.
#ifndef PAGESCAN_PAGE_BODY_RULES_H
#define PAGESCAN_PAGE_BODY_RULES_H

#include <array>
#include <initializer_list>

#include "page/names.h"

namespace pagescan::internal {

enum class StartRule : std::uint8_t {
  ordinary,
  formatting,
  block,
  listItem,
  void_,
  head,
  html,
  body,
  frameset,
  heading,
  pre,
  form,
  plaintext,
  button,
  a,
  nobr,
  marker,
  table,
  input,
  voidPlain,
  hr,
  image,
  textarea,
  xmp,
  iframe,
  noembed,
  noscript,
  select,
  option,
  rubyBase,
  rubyText,
  math,
  svg,
  dropped,
};

enum class EndRule : std::uint8_t {
  other,
  formatting,
  block,
  p,
  listItem,
  form,
  heading,
  marker,
  template_,
  body,
  html,
  br,
};

template <class Rule>
struct RuleRow {
  Rule rule;
  std::initializer_list<Element> elements;
};

template <class Rule, std::size_t kRows>
constexpr std::array<Rule, kElementCount> ruleTable(const RuleRow<Rule> (&rows)[kRows]) {
  std::array<Rule, kElementCount> table{};
  for (const RuleRow<Rule>& row : rows) {
    for (const Element element : row.elements) table[id(element)] = row.rule;
  }
  return table;
}

using E = Element;

inline constexpr auto kStartRules = ruleTable<StartRule>({
    {StartRule::formatting,
     {E::b, E::big, E::code, E::em, E::font, E::i, E::s, E::small, E::strike, E::strong, E::tt,
      E::u}},
    {StartRule::block,
     {E::address, E::article, E::aside,   E::blockquote, E::center,     E::details, E::dialog,
      E::dir,     E::div,     E::dl,      E::fieldset,   E::figcaption, E::figure,  E::footer,
      E::header,  E::hgroup,  E::main,    E::menu,       E::nav,        E::ol,      E::p,
      E::search,  E::section, E::summary, E::ul}},
    {StartRule::listItem, {E::li, E::dd, E::dt}},
    {StartRule::void_, {E::area, E::br, E::embed, E::img, E::keygen, E::wbr}},
    {StartRule::head,
     {E::base, E::basefont, E::bgsound, E::link, E::meta, E::noframes, E::script, E::style,
      E::template_, E::title}},
    {StartRule::html, {E::html}},
    {StartRule::body, {E::body}},
    {StartRule::frameset, {E::frameset}},
    {StartRule::heading, {E::h1, E::h2, E::h3, E::h4, E::h5, E::h6}},
    {StartRule::pre, {E::pre, E::listing}},
    {StartRule::form, {E::form}},
    {StartRule::plaintext, {E::plaintext}},
    {StartRule::button, {E::button}},
    {StartRule::a, {E::a}},
    {StartRule::nobr, {E::nobr}},
    {StartRule::marker, {E::applet, E::marquee, E::object}},
    {StartRule::table, {E::table}},
    {StartRule::input, {E::input}},
    {StartRule::voidPlain, {E::param, E::source, E::track}},
    {StartRule::hr, {E::hr}},
    {StartRule::image, {E::image}},
    {StartRule::textarea, {E::textarea}},
    {StartRule::xmp, {E::xmp}},
    {StartRule::iframe, {E::iframe}},
    {StartRule::noembed, {E::noembed}},
    {StartRule::noscript, {E::noscript}},
    {StartRule::select, {E::select}},
    {StartRule::option, {E::option, E::optgroup}},
    {StartRule::rubyBase, {E::rb, E::rtc}},
    {StartRule::rubyText, {E::rp, E::rt}},
    {StartRule::math, {E::math}},
    {StartRule::svg, {E::svg}},
    {StartRule::dropped,
     {E::caption, E::col, E::colgroup, E::frame, E::head, E::tbody, E::td, E::tfoot, E::th,
      E::thead, E::tr}},
});

inline constexpr auto kEndRules = ruleTable<EndRule>({
    {EndRule::formatting,
     {E::a, E::b, E::big, E::code, E::em, E::font, E::i, E::nobr, E::s, E::small, E::strike,
      E::strong, E::tt, E::u}},
    {EndRule::block,
     {E::address, E::article, E::aside,  E::blockquote, E::button,   E::center,     E::details,
      E::dialog,  E::dir,     E::div,    E::dl,         E::fieldset, E::figcaption, E::figure,
      E::footer,  E::header,  E::hgroup, E::listing,    E::main,     E::menu,       E::nav,
      E::ol,      E::pre,     E::search, E::section,    E::select,   E::summary,    E::ul}},
    {EndRule::p, {E::p}},
    {EndRule::listItem, {E::li, E::dd, E::dt}},
    {EndRule::form, {E::form}},
    {EndRule::heading, {E::h1, E::h2, E::h3, E::h4, E::h5, E::h6}},
    {EndRule::marker, {E::applet, E::marquee, E::object}},
    {EndRule::template_, {E::template_}},
    {EndRule::body, {E::body}},
    {EndRule::html, {E::html}},
    {EndRule::br, {E::br}},
});

}  // namespace pagescan::internal

#endif
