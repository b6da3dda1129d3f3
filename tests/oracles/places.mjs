// Where parse5 finds the attributes that hold one URL each, in the form of the inventory's lines.
import { parse } from 'parse5';

const kNamespaces = new Map([
  ['http://www.w3.org/1999/xhtml', 'html'],
  ['http://www.w3.org/2000/svg', 'svg'],
  ['http://www.w3.org/1998/Math/MathML', 'mathml'],
]);

// The places that are a whole attribute, by the rows of src/page/places.cpp: a set of
// "namespace element attribute".
export function urlAttributes(source) {
  const rows = source.matchAll(/^ *\{standard, *(\w+), *"([^"]+)", *"([^"]+)", *url,/gm);
  return new Set([...rows].map(([, space, element, attribute]) => `${space} ${element} ${attribute}`));
}

function isWanted(wanted, space, element, attribute) {
  return wanted.has(`${space} ${element} ${attribute}`) || wanted.has(`${space} * ${attribute}`);
}

// The bytes of the value of the attribute at `start`: name, "=", value in quotes or bare. (Where no
// white space follows a quoted value, parse5 7 gives the end of the name as that of the attribute.)
function valueSpan(html, start) {
  const skip = (pattern, at) => {
    while (at < html.length && pattern.test(html[at])) ++at;
    return at;
  };
  const nameEnd = skip(/[^\t\n\f\r =\/>]/, start + 1);
  const equals = skip(/[\t\n\f\r ]/, nameEnd);
  if (html[equals] !== '=') return [nameEnd, nameEnd];
  const value = skip(/[\t\n\f\r ]/, equals + 1);
  const quote = html[value];
  if (quote === '"' || quote === "'") return [value + 1, html.indexOf(quote, value + 1)];
  return quote === '>' ? [equals + 1, equals + 1] : [value, skip(/[^\t\n\f\r >]/, value)];
}

// Every wanted attribute of the tree of `html`, a text of one code unit a byte: the lines
// "start end element attribute value" as a map from start to line.
export function findPlaces(html, wanted, scriptingEnabled) {
  const found = new Map();
  const open = [parse(html, { sourceCodeLocationInfo: true, scriptingEnabled })];
  while (open.length > 0) {
    const node = open.pop();
    open.push(...(node.childNodes ?? []), ...(node.content ? [node.content] : []));
    const location = node.sourceCodeLocation?.startTag ?? node.sourceCodeLocation;
    if (!node.attrs || !location?.attrs) continue;
    const space = kNamespaces.get(node.namespaceURI);
    for (const { prefix, name, value } of node.attrs) {
      const attribute = prefix ? `${prefix}:${name}` : name.toLowerCase();
      const place = location.attrs[attribute] ?? location.attrs[name];
      if (!place || !isWanted(wanted, space, node.tagName, attribute)) continue;
      if (!/[^\t\n\f\r ]/.test(value)) continue;
      const [start, end] = valueSpan(html, place.startOffset);
      const element = { svg: 'svg:', mathml: 'math:' }[space] ?? '';
      found.set(start, [start, end, element + node.tagName, attribute, JSON.stringify(value)].join(' '));
    }
  }
  return found;
}
