// The names of elements and attributes that the page reader knows, as small numbers.
//
// A name is compared as the tokenizer has it: ASCII letters in lower case, in any namespace. The
// lists below are all that tree construction, the table of places and its rules ask for; a caller's
// own table of places adds names at run time (ExtraNames). A name of neither is kUnknownName.
// Looking up a name of any length reads it once; tables are built at compile time.
#ifndef PAGESCAN_PAGE_NAMES_H
#define PAGESCAN_PAGE_NAMES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pagescan::internal {

// Elements and attributes are numbered apart. 0 is a name that nothing asks for.
using NameId = std::uint16_t;
inline constexpr NameId kUnknownName = 0;

// X(enumerator, name) for each element.
// clang-format off
#define PAGESCAN_ELEMENT_NAMES(X) \
  X(a, "a") X(abbr, "abbr") X(acronym, "acronym") X(address, "address") X(applet, "applet") \
  X(area, "area") X(article, "article") X(aside, "aside") X(audio, "audio") X(b, "b") \
  X(base, "base") X(basefont, "basefont") X(bdi, "bdi") X(bdo, "bdo") X(bgsound, "bgsound") \
  X(big, "big") X(blockquote, "blockquote") X(body, "body") X(br, "br") X(button, "button") \
  X(canvas, "canvas") X(caption, "caption") X(center, "center") X(cite, "cite") X(code, "code") \
  X(col, "col") X(colgroup, "colgroup") X(command, "command") X(data, "data") \
  X(datalist, "datalist") X(dd, "dd") X(del, "del") X(details, "details") X(dfn, "dfn") \
  X(dialog, "dialog") X(dir, "dir") X(div, "div") X(dl, "dl") X(dt, "dt") X(em, "em") \
  X(embed, "embed") X(fieldset, "fieldset") X(figcaption, "figcaption") X(figure, "figure") \
  X(font, "font") X(footer, "footer") X(form, "form") X(frame, "frame") X(frameset, "frameset") \
  X(h1, "h1") X(h2, "h2") X(h3, "h3") X(h4, "h4") X(h5, "h5") X(h6, "h6") X(head, "head") \
  X(header, "header") X(hgroup, "hgroup") X(hr, "hr") X(html, "html") X(i, "i") \
  X(iframe, "iframe") X(ilayer, "ilayer") X(image, "image") X(img, "img") X(input, "input") \
  X(ins, "ins") X(kbd, "kbd") X(keygen, "keygen") X(label, "label") X(layer, "layer") \
  X(legend, "legend") X(li, "li") X(link, "link") X(listing, "listing") X(main, "main") \
  X(map, "map") X(mark, "mark") X(marquee, "marquee") X(math, "math") X(menu, "menu") \
  X(menuitem, "menuitem") X(meta, "meta") X(meter, "meter") X(nav, "nav") X(nobr, "nobr") \
  X(noembed, "noembed") X(noframes, "noframes") X(noscript, "noscript") X(object, "object") \
  X(ol, "ol") X(optgroup, "optgroup") X(option, "option") X(output, "output") X(p, "p") \
  X(param, "param") X(picture, "picture") X(plaintext, "plaintext") X(pre, "pre") \
  X(progress, "progress") X(q, "q") X(rb, "rb") X(rp, "rp") X(rt, "rt") X(rtc, "rtc") \
  X(ruby, "ruby") X(s, "s") X(samp, "samp") X(script, "script") X(search, "search") \
  X(section, "section") X(select, "select") X(slot, "slot") X(small, "small") X(source, "source") \
  X(span, "span") X(strike, "strike") X(strong, "strong") X(style, "style") X(sub, "sub") \
  X(summary, "summary") X(sup, "sup") X(svg, "svg") X(table, "table") X(tbody, "tbody") \
  X(td, "td") X(template_, "template") X(textarea, "textarea") X(tfoot, "tfoot") X(th, "th") \
  X(thead, "thead") X(time, "time") X(title, "title") X(tr, "tr") X(track, "track") X(tt, "tt") \
  X(u, "u") X(ul, "ul") X(var, "var") X(video, "video") X(wbr, "wbr") X(xml, "xml") X(xmp, "xmp") \
  /* SVG */ \
  X(altGlyph, "altglyph") X(altGlyphDef, "altglyphdef") X(altGlyphItem, "altglyphitem") \
  X(animate, "animate") X(animateColor, "animatecolor") X(animateMotion, "animatemotion") \
  X(animateTransform, "animatetransform") X(circle, "circle") X(clipPath, "clippath") \
  X(cursor, "cursor") X(defs, "defs") X(desc, "desc") X(ellipse, "ellipse") X(feBlend, "feblend") \
  X(feColorMatrix, "fecolormatrix") X(feComponentTransfer, "fecomponenttransfer") \
  X(feComposite, "fecomposite") X(feConvolveMatrix, "feconvolvematrix") \
  X(feDiffuseLighting, "fediffuselighting") X(feDisplacementMap, "fedisplacementmap") \
  X(feDistantLight, "fedistantlight") X(feDropShadow, "fedropshadow") X(feFlood, "feflood") \
  X(feFuncA, "fefunca") X(feFuncB, "fefuncb") X(feFuncG, "fefuncg") X(feFuncR, "fefuncr") \
  X(feGaussianBlur, "fegaussianblur") X(feImage, "feimage") X(feMerge, "femerge") \
  X(feMergeNode, "femergenode") X(feMorphology, "femorphology") X(feOffset, "feoffset") \
  X(fePointLight, "fepointlight") X(feSpecularLighting, "fespecularlighting") \
  X(feSpotLight, "fespotlight") X(feTile, "fetile") X(feTurbulence, "feturbulence") \
  X(filter, "filter") X(foreignObject, "foreignobject") X(g, "g") X(glyphRef, "glyphref") \
  X(line, "line") X(linearGradient, "lineargradient") X(marker, "marker") X(mask, "mask") \
  X(metadata, "metadata") X(mpath, "mpath") X(path, "path") X(pattern, "pattern") \
  X(polygon, "polygon") X(polyline, "polyline") X(radialGradient, "radialgradient") \
  X(rect, "rect") X(set, "set") X(stop, "stop") X(switch_, "switch") X(symbol, "symbol") \
  X(text, "text") X(textPath, "textpath") X(tspan, "tspan") X(use, "use") X(view, "view") \
  /* MathML */ \
  X(annotation, "annotation") X(annotationXml, "annotation-xml") X(malignmark, "malignmark") \
  X(mfrac, "mfrac") X(mglyph, "mglyph") X(mi, "mi") X(mn, "mn") X(mo, "mo") X(mrow, "mrow") \
  X(ms, "ms") X(mspace, "mspace") X(msqrt, "msqrt") X(mstyle, "mstyle") X(msub, "msub") \
  X(msup, "msup") X(mtable, "mtable") X(mtd, "mtd") X(mtext, "mtext") X(mtr, "mtr") \
  X(semantics, "semantics")
// clang-format on

// X(enumerator, name) for each attribute.
// clang-format off
#define PAGESCAN_ATTRIBUTE_NAMES(X) \
  X(action, "action") X(archive, "archive") X(as, "as") X(attributionsrc, "attributionsrc") \
  X(background, "background") X(charset, "charset") X(cite, "cite") X(classid, "classid") \
  X(clipPath, "clip-path") X(code, "code") X(codebase, "codebase") X(color, "color") \
  X(content, "content") X(cursor, "cursor") X(data, "data") X(dataBackground, "data-background") \
  X(dataBackgroundImage, "data-background-image") X(dataBg, "data-bg") \
  X(dataFullSrc, "data-full-src") X(dataImage, "data-image") X(dataLazy, "data-lazy") \
  X(dataLazySrc, "data-lazy-src") X(dataLazySrcset, "data-lazy-srcset") \
  X(dataOriginal, "data-original") X(dataOriginalSet, "data-original-set") \
  X(dataPoster, "data-poster") X(dataSrc, "data-src") X(dataSrcset, "data-srcset") \
  X(dataThumb, "data-thumb") X(default_, "default") X(disabled, "disabled") X(dynsrc, "dynsrc") \
  X(encoding, "encoding") X(face, "face") X(fill, "fill") X(filter, "filter") \
  X(formaction, "formaction") X(href, "href") X(httpEquiv, "http-equiv") X(icon, "icon") \
  X(imagesrcset, "imagesrcset") X(itemid, "itemid") X(itemprop, "itemprop") \
  X(itemtype, "itemtype") X(language, "language") X(loading, "loading") X(longdesc, "longdesc") \
  X(lowsrc, "lowsrc") X(manifest, "manifest") X(markerEnd, "marker-end") \
  X(markerMid, "marker-mid") X(markerStart, "marker-start") X(mask, "mask") X(media, "media") \
  X(name, "name") X(nomodule, "nomodule") X(object, "object") X(ping, "ping") X(poster, "poster") \
  X(preload, "preload") X(profile, "profile") X(property, "property") X(rel, "rel") \
  X(sandbox, "sandbox") X(shadowrootmode, "shadowrootmode") X(size, "size") X(src, "src") \
  X(srcdoc, "srcdoc") X(srcset, "srcset") X(stroke, "stroke") X(style, "style") X(type, "type") \
  X(usemap, "usemap") X(xlinkHref, "xlink:href")
// clang-format on

#define PAGESCAN_ENUMERATOR(id, name) id,
enum class Element : NameId { unknown, PAGESCAN_ELEMENT_NAMES(PAGESCAN_ENUMERATOR) count };
enum class Attribute : NameId { unknown, PAGESCAN_ATTRIBUTE_NAMES(PAGESCAN_ENUMERATOR) count };
#undef PAGESCAN_ENUMERATOR

constexpr NameId id(Element element) {
  return static_cast<NameId>(element);
}
constexpr NameId id(Attribute attribute) {
  return static_cast<NameId>(attribute);
}
inline constexpr NameId kElementCount = id(Element::count);
inline constexpr NameId kAttributeCount = id(Attribute::count);

// The name of a number below kElementCount or kAttributeCount, in lower case; empty for 0.
std::string_view elementName(NameId element);
std::string_view attributeName(NameId attribute);

// The name of an SVG element as the parser spells it: "feImage" (HTML Standard, 13.2.6.5).
std::string_view svgElementName(NameId element);

// Names that a caller's own table of places adds. Few; set up once for many readings.
class ExtraNames {
 public:
  // firstId  the number of the first name that is added
  explicit ExtraNames(NameId firstId) : firstId_(firstId) {}

  // The number of `name`, lower-cased, which is added if it is new here.
  NameId add(std::string_view name);

  // The number of a name in a page, or kUnknownName. Cost: logarithmic in their count.
  NameId find(std::string_view name) const;

  std::size_t size() const { return sorted_.size(); }
  // The name with a number that add() returned.
  std::string_view name(NameId number) const { return names_[number - firstId_]; }

 private:
  std::size_t placeOf(std::string_view wanted) const;

  NameId firstId_;
  std::vector<std::string> names_;  // by number
  std::vector<NameId> sorted_;      // by length, then bytes
};

// The number of a name, or kUnknownName, wherever it stands. Those of the tokenizer are in
// name_tables.h.
NameId findElement(std::string_view name);
NameId findAttribute(std::string_view name);

}  // namespace pagescan::internal

#endif
