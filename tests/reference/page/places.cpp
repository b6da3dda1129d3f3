#include "reference/page/places.h"

namespace reference::page {

namespace {

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

// profile, namespace, element, attribute, slot, kind, rule.
constexpr std::string_view kBuiltIn = R"(
standard	html	a	href	url	navigation	
standard	html	area	href	url	navigation	
standard	html	a	ping	url_list	ping	
standard	html	area	ping	url_list	ping	
standard	html	a	attributionsrc	url_list	dead	
standard	html	img	attributionsrc	url_list	dead	
standard	html	script	attributionsrc	url_list	dead	
standard	html	base	href	url	base	base
standard	html	link	href	url	load	link
standard	html	link	imagesrcset	srcset	load	imagesrcset
standard	html	img	src	url	load	img-src
standard	html	img	srcset	srcset	load	candidate
standard	html	source	src	url	load	source
standard	html	source	srcset	srcset	load	source
standard	html	iframe	src	url	load	iframe
standard	html	iframe	srcdoc	html		nested
standard	html	frame	src	url	load	frame
standard	html	embed	src	url	load	plugin
standard	html	object	data	url	load	plugin
standard	html	script	src	url	load	script
standard	html	video	src	url	load	media
standard	html	audio	src	url	load	media
standard	html	video	poster	url	load	poster
standard	html	track	src	url	load	track
standard	html	input	src	url	load	input
standard	html	form	action	url	form	
standard	html	button	formaction	url	form	
standard	html	input	formaction	url	form	
standard	html	blockquote	cite	url	metadata	
standard	html	q	cite	url	metadata	
standard	html	ins	cite	url	metadata	
standard	html	del	cite	url	metadata	
standard	html	meta	content	refresh	navigation	refresh
standard	html	body	background	url	load	
standard	html	table	background	url	load	
standard	html	thead	background	url	load	
standard	html	tbody	background	url	load	
standard	html	tfoot	background	url	load	
standard	html	tr	background	url	load	
standard	html	td	background	url	load	
standard	html	th	background	url	load	
standard	html	col	background	url	load	
standard	html	colgroup	background	url	load	
standard	html	img	usemap	url	fragment	
standard	html	object	usemap	url	fragment	
standard	html	input	usemap	url	fragment	
standard	html	img	longdesc	url	navigation	
standard	html	iframe	longdesc	url	navigation	
standard	html	frame	longdesc	url	navigation	
standard	html	head	profile	url_list	identifier	
standard	html	html	manifest	url	dead	
standard	html	img	lowsrc	url	dead	
standard	html	img	dynsrc	url	dead	
standard	html	input	lowsrc	url	dead	
standard	html	input	dynsrc	url	dead	
standard	html	object	codebase	url	dead	
standard	html	object	classid	url	dead	
standard	html	object	archive	url_list	dead	
standard	html	applet	code	url	dead	
standard	html	applet	codebase	url	dead	
standard	html	applet	object	url	dead	
standard	html	applet	archive	comma_list	dead	
standard	html	bgsound	src	url	dead	
standard	html	layer	src	url	dead	
standard	html	ilayer	src	url	dead	
standard	html	xml	src	url	dead	
standard	html	command	icon	url	dead	
standard	html	menuitem	icon	url	dead	
standard	html	style		css_sheet	load	css
standard	svg	a	href	url	navigation	svg-href
standard	svg	a	xlink:href	url	navigation	svg-href
standard	svg	image	href	url	load	svg-href
standard	svg	image	xlink:href	url	load	svg-href
standard	svg	feImage	href	url	load	svg-href
standard	svg	feImage	xlink:href	url	load	svg-href
standard	svg	use	href	url	load	svg-href
standard	svg	use	xlink:href	url	load	svg-href
standard	svg	script	href	url	load	svg-href
standard	svg	script	xlink:href	url	load	svg-href
standard	svg	linearGradient	href	url	fragment	svg-ref
standard	svg	linearGradient	xlink:href	url	fragment	svg-ref
standard	svg	radialGradient	href	url	fragment	svg-ref
standard	svg	radialGradient	xlink:href	url	fragment	svg-ref
standard	svg	pattern	href	url	fragment	svg-ref
standard	svg	pattern	xlink:href	url	fragment	svg-ref
standard	svg	filter	href	url	fragment	svg-ref
standard	svg	filter	xlink:href	url	fragment	svg-ref
standard	svg	textPath	href	url	fragment	svg-ref
standard	svg	textPath	xlink:href	url	fragment	svg-ref
standard	svg	mpath	href	url	fragment	svg-ref
standard	svg	mpath	xlink:href	url	fragment	svg-ref
standard	svg	animate	href	url	fragment	svg-ref
standard	svg	animate	xlink:href	url	fragment	svg-ref
standard	svg	animateMotion	href	url	fragment	svg-ref
standard	svg	animateMotion	xlink:href	url	fragment	svg-ref
standard	svg	animateTransform	href	url	fragment	svg-ref
standard	svg	animateTransform	xlink:href	url	fragment	svg-ref
standard	svg	set	href	url	fragment	svg-ref
standard	svg	set	xlink:href	url	fragment	svg-ref
standard	svg	*	fill	css_value	load	css
standard	svg	*	stroke	css_value	load	css
standard	svg	*	filter	css_value	load	css
standard	svg	*	mask	css_value	load	css
standard	svg	*	clip-path	css_value	load	css
standard	svg	*	marker-start	css_value	load	css
standard	svg	*	marker-mid	css_value	load	css
standard	svg	*	marker-end	css_value	load	css
standard	svg	*	cursor	css_value	load	css
standard	svg	style		css_sheet	load	css
standard	mathml	*	href	url	navigation	
standard	mathml	*	xlink:href	url	navigation	
standard	any	*	style	css_declarations	load	css
standard	html	*	itemid	url	identifier	
standard	html	*	itemtype	url_list	identifier	
lazy	html	*	data-src	url	script	nonstandard
lazy	html	*	data-original	url	script	nonstandard
lazy	html	*	data-lazy	url	script	nonstandard
lazy	html	*	data-lazy-src	url	script	nonstandard
lazy	html	*	data-full-src	url	script	nonstandard
lazy	html	*	data-bg	url	script	nonstandard
lazy	html	*	data-background	url	script	nonstandard
lazy	html	*	data-background-image	url	script	nonstandard
lazy	html	*	data-poster	url	script	nonstandard
lazy	html	*	data-thumb	url	script	nonstandard
lazy	html	*	data-image	url	script	nonstandard
lazy	html	*	data-srcset	srcset	script	nonstandard
lazy	html	*	data-lazy-srcset	srcset	script	nonstandard
lazy	html	*	data-original-set	srcset	script	nonstandard
data	html	script		json	metadata	json
meta	html	meta[og:url]	content	url	metadata	meta
meta	html	meta[og:image]	content	url	metadata	meta
meta	html	meta[og:image:url]	content	url	metadata	meta
meta	html	meta[og:image:secure_url]	content	url	metadata	meta
meta	html	meta[og:video]	content	url	metadata	meta
meta	html	meta[og:video:url]	content	url	metadata	meta
meta	html	meta[og:video:secure_url]	content	url	metadata	meta
meta	html	meta[og:audio]	content	url	metadata	meta
meta	html	meta[og:audio:url]	content	url	metadata	meta
meta	html	meta[og:audio:secure_url]	content	url	metadata	meta
meta	html	meta[og:see_also]	content	url	metadata	meta
meta	html	meta[twitter:url]	content	url	metadata	meta
meta	html	meta[twitter:image]	content	url	metadata	meta
meta	html	meta[twitter:image:src]	content	url	metadata	meta
meta	html	meta[twitter:player]	content	url	metadata	meta
meta	html	meta[twitter:player:stream]	content	url	metadata	meta
meta	html	meta[msapplication-tileimage]	content	url	metadata	meta
meta	html	meta[msapplication-config]	content	url	metadata	meta
meta	html	meta[msapplication-starturl]	content	url	metadata	meta
meta	html	meta[msapplication-square70x70logo]	content	url	metadata	meta
meta	html	meta[msapplication-square150x150logo]	content	url	metadata	meta
meta	html	meta[msapplication-square310x310logo]	content	url	metadata	meta
meta	html	meta[msapplication-wide310x150logo]	content	url	metadata	meta
meta	html	meta[article:author]	content	url	metadata	meta
meta	html	meta[article:publisher]	content	url	metadata	meta
meta	html	meta[image]	content	url	metadata	meta
meta	html	meta[url]	content	url	metadata	meta
meta	html	meta[thumbnailurl]	content	url	metadata	meta
meta	html	meta[contenturl]	content	url	metadata	meta
meta	html	meta[embedurl]	content	url	metadata	meta
)";

}  // namespace

std::vector<PlaceRow> parsePlaces(std::string_view text) {
  std::vector<PlaceRow> rows;
  for (const std::string& line : split(text, '\n')) {
    std::vector<std::string> columns = split(line, '\t');
    if (line.empty() || line.starts_with('#') || columns[0] == "profile") continue;
    columns.resize(7);
    PlaceRow row = {columns[0], columns[1], columns[2], "",
                    columns[3], columns[4], columns[5], columns[6]};
    const std::size_t bracket = row.element.find('[');
    if (bracket != std::string::npos) {
      row.metaName = row.element.substr(bracket + 1, row.element.size() - bracket - 2);
      row.element.resize(bracket);
    }
    rows.push_back(row);
  }
  return rows;
}

const std::vector<PlaceRow>& builtInPlaces() {
  static const std::vector<PlaceRow> kRows = parsePlaces(kBuiltIn);
  return kRows;
}

}  // namespace reference::page
