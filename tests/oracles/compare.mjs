// Holds the inventory to parse5 (places and values of attributes) and to whatwg-url (URLs), over real
// pages and mutations of them: compare.mjs TOOL PLACES-SOURCE CORPUS WORK-FOLDER [MUTATIONS [SEED]].
//
// Known differences, each a rule of a standard that is newer than the oracle:
//   <select>         its content is parsed like the body's; parse5 keeps the old insertion modes.
//                    Pages with the tag are left out of the comparison of places, and counted.
//   xn-- labels      a domain that is all ASCII is taken as it is, lower-cased; whatwg-url refuses
//                    labels that are no valid Punycode. Counted where just that differs.
import fs from 'node:fs';
import path from 'node:path';
import whatwg from 'whatwg-url';
import { inventories } from './inventory.mjs';
import { mutate, randomFrom, readCorpus } from './pages.mjs';
import { findPlaces, urlAttributes } from './places.mjs';

const [tool, table, corpus, work, mutations = '20000', seed = '1'] = process.argv.slice(2);
const kShown = 20;
const counts = { pages: 0, places: 0, urls: 0, 'pages with <select>': 0, 'ASCII xn-- hosts': 0, differences: 0 };

function differ(kind, page, detail) {
  if (++counts.differences <= kShown) console.log(`${kind}: ${page}\n  ${detail}`);
}

// windows-1252, one code unit for each byte. (Some versions of Node.js decode it as ISO-8859-1.)
const kAbove127 = '€\x81‚ƒ„…†‡ˆ‰Š‹Œ\x8dŽ\x8f\x90‘’“”•–—˜™š›œ\x9džŸ';
const decoded = (bytes) => bytes.toString('latin1').replace(/[\x80-\x9f]/g, (c) => kAbove127[c.charCodeAt(0) - 128]);

function comparePlaces(page, references, wanted, scripting) {
  if (/<select/i.test(page.bytes.toString('latin1'))) {
    ++counts['pages with <select>'];
    return;
  }
  const theirs = findPlaces(decoded(page.bytes), wanted, scripting);
  const ours = new Map();
  for (const { start, end, element, attribute, slot, value, parent } of references) {
    if (slot !== 'url' || parent !== undefined || !/[^\t\n\f\r ]/.test(value)) continue;
    ours.set(start, [start, end, element, attribute, JSON.stringify(value)].join(' '));
  }
  for (const [start, line] of theirs) {
    ++counts.places;
    if (ours.get(start) !== line) differ('place', page.file, `parse5:   ${line}\n  pagescan: ${ours.get(start)}`);
  }
  // What is merged into html or body after the first such tag has no place in parse5's tree.
  for (const [start, line] of ours) {
    if (!theirs.has(start) && !/^\d+ \d+ (html|body) /.test(line)) {
      differ('place', page.file, `parse5:   none\n  pagescan: ${line}`);
    }
  }
}

function resolved(value, base) {
  return whatwg.parseURL(value, { baseURL: base }) ?? null;
}

function hasAsciiPunycode(value, base) {
  return /xn--/i.test(value) || /xn--/i.test(base);
}

function compareUrls(page, references) {
  const own = resolved(page.url, null);
  const baseTag = references.find(({ kind, parent }) => kind === 'base' && parent === undefined);
  let base = baseTag ? resolved(baseTag.value, own) ?? own : own;
  if (base.scheme === 'data' || base.scheme === 'javascript') base = own;
  for (const { start, value, kind, slot, url, attribute, element, parent, flags = [] } of references) {
    if (parent !== undefined) continue;
    const whenMet = kind === 'load' || slot.startsWith('css') || slot === 'refresh';
    let against = whenMet && baseTag && start < baseTag.start ? own : base;
    if (element === 'base') against = own;
    const isOwn = (attribute === 'action' || attribute === 'formaction') && !/[^\t\n\f\r ]/.test(value);
    const parsed = isOwn ? own : resolved(value, against);
    const want = parsed === null ? undefined : whatwg.serializeURL(parsed, isOwn);
    ++counts.urls;
    if (want === url) continue;
    if (want === undefined && hasAsciiPunycode(value, page.url)) ++counts['ASCII xn-- hosts'];
    else differ('url', page.file, `${JSON.stringify(value)} on ${whatwg.serializeURL(against)}\n` +
      `  whatwg-url: ${want}\n  pagescan:   ${url}`);
  }
}

function comparePages(pages, pageUrl) {
  const wanted = urlAttributes(fs.readFileSync(table, 'utf8'));
  const files = pages.map(({ file }) => file);
  const run = (...options) => inventories(tool, files, ['--url', pageUrl, ...options]);
  for (const scripting of [true, false]) {
    const found = run('--charset', 'windows-1252', '--scripting', scripting ? 'on' : 'off');
    pages.forEach((page, i) => comparePlaces(page, found[i], wanted, scripting));
  }
  run('--charset', 'utf-8').forEach((found, i) => compareUrls({ ...pages[i], url: pageUrl }, found));
  counts.pages += pages.length;
}

function mutatedPages(real) {
  const random = randomFrom(Number(seed));
  fs.mkdirSync(work, { recursive: true });
  const pages = [];
  for (let i = 0; i < Number(mutations); ++i) {
    const bytes = mutate(real[random(real.length)].bytes, random);
    const file = path.join(work, `${i}.html`);
    fs.writeFileSync(file, bytes);
    pages.push({ file, bytes });
  }
  return pages;
}

const real = readCorpus(corpus);
for (const page of real) comparePages([page], page.url);
const mutated = mutatedPages(real);
for (let i = 0; i < mutated.length; i += 1000) {
  comparePages(mutated.slice(i, i + 1000), 'https://www.example.com/a/b/page.html?q=1#top');
}
console.log(`seed ${seed}: ${Object.entries(counts).map(([what, n]) => `${n} ${what}`).join(', ')}`);
process.exit(counts.differences === 0 && counts.places > 0 ? 0 : 1);
