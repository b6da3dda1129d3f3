// What finders of links say that a page loads: sets of URLs without fragments.
import { execFileSync, spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import https from 'node:https';
import path from 'node:path';
import { withoutFragment } from './browser.mjs';

const kOptions = { encoding: 'utf8', maxBuffer: 2 ** 30 };
const isFetched = (url) => /^(https?|ftp):/i.test(url);
const asSet = (urls) => new Set(urls.filter((url) => url && isFetched(url)).map(withoutFragment));

// The references of kind load, those of them without a flag, and all places whatever their kind.
export function inventory(tool, page, scripting) {
  const references = execFileSync(tool,
    ['inventory', '--format', 'jsonl', '--url', page.url, '--scripting', scripting ? 'on' : 'off', page.file],
    kOptions).split('\n').filter(Boolean).map((line) => JSON.parse(line));
  const loads = references.filter(({ kind }) => kind === 'load');
  return {
    all: asSet(references.map(({ url }) => url)),
    load: asSet(loads.map(({ url }) => url)),
    plain: asSet(loads.filter(({ flags }) => !flags).map(({ url }) => url)),
  };
}

export function classic(tool, page) {
  const lines = execFileSync(tool, ['links', '--format', 'jsonl', '--base', page.url, page.file], kOptions);
  return asSet(lines.split('\n').filter(Boolean).map((line) => JSON.parse(line).resolved));
}

const kLxml = `
import sys
import lxml.html
page = lxml.html.fromstring(open(sys.argv[1], 'rb').read())
page.make_links_absolute(sys.argv[2], handle_failures='ignore')
for element, attribute, link, at in page.iterlinks():
    if element.tag not in ('a', 'area', 'form', 'base'):
        print(link.replace('\\n', ' '))
`;

export function lxml(page) {
  try {
    return asSet(execFileSync('/usr/bin/python3', ['-c', kLxml, page.file, page.url], kOptions).split('\n'));
  } catch {
    return new Set();
  }
}

// A proxy on loopback that answers for every host: the page at its URL, nothing elsewhere.
export async function startProxy(work) {
  const [key, cert] = [path.join(work, 'key.pem'), path.join(work, 'cert.pem')];
  execFileSync('openssl', ['req', '-x509', '-newkey', 'rsa:2048', '-nodes', '-subj', '/CN=oracle',
    '-keyout', key, '-out', cert, '-days', '2'], { stdio: 'ignore' });
  const state = { page: null, asked: new Set() };
  const serve = (scheme) => (request, response) => {
    const url = /^http:/i.test(request.url) ? request.url : `${scheme}://${request.headers.host}${request.url}`;
    if (state.page && url === withoutFragment(state.page.url)) {
      response.writeHead(200, { 'content-type': 'text/html' });
      response.end(state.page.bytes);
      return;
    }
    state.asked.add(url);
    response.writeHead(200, { 'content-type': 'text/plain', 'content-length': 0 });
    response.end();
  };
  const inner = https.createServer({ key: fs.readFileSync(key), cert: fs.readFileSync(cert) }, serve('https'));
  const outer = http.createServer(serve('http'));
  outer.on('connect', (request, socket, head) => {
    socket.write('HTTP/1.1 200 OK\r\n\r\n');
    inner.emit('connection', Object.assign(socket, {}));
    if (head.length > 0) socket.unshift(head);
  });
  await new Promise((ready) => { outer.listen(0, '127.0.0.1', ready); });
  return { state, port: outer.address().port, stop: () => { outer.close(); inner.close(); } };
}

// What `wget -p` fetches with a page.
export async function wget(page, proxy, work) {
  proxy.state.page = page;
  proxy.state.asked = new Set();
  const folder = fs.mkdtempSync(path.join(work, 'wget-'));
  const at = `http://127.0.0.1:${proxy.port}`;
  const child = spawn('wget', ['-q', '-p', '-H', '-P', folder, '--tries=1', '--timeout=5', '--no-hsts', '--no-config',
    '--no-check-certificate', '-e', 'robots=off', '-e', 'use_proxy=yes', '-e', `http_proxy=${at}`,
    '-e', `https_proxy=${at}`, '-e', `ftp_proxy=${at}`, page.url], { stdio: 'ignore' });
  await new Promise((done) => { child.on('close', done); });
  fs.rmSync(folder, { recursive: true });
  return new Set([...proxy.state.asked].map((url) => url.replace(/^(https?:\/\/[^/]*?):(80|443)(?=\/)/, '$1')));
}
