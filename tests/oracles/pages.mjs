// The pages that the oracles read: those of a folder, and mutations of windows of them.
import fs from 'node:fs';
import path from 'node:path';

// Reads FOLDER/pages and FOLDER/page-bases.tsv: an array of {name, file, bytes, url}.
export function readCorpus(folder) {
  const urls = new Map(
    fs.readFileSync(path.join(folder, 'page-bases.tsv'), 'utf8')
      .split('\n').filter(Boolean).map((line) => line.split('\t')));
  const pages = path.join(folder, 'pages');
  return fs.readdirSync(pages).sort().map((name) => {
    const file = path.join(pages, name);
    return { name, file, bytes: fs.readFileSync(file),
      url: urls.get(name) ?? 'https://www.example.com/section/article.html?id=1#top' };
  });
}

// A small generator of numbers, so that a seed repeats a run (mulberry32).
export function randomFrom(seed) {
  let state = seed >>> 0;
  return (below) => {
    state = (state + 0x6d2b79f5) >>> 0;
    let t = Math.imul(state ^ (state >>> 15), 1 | state);
    t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
    return ((t ^ (t >>> 14)) >>> 0) % below;
  };
}

const kPieces = [
  '<', '>', '"', "'", '=', '/', '&', '&amp;', '&lt', '&#x2f;', '&notit;', ' ', '\n', '\r\n', '\t', '\0',
  '<a href=', '</a>', '<p>', '</p>', '<table>', '<tr><td>', '</table>', '<b>', '</b>', '<i>', '<svg>', '</svg>',
  '<math>', '<mi>', '<title>', '</title>', '<style>', '</style>', '<script>', '</script>', '<!--', '-->',
  '<![CDATA[', ']]>', '<template>', '</template>', '<noscript>', '</noscript>', '<form action=x>', '</form>',
  '<textarea>', '</textarea>', '<frameset>', '<frame src=f>', '<body background=b>', '<html manifest=m>',
  '<head profile=p>', '<base href=../x/>', '<img src=i longdesc=l>', '<image xlink:href=y>', '<foreignObject>',
  '<annotation-xml encoding="text/html">', '<button formaction=q>', '<iframe src=z>', '</iframe>', '<li>', '<dd>',
  '<h1>', '</h2>', '<nobr>', '<applet>', '<object data=o>', '</body>', '</html>', '<col>', '<caption>', '<plaintext>',
  'http://', 'https:', '//', '\\', '..', './', '%2e', '%', '?', '#', '@', ':', '[::1]', '0x7f.1', 'é', '\u3002',
  'xn--', 'javascript:', 'data:', 'file:///C|/',
];

// A window of a page's bytes with a few changes in it.
export function mutate(bytes, random) {
  const length = 1 + random(4096);
  const begin = random(bytes.length);
  let text = bytes.subarray(begin, begin + length).toString('latin1');
  for (let changes = 1 + random(8); changes > 0; --changes) {
    const at = random(text.length + 1);
    const removed = random(3) === 0 ? random(20) : 0;
    const piece = Buffer.from(kPieces[random(kPieces.length)], 'utf8').toString('latin1');
    text = text.slice(0, at) + (random(4) === 0 ? '' : piece) + text.slice(at + removed);
  }
  return Buffer.from(text, 'latin1');
}
