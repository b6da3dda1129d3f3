// Saved pages in headless Chromium, the server stopped: no request fails, the pixels are those of
// the page online. Beside them what wget and wget2 make of the same site.
//
//   node save.mjs PAGESCAN SERVE_SITE FOLDER
//
// Writes FOLDER/save.md and pictures of what it saw, and ends with an error when a copy of ours is not as it has to be.
import { spawn, spawnSync } from 'node:child_process';
import { existsSync, mkdirSync, readdirSync, readFileSync, rmSync, statSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

const [pagescan, serveSite, folder] = process.argv.slice(2).map((path) => resolve(path));
const kPages = ['page.html', 'many.html', 'koi8.html', 'utf8.html', 'moved'];
const kSettle = 300;  // milliseconds without a request, after which a page is done
const kTools = {
  'pagescan save': (url, into) => [pagescan, ['save', '--allow-private', url, into]],
  'pagescan save --single-file': (url, into) =>
    [pagescan, ['save', '--allow-private', '--single-file', url, into]],
  'wget -p -k': (url, into) => ['wget', ['-q', '-p', '-k', '-E', '-P', into, url]],
  'wget2 -p -k': (url, into) => ['wget2', ['-q', '-p', '-k', '-E', '-P', into, url]],
};

function startSite() {
  const site = join(folder, 'site');
  mkdirSync(site);
  const server = spawn('python3', [serveSite, site], { stdio: ['pipe', 'pipe', 'inherit'] });
  return new Promise((found) => server.stdout.once('data', (line) => found({
    root: `http://127.0.0.1:${String(line).split(' ')[0]}/`,
    asked: () => requestsOf(readFileSync(join(site, 'access.log'), 'latin1')),
    bytes: (name) => readFileSync(join(site, 'site', name)),
    stop: () => new Promise((done) => { server.once('exit', done); server.stdin.end(); }),
  })));
}

function requestsOf(log) {
  return log.split('\n').flatMap((line) => /"GET (\S+)/.exec(line)?.[1] ?? []);
}

// Opens a URL: what it asks for, what of that fails, and what it looks like.
async function open(browser, url) {
  const tab = await browser.newPage({ viewport: { width: 800, height: 600 } });
  const asked = new Set();
  const failed = new Set();
  let last = Date.now();
  tab.on('request', (request) => { last = Date.now(); asked.add(request.url().split('#', 1)[0]); });
  tab.on('requestfailed', (request) => failed.add(request.url()));
  await tab.goto(url, { waitUntil: 'load' });
  while (Date.now() - last < kSettle) await tab.waitForTimeout(50);
  const pixels = await tab.screenshot({ fullPage: true });
  await tab.close();
  return { asked, failed, pixels };
}

// The page among what a tool wrote: index.html, or the file of the page's own name.
function pageIn(into, name) {
  const files = existsSync(into) ? readdirSync(into, { recursive: true }).map((file) => join(into, file)) : [];
  const named = (end) => files.find((file) => file.endsWith(end) && statSync(file).isFile());
  return named(`/${name}`) ?? named(`/${name}.html`) ?? named('/index.html') ?? named('/page.html');
}

// The bytes of a page that spell no URL.
function frameOf(file) {
  const bytes = readFileSync(file, 'latin1');
  const { stdout } = spawnSync(pagescan, ['inventory', '--format', 'jsonl', file], { encoding: 'utf8', maxBuffer: 1 << 28 });
  let frame = '';
  let end = 0;
  for (const line of stdout.split('\n').filter(Boolean)) {
    const reference = JSON.parse(line);
    if (reference.start < end) continue;
    frame += bytes.slice(end, reference.start);
    end = reference.end;
  }
  return frame + bytes.slice(end);
}

// Bytes that have to be put in, taken out or replaced to make one text of the other.
function distance(a, b) {
  let row = Array.from({ length: b.length + 1 }, (_, i) => i);
  for (let i = 1; i <= a.length; ++i) {
    const next = [i];
    for (let j = 1; j <= b.length; ++j) {
      next[j] = Math.min(row[j] + 1, next[j - 1] + 1, row[j - 1] + (a[i - 1] === b[j - 1] ? 0 : 1));
    }
    row = next;
  }
  return row[b.length];
}

// What each tool asks for beside what the browser asks for, and where its copy is.
function saveAll(site, name, online, results) {
  const needed = [...online.asked].filter((url) => url.startsWith(site.root))
    .map((url) => url.slice(site.root.length - 1)).filter((path) => path !== '/favicon.ico');
  for (const [tool, command] of Object.entries(kTools)) {
    const into = join(folder, `${tool.replaceAll(/\W+/g, '-')}-${name}`);
    const before = site.asked().length;
    const [program, words] = command(site.root + name, into);
    spawnSync(program, words);
    const asked = new Set(site.asked().slice(before));
    const copy = pageIn(into, name);
    results.push({ tool, name, into, copy, missed: needed.filter((path) => !asked.has(path)) });
  }
}

async function look(browser, result, online, original) {
  const { failed, asked, pixels } = await open(browser, pathToFileURL(result.copy).href);
  const outside = [...asked].filter((url) => !/^(file|data|about|blob):/.test(url));
  result.failed = [...new Set([...failed, ...outside])];
  result.isSame = pixels.equals(online.pixels);
  writeFileSync(`${result.into}.png`, pixels);
  result.changed = original ? distance(frameOf(original), frameOf(result.copy)) : 0;
}

function table(results) {
  const rows = Object.keys(kTools).map((tool) => {
    const own = results.filter((result) => result.tool === tool);
    const sum = (count) => own.reduce((total, result) => total + count(result), 0);
    return `| \`${tool}\` | ${sum((r) => r.missed.length)} | ${sum((r) => r.changed)} | ` +
      `${sum((r) => r.failed.length)} | ${sum((r) => (r.isSame ? 1 : 0))} of ${own.length} |`;
  });
  return ['| | Requests missed | Bytes changed that spell no URL | Requests that fail offline | Pixels as online |',
    '|---|---|---|---|---|', ...rows].join('\n') + '\n';
}

rmSync(folder, { recursive: true, force: true });
mkdirSync(folder, { recursive: true });
const browser = await chromium.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  args: ['--no-sandbox', '--disable-gpu', '--no-first-run', '--disable-background-networking',
    '--disable-component-update', '--disable-lcd-text', '--font-render-hinting=none',
    '--disable-site-isolation-trials'],  // frames of files are drawn as those of a site are
});
const site = await startSite();
const results = [];
const online = {};
for (const name of kPages) {
  online[name] = await open(browser, site.root + name);
  writeFileSync(join(folder, `online-${name}.png`), online[name].pixels);
  saveAll(site, name, online[name], results);
}
await site.stop();
for (const result of results) {
  const original = join(folder, 'site', 'site', result.name);
  await look(browser, result, online[result.name], existsSync(original) && original);
}
await browser.close();
writeFileSync(join(folder, 'save.md'), table(results));
console.log(table(results));
for (const { tool, name, missed, failed, isSame } of results) {
  if (missed.length + failed.length || !isSame) console.log(tool, name, { missed, failed, isSame });
}
const faults = results.filter(({ tool, missed, failed, isSame }) =>
  tool.startsWith('pagescan') && (missed.length || failed.length || !isSame));
console.log(`${faults.length} of ${results.filter(({ tool }) => tool.startsWith('pagescan')).length} copies of ours differ from the page online`);
process.exit(faults.length ? 1 : 0);
