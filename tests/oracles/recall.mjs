// Holds the inventory to what headless Chromium asks for, and writes the table that compares finders:
// recall.mjs TOOL CORPUS WORK-FOLDER. Writes WORK-FOLDER/recall.md; exits with 1 where Chromium asks
// for something that is not in the inventory and is not explained below, or where more than 1 % of
// the references of kind load without a flag are not asked for.
import fs from 'node:fs';
import path from 'node:path';
import { askedFor } from './browser.mjs';
import { classic, inventory, lxml, startProxy, wget } from './finders.mjs';
import { readCorpus } from './pages.mjs';

const [tool, corpus, work] = process.argv.slice(2);
fs.mkdirSync(work, { recursive: true });
const pages = readCorpus(corpus);

// Where Chromium spells a URL otherwise than the URL Standard does, or asks on its own account.
const kExplained = [
  ['"|" in a path, which the standard leaves alone', (url, all) => all.has(url.replaceAll('%7C', '|'))],
  ['the address of a player, rewritten by Chromium', (url) => /^https?:\/\/www\.youtube\.com\/embed\//.test(url)],
  ['the icon at the root, which no markup names', (url, all, page) => url === new URL('/favicon.ico', page.url).href],
];
const explanationOf = (url, all, page) => kExplained.find(([, fits]) => fits(url, all, page))?.[0];

const finders = { inventory: [], 'inventory, plain': [], 'classic links': [], 'wget -p': [], lxml: [] };
const rows = Object.fromEntries(Object.keys(finders).map((name) => [name, { found: 0, right: 0, asked: 0 }]));
const problems = { missing: [], explained: [], refreshes: [] };
let plain = 0;
const unasked = [];

function count(name, found, asked) {
  const row = rows[name];
  row.found += found.size;
  row.asked += asked.size;
  for (const url of found) if (asked.has(url)) ++row.right;
}

const askedOf = new Map(pages.map(({ name }) => [name, new Set()]));
for (const scripting of [false, true]) {
  await askedFor(pages, scripting, (page, asked, refreshes) => {
    const ours = inventory(tool, page, scripting);
    for (const url of asked) {
      if (!/^(https?|ftp):/.test(url)) continue;
      askedOf.get(page.name).add(url);
      if (ours.load.has(url)) continue;
      const why = explanationOf(url, ours.all, page);
      problems[why ? 'explained' : 'missing'].push(`${page.name} (scripting ${scripting ? 'on' : 'off'}): ${url}${why ? `: ${why}` : ''}`);
    }
    for (const url of refreshes) problems.refreshes.push(`${page.name}: ${url}`);
    for (const url of ours.plain) {
      ++plain;
      if (!asked.has(url)) unasked.push(`${page.name} (scripting ${scripting ? 'on' : 'off'}): ${url}`);
    }
  });
}

const proxy = await startProxy(work);
for (const page of pages) {
  const asked = askedOf.get(page.name);
  const on = inventory(tool, page, true);
  const off = inventory(tool, page, false);
  count('inventory', new Set([...on.load, ...off.load]), asked);
  count('inventory, plain', new Set([...on.plain, ...off.plain]), asked);
  count('classic links', classic(tool, page), asked);
  count('wget -p', await wget(page, proxy, work), asked);
  count('lxml', lxml(page), asked);
}
proxy.stop();

const percent = (part, whole) => `${(100 * part / whole).toFixed(1)} %`;
const kLabels = {
  inventory: '`pagescan inventory`, kind `load`',
  'inventory, plain': '`pagescan inventory`, kind `load` without a flag',
  'classic links': '`pagescan links`, the classic records',
  'wget -p': '`wget -p`',
  lxml: 'lxml `iterlinks`, without `a`, `area`, `form`',
};
const total = rows.inventory.asked;
const lines = [`${pages.length} real pages, ${total} URLs that headless Chromium asks for because of their markup.`, '',
  '| finder | of these it has | of what it finds Chromium asks for |', '|---|---:|---:|'];
for (const [name, { found, right }] of Object.entries(rows)) {
  lines.push(`| ${kLabels[name]} | ${percent(right, total)} | ${percent(right, found)} |`);
}
fs.writeFileSync(path.join(work, 'recall.md'), lines.join('\n') + '\n');
for (const [name, list] of Object.entries({ ...problems, 'load without a flag, not asked for': unasked })) {
  fs.writeFileSync(path.join(work, `${name.replaceAll(/[ ,]+/g, '-')}.txt`), list.map((line) => line + '\n').join(''));
}
console.log(lines.join('\n'));
console.log(`${problems.missing.length} missing, ${problems.explained.length} spelled otherwise, ` +
  `${problems.refreshes.length} refreshes; of ${plain} loads without a flag ${unasked.length} not asked for`);
problems.missing.slice(0, 40).forEach((line) => console.log(`missing: ${line}`));
process.exit(problems.missing.length === 0 && total > 0 && unasked.length <= plain / 100 ? 0 : 1);
