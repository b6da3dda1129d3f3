#!/usr/bin/env python3
"""Serves the site of the tests of `pagescan save` by nginx: serve_site.py FOLDER.

Writes the site and the server's configuration into FOLDER, starts nginx on a free port of the
loopback, prints "PORT CUT_PORT" once it answers, and ends when standard input does. Behind CUT_PORT
every answer is cut in its middle. The log of requests is FOLDER/access.log.
"""

import gzip
import os
import random
import socket
import struct
import subprocess
import sys
import threading
import time
import zlib
from pathlib import Path

BROTLI_MODULE = "/usr/lib/nginx/modules/ngx_http_brotli_filter_module.so"
IMAGES = 300

CONFIGURATION = """
{modules}
worker_processes 1;
pid {folder}/nginx.pid;
error_log {folder}/error.log;
events {{ worker_connections 256; }}
http {{
  access_log {folder}/access.log combined;
  client_body_temp_path {folder}/t1; proxy_temp_path {folder}/t2; fastcgi_temp_path {folder}/t3;
  uwsgi_temp_path {folder}/t4; scgi_temp_path {folder}/t5;
  types {{
    text/html html; text/css css; text/javascript js; image/png png; image/svg+xml svg;
    font/woff2 woff2;
  }}
  default_type application/octet-stream;
  server {{
    listen 127.0.0.1:{port};
    root {folder}/site;
    {brotli}
    location = /moved {{ return 302 /final/page.html; }}
    location = /moved.png {{ return 301 /redirected/there.png; }}
    location = /redirected/there.png {{ return 307 /img/one.png; }}
    location = /loop.png {{ return 302 /loop2.png; }}
    location = /loop2.png {{ return 302 /loop.png; }}
    location = /to-file.png {{ return 302 file:///etc/passwd; }}
    location = /endless.png {{ return 302 /endless.png; }}
    location = /gone.png {{ return 404 "gone"; }}
    location = /broken.png {{ return 500 "broken"; }}
    location = /slow.png {{ limit_rate 500; }}
    location = /page.html {{ add_header Set-Cookie "seen=1; Path=/"; }}
    location = /cookie.png {{ if ($http_cookie !~ "seen=1") {{ return 403; }} try_files /img/one.png =404; }}
    location = /secret.png {{ if ($http_x_secret != "tell") {{ return 403; }} try_files /img/one.png =404; }}
    location = /hostile {{
      add_header Content-Disposition 'attachment; filename="../../../../hostile.sh"';
      types {{ }} default_type image/png; try_files /img/one.png =404;
    }}
    location = /koi8.html {{ types {{ }} default_type "text/html; charset=koi8-r"; }}
    location = /utf8.html {{ types {{ }} default_type "text/html; charset=utf-8"; }}
    location = /utf8.js {{ types {{ }} default_type "text/javascript; charset=utf-8"; }}
    location = /latin.css {{ types {{ }} default_type "text/css; charset=iso-8859-2"; }}
    location /packed/ {{ gzip_static on; }}
    location /bomb/ {{ gzip_static always; }}
  }}
}}
"""

PAGE = """<!doctype html>
<html><head><meta charset="utf-8"><title>Everything</title>
<meta http-equiv="Content-Security-Policy" content="default-src 'self'; img-src 'self' data:; style-src 'self' 'unsafe-inline'">
<base href="/base/">
<link rel=stylesheet href="../css/a.css" integrity="{integrity}" crossorigin>
<link rel="canonical" href="/page.html">
<script src="../js/app.js" crossorigin="anonymous" integrity="{script_integrity}"></script>
<style>body{{margin:0}} #style{{background:url(../img/bg.png);width:20px;height:20px}}</style>
</head><body>
<p id=style></p><p class=a>a</p><p class=b>b</p><p class=c>c</p>
<p style="background:url('../img/at&#116;r.png');width:20px;height:20px"></p>
<img src="../moved.png" width=10 height=10>
<img srcset="../img/small.png 1x, ../img/large.png 2x" alt="set" width=10 height=10>
<picture><source srcset="../img/wide.png" media="(min-width:100px)"><img src=../img/narrow.png width=10></picture>
<img src="../img/A.png" width=10><img src="../img/a.png" width=10>
<img src="../img/con.png?x=1" width=10><img src="../img/con.png?x=2" width=10>
<img src="../hostile" width=10><img src="../cookie.png" width=10>
<img src="/packed/gzip.png" width=10><img src="/brotli.png" width=10>
<iframe src="../frame/inner.html" width=80 height=40></iframe>
<iframe srcdoc="<img src='../img/srcdoc.png' width=10>" width=40 height=40></iframe>
<iframe src="../koi8.html" width=80 height=40></iframe>
<iframe src="../utf8.html" width=80 height=40></iframe>
<noscript><img src="../img/noscript.png"></noscript>
<a href="#top">top</a> <a href="/page.html#style">self</a> <a href="/frame/inner.html">frame</a>
<a href="/other.html">other</a> <a href="//example.com/x">elsewhere</a>
<form action="/send"></form><img src="data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAA=">
</body></html>
"""

SHEETS = {
    "css/a.css": '@import "sub/b.css";\n.a{background:url(../img/css-a.png);height:20px}',
    "css/sub/b.css": '@import url("../c.css");\n.b{background:url("../../img/css-b.png");height:20px}',
    "css/c.css": "@import 'a.css';\n@import url(../latin.css);\n"
                 ".c{background:url(../img/css-c.png);height:20px;color:green}",
}


def png(seed):
    """A picture of 8 x 8 points in a colour of its own."""
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))
    colour = bytes((seed * 37 % 256, seed * 91 % 256, seed * 151 % 256))
    rows = (b"\0" + colour * 8) * 8
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 8, 8, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def integrity(data):
    import base64
    import hashlib
    return "sha256-" + base64.b64encode(hashlib.sha256(data).digest()).decode()


def write(site, name, data):
    path = site / name
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data if isinstance(data, bytes) else data.encode())


def write_site(site, cut_port):
    names = ["one", "bg", "attr", "small", "large", "wide", "narrow", "A", "a", "con", "srcdoc",
             "noscript", "css-a", "css-b", "css-c", "latin", "frame", "koi", "utf"]
    for seed, name in enumerate(names):
        write(site, f"img/{name}.png", png(seed + 1))
    # Candidates show one thing; Chromium takes the better one where that is a data: URL.
    write(site, "img/large.png", png(names.index("small") + 1))
    for name, text in SHEETS.items():
        write(site, name, text)
    script = b"document.documentElement.className = 'scripted';\n"
    write(site, "js/app.js", script)
    write(site, "page.html", PAGE.format(integrity=integrity(SHEETS["css/a.css"].encode()),
                                         script_integrity=integrity(script)))
    write(site, "latin.css", b".a::after{content:'\xb1';background:url(img/latin.png)}")
    write(site, "secret.html", "<!doctype html><img src=secret.png>")
    write(site, "frame/inner.html", "<!doctype html><link rel=stylesheet href=../css/c.css>"
          "<img src=../img/frame.png width=10><iframe src=inner.html></iframe>"
          "<a href=../page.html target=_top>up</a>")
    write(site, "koi8.html", "<!doctype html><p>\u043f\u0440\u0438\u0432\u0435\u0442"
          "<img src=img/koi.png width=10>".encode("koi8-r"))
    write(site, "utf8.html", '<!doctype html><meta charset="iso-8859-1"><p>\u00fcber\u20ac'
          '<script src="utf8.js"></script><img src=img/utf.png width=10>')
    write(site, "utf8.js", "document.body.title = '\u00fc';")
    write(site, "final/page.html", "<!doctype html><img src=../img/one.png><img src=img.png>")
    write(site, "final/img.png", png(77))
    write(site, "slow.png", png(50) + random.Random(1).randbytes(20000))
    write(site, "errors.html", "<!doctype html>\n" + "".join(
        f"<img src={name}>\n" for name in
        ["gone.png", "broken.png", "loop.png", "endless.png", "to-file.png", "slow.png",
         f"http://127.0.0.1:{cut_port}/cut.png", "ftp://127.0.0.1/x.png", "bomb/zeros.png",
         "img/one.png"]))
    write(site, "many.html", "<!doctype html>" + "".join(
        f"<img src=many/{i}.png width=8 height=8>" for i in range(IMAGES)))
    for i in range(IMAGES):
        write(site, f"many/{i}.png", png(i))
    write(site, "packed/gzip.png", png(60))
    write(site, "packed/gzip.png.gz", gzip.compress(png(60)))
    write(site, "brotli.png", png(61))
    write(site, "bomb/zeros.png.gz", gzip.compress(b"\0" * 3_000_000))


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


def serve_cut(listener):
    while True:
        client, _ = listener.accept()
        client.recv(4096)
        client.sendall(b"HTTP/1.1 200 OK\r\nContent-Type: image/png\r\nContent-Length: 1000\r\n\r\nhalf")
        client.close()


def wait_for(port, server):
    for _ in range(200):
        if server.poll() is not None:
            sys.exit("nginx ended")
        with socket.socket() as probe:
            if probe.connect_ex(("127.0.0.1", port)) == 0:
                return
        time.sleep(0.02)
    sys.exit("nginx does not answer")


def main():
    folder = Path(sys.argv[1]).resolve()
    listener = socket.create_server(("127.0.0.1", 0))
    threading.Thread(target=serve_cut, args=(listener,), daemon=True).start()
    port, cut_port = free_port(), listener.getsockname()[1]
    write_site(folder / "site", cut_port)
    os.chmod(folder, 0o755)
    has_brotli = os.path.exists(BROTLI_MODULE)
    user = "user root;\n" if os.geteuid() == 0 else ""
    (folder / "nginx.conf").write_text(CONFIGURATION.format(
        folder=folder, port=port,
        modules=user + (f"load_module {BROTLI_MODULE};" if has_brotli else ""),
        brotli="brotli on; brotli_min_length 1; brotli_types *;" if has_brotli else ""))
    server = subprocess.Popen(["nginx", "-p", str(folder), "-c", str(folder / "nginx.conf"),
                               "-e", str(folder / "error.log"), "-g", "daemon off;"],
                              env={**os.environ, "PATH": os.environ["PATH"] + ":/usr/sbin"})
    wait_for(port, server)
    print(port, cut_port, flush=True)
    sys.stdin.read()
    server.terminate()
    server.wait()


if __name__ == "__main__":
    main()
