// What headless Chromium asks for because of a page's markup: a set of URLs for each page.
//
// Each page is loaded at its own URL. Every request is intercepted and answered at once, with nothing
// in it: nothing leaves the machine. With scripting on, scripts from files are empty and those in the
// page are kept from running by a policy, so that what is asked for comes from markup alone.
import { chromium } from 'playwright-core';

const kPolicy = 'script-src http: https: data: blob:';  // files may run, inline scripts may not
const kImage = Buffer.from('R0lGODlhAQABAAAAACwAAAAAAQABAAA=', 'base64');
const kAnswers = {
  image: { contentType: 'image/gif', body: kImage },
  script: { contentType: 'text/javascript', body: '' },
  stylesheet: { contentType: 'text/css', body: '' },
  document: { contentType: 'text/html', body: '' },
  font: { contentType: 'font/woff2', body: '' },
  manifest: { contentType: 'application/json', body: '{}' },
};
const kSettle = 400;  // milliseconds without a request, after which a page is done
const kLongest = 15000;

export function withoutFragment(url) {
  return url.split('#', 1)[0];
}

function answer(page, request, scripting) {
  if (request.isNavigationRequest() && request.frame().parentFrame() === null) {
    const headers = scripting ? { 'content-security-policy': kPolicy } : {};
    return { status: 200, contentType: 'text/html', headers, body: page.bytes };
  }
  const { contentType, body } = kAnswers[request.resourceType()] ?? { contentType: 'text/plain', body: '' };
  return { status: 200, contentType, body, headers: { 'access-control-allow-origin': '*' } };
}

// Loads one page and returns {asked, refreshes}: URLs without fragments, but the page's own.
async function load(context, page, scripting) {
  const tab = await context.newPage();
  const asked = new Set();
  const refreshes = new Set();
  let last = Date.now();
  let isLoaded = false;
  await tab.route('**/*', (route) => {
    const request = route.request();
    last = Date.now();
    const isMain = request.isNavigationRequest() && request.frame() === tab.mainFrame();
    if (isMain && isLoaded) {
      refreshes.add(withoutFragment(request.url()));
      return route.abort().catch(() => {});
    }
    if (isMain) isLoaded = true;
    else asked.add(withoutFragment(request.url()));
    return route.fulfill(answer(page, request, scripting)).catch(() => {});
  });
  const start = Date.now();
  await tab.goto(page.url, { waitUntil: 'load', timeout: kLongest }).catch(() => {});
  while (Date.now() - last < kSettle && Date.now() - start < kLongest) await tab.waitForTimeout(50);
  await tab.close();
  return { asked, refreshes };
}

// Calls `each(page, asked, refreshes)` for every page, four pages at a time.
export async function askedFor(pages, scripting, each) {
  const browser = await chromium.launch({
    executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
    args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run', '--disable-sync',
      '--disable-background-networking', '--disable-component-update', '--disable-web-security',
      '--allow-running-insecure-content', '--disable-features=AutoupgradeMixedContent,HttpsUpgrades',
      '--host-resolver-rules=MAP * ~NOTFOUND'],
  });
  const waiting = [...pages];
  const worker = async () => {
    for (let page = waiting.shift(); page; page = waiting.shift()) {
      const context = await browser.newContext({ javaScriptEnabled: scripting, serviceWorkers: 'block' });
      const { asked, refreshes } = await load(context, page, scripting);
      each(page, asked, refreshes);
      await context.close();
    }
  };
  await Promise.all([worker(), worker(), worker(), worker()]);
  await browser.close();
}
