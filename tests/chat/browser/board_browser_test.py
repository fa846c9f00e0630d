#!/usr/bin/env python3
"""The chat board in a real browser: hostile mail must reach the page as text and nothing else.

Usage: board_browser_test.py CHAT_BOARD_CORPUS [WORK_DIR]

Runs the generator (it writes one board per hostile message through the real ChatControl and a
manifest of what each holds), loads every board in headless chromium and reads back the DOM the
browser built. For every board: only the board's own elements and attributes exist, the
pictures' attributes hold exactly the sender's values, the text the page shows is the message,
the links are the words the link rule makes links of, with a safe scheme, and the title is the
one written (every payload tries to change it and to add an element). A page with a script of
its own is loaded first, to show that scripts do run here and would be seen.
"""
import concurrent.futures
import html.parser
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

CHROMIUM_FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                  "--disable-background-networking", "--disable-component-update",
                  "--disable-sync"]
VOID = {"img", "br", "meta", "link", "input", "hr", "base", "area", "col", "embed", "source",
        "track", "wbr", "param"}
BOARD_ELEMENTS = {"html", "head", "meta", "title", "body", "table", "tbody", "tr", "td", "img",
                  "b", "i", "u", "font", "br", "a"}
LINK_SCHEMES = ("mailto:", "http://", "https://", "ftp://", "http:\\", "ftp:\\")
WEB_STARTS = ("http://", "ftp://", "http:\\", "ftp:\\")
SEPARATORS = re.compile(r"([ \t\r\n])")


class Node:
    def __init__(self, tag, attrs):
        self.tag, self.attrs, self.children = tag, attrs, []

    def attr_names(self):
        return sorted(name for name, _ in self.attrs)

    def attr(self, name):
        return dict(self.attrs).get(name)

    def elements(self):
        for child in self.children:
            if isinstance(child, Node):
                yield child
                yield from child.elements()


class DomReader(html.parser.HTMLParser):
    """The dumped DOM as a tree of Node and str (text, entities decoded)."""

    def __init__(self):
        super().__init__(convert_charrefs=True)
        self.root = Node("#document", [])
        self.stack = [self.root]

    def handle_starttag(self, tag, attrs):
        node = Node(tag, attrs)
        self.stack[-1].children.append(node)
        if tag not in VOID:
            self.stack.append(node)

    def handle_endtag(self, tag):
        for i in range(len(self.stack) - 1, 0, -1):
            if self.stack[i].tag == tag:
                del self.stack[i:]
                return

    def handle_data(self, data):
        children = self.stack[-1].children
        if children and isinstance(children[-1], str):
            children[-1] += data
        else:
            children.append(data)

    def handle_comment(self, data):
        self.stack[-1].children.append(Node("#comment", []))


def page_safe(s):
    """What a page can hold of `s`: NUL and surrogates become U+FFFD, as the board writes them."""
    return "".join("\ufffd" if ch == "\0" or 0xD800 <= ord(ch) <= 0xDFFF else ch for ch in s)


def shown(s):
    """`s` as the page shows it: blanks for no-break spaces and tabs, one kind of line break."""
    return (s.replace("\t", " " * 5).replace("\r\n", "\n").replace("\r", "\n")
            .replace("\xa0", " "))


def attribute(s):
    return page_safe(s).replace("\r\n", "\n").replace("\r", "\n")


def text_of(nodes):
    return "".join(n if isinstance(n, str) else text_of(n.children) for n in nodes)


def expected_links(text):
    links = []
    for word in SEPARATORS.split(page_safe(text)):
        if "@" in word:
            links.append(("mailto:" + word, word))
        elif word.startswith("www."):
            links.append(("http://" + word, word))
        elif word.startswith(WEB_STARTS):
            links.append((word, word))
    return links


def html_color(c):
    return "%02X%02X%02X" % (c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF)


def dump_dom(chromium, page):
    profile = tempfile.mkdtemp(prefix="corvina-chromium-")
    try:
        run = subprocess.run([chromium, *CHROMIUM_FLAGS, "--user-data-dir=" + profile,
                              "--dump-dom", Path(page).resolve().as_uri()],
                             capture_output=True, timeout=120)
    finally:
        shutil.rmtree(profile, ignore_errors=True)
    if run.returncode != 0 or not run.stdout:
        raise RuntimeError("chromium failed on %s: %s" % (page, run.stderr.decode()[-400:]))
    reader = DomReader()
    reader.feed(run.stdout.decode("utf-8"))
    reader.close()
    return reader.root


class Checker:
    def __init__(self, name):
        self.name, self.failures = name, []

    def expect(self, ok, what):
        if not ok:
            self.failures.append("%s: %s" % (self.name, what))
        return ok


def check_document(c, root, title, rtl):
    """The whole page: the board's elements only, each with the attributes the board writes."""
    for el in root.elements():
        c.expect(el.tag in BOARD_ELEMENTS, "element <%s> %r" % (el.tag, el.attrs))
        if el.tag == "a":
            c.expect(el.attr_names() == ["href", "target"] and el.attr("target") == "_blank",
                     "link attributes %r" % el.attrs)
            c.expect((el.attr("href") or "").startswith(LINK_SCHEMES), "link %r" % el.attr("href"))
        elif el.tag == "img":
            c.expect(el.attr_names() in (["alt", "corvinatag1", "height", "id", "src", "width"],
                                         ["alt", "corvinatag2", "height", "id", "src", "width"]),
                     "picture attributes %r" % el.attrs)
            c.expect((el.attr("src") or "").startswith("res://"), "picture %r" % el.attr("src"))
        elif el.tag == "font":
            c.expect(el.attr_names() == ["color"], "font %r" % el.attrs)
        elif el.tag == "td":
            c.expect(el.attr_names() in ([], ["valign"]), "cell %r" % el.attrs)
        elif el.tag == "html":
            c.expect(el.attrs == ([("dir", "RTL")] if rtl else []), "html %r" % el.attrs)
        elif el.tag not in ("meta", "body"):
            c.expect(el.attrs == [], "<%s> %r" % (el.tag, el.attrs))
    titles = [el for el in root.elements() if el.tag == "title"]
    c.expect(len(titles) == 1 and text_of(titles[0].children) == title,
             "title %r: a script ran" % [text_of(t.children) for t in titles])


def check_header(c, table, block, addin):
    known = block["email"] != ""
    who = attribute(block["email"]) if known else "Unknown User"
    name = attribute(block["nick"]) if known else "Unknown User"
    rows = [n for n in table.children]
    if not c.expect(len(rows) == 1 and rows[0].tag == "tbody" and len(rows[0].children) == 1,
                    "table shape"):
        return
    cells = rows[0].children[0].children
    want_cells = 3 if block["attachments"] > 0 else 2
    if not c.expect(len(cells) == want_cells and all(isinstance(n, Node) for n in cells),
                    "cells %r" % cells):
        return
    pictures = [("a%s.ico" % (attribute(block["icon"]) if known else "0"), who, name,
                 "corvinatag1", who)]
    if block["attachments"] > 0:
        pictures.append(("ATTACH.ICO", attribute(block["entry_id"]),
                         "%d Attachments From %s" % (block["attachments"], name), "corvinatag2", "1"))
    for cell, (resource, pid, alt, tag, tag_value) in zip(cells, pictures):
        img = cell.children[0] if len(cell.children) == 1 else None
        if not c.expect(isinstance(img, Node) and img.tag == "img", "picture cell %r" % cell.children):
            continue
        want = {"width": "32", "height": "32", "src": "res://%s\\Vireo.dll/%s" % (addin, resource),
                "id": pid, "alt": alt, tag: tag_value}
        c.expect(dict(img.attrs) == want, "picture %r, want %r" % (img.attrs, want))
    caption = cells[-1]
    c.expect(caption.attrs == [("valign", "bottom")], "caption cell %r" % caption.attrs)
    c.expect(all(isinstance(n, str) or n.tag == "br" for n in caption.children), "caption markup")
    want = ("You have said" if block["own"] else "%s Said :" % page_safe(block["nick"]) if known
            else "Unknown User Said :")
    c.expect(shown(text_of(caption.children)) == shown(want),
             "caption %r, want %r" % (text_of(caption.children), want))


def check_message(c, nodes, block):
    for tag, on in (("b", block["bold"]), ("i", block["italic"]), ("u", block["underline"]),
                    ("font", html_color(block["color"]) != "000000")):
        if not on:
            continue
        if not c.expect(len(nodes) == 1 and isinstance(nodes[0], Node) and nodes[0].tag == tag,
                        "<%s> around the message: %r" % (tag, nodes[:3])):
            return
        if tag == "font":
            c.expect(nodes[0].attrs == [("color", html_color(block["color"]))], "colour %r" % nodes[0].attrs)
        nodes = nodes[0].children
    links = []
    for node in nodes:
        if isinstance(node, str) or node.tag == "br":
            continue
        if not c.expect(node.tag == "a" and all(isinstance(n, str) for n in node.children),
                        "markup in the message: <%s>" % node.tag):
            continue
        links.append((node.attr("href"), text_of(node.children)))
    c.expect(shown(text_of(nodes)) == shown(page_safe(block["text"])),
             "text shown %r, want %r" % (shown(text_of(nodes))[:200], shown(page_safe(block["text"]))[:200]))
    c.expect(links == expected_links(block["text"]),
             "links %r, want %r" % (links[:5], expected_links(block["text"])[:5]))


def check_single_block(c, root, board):
    block = board["blocks"][0]
    body = [el for el in root.elements() if el.tag == "body"]
    if not c.expect(len(body) == 1, "one body"):
        return
    nodes = list(body[0].children)
    # The head's last line ends in a line break, which the body keeps as its first text.
    if nodes and isinstance(nodes[0], str) and nodes[0].startswith("\n"):
        nodes[0] = nodes[0][1:]
    nodes = [n for n in nodes if n != ""]
    if block["new_line"]:
        if not c.expect(len(nodes) >= 2 and nodes[-1] == "\n" and isinstance(nodes[-2], Node)
                        and nodes[-2].tag == "br", "line break after the message"):
            return
        nodes = nodes[:-2]
    if block["header"]:
        if not c.expect(nodes and isinstance(nodes[0], Node) and nodes[0].tag == "table",
                        "header table first"):
            return
        check_header(c, nodes[0], block, board["addin"])
        nodes = nodes[1:]
    check_message(c, nodes, block)


def check_board(chromium, board, title):
    c = Checker(board["name"])
    try:
        root = dump_dom(chromium, board["file"])
    except Exception as e:  # a board chromium cannot load is a failure of that board
        c.expect(False, str(e))
        return c.failures
    check_document(c, root, title, board["rtl"])
    if len(board["blocks"]) == 1:
        check_single_block(c, root, board)
    else:
        text = text_of(root.children)
        for block in board["blocks"]:
            c.expect(shown(page_safe(block["text"])) in shown(text), "message missing")
    return c.failures


def scripts_run_here(chromium, work):
    """A page whose script and picture handler do run: without this the title check proves nothing."""
    page = work / "runs_scripts.html"
    page.write_text('<html><head><title>kept</title></head><body>'
                    '<img src="res://C:\\x\\Vireo.dll/a1.ico" onerror="document.title=\'PWNED\'">'
                    "<script>document.body.appendChild(document.createElement('marquee'))</script>"
                    "</body></html>")
    root = dump_dom(chromium, page)
    titles = [text_of(el.children) for el in root.elements() if el.tag == "title"]
    added = [el for el in root.elements() if el.tag == "marquee"]
    return titles == ["PWNED"] and len(added) == 1


def main():
    if len(sys.argv) not in (2, 3):
        print(__doc__)
        return 2
    chromium = shutil.which("chromium") or shutil.which("chromium-browser")
    if not chromium:
        print("FAIL: chromium is not installed (scripts/install-deps.sh installs it)")
        return 1
    work = Path(sys.argv[2]) if len(sys.argv) == 3 else Path(tempfile.mkdtemp(prefix="corvina-board-"))
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    subprocess.run([sys.argv[1], str(work)], check=True)
    manifest = json.loads((work / "manifest.json").read_text(encoding="utf-8"))
    if not scripts_run_here(chromium, work):
        print("FAIL: the page with a script of its own did not run it; nothing could be seen")
        return 1
    boards = manifest["boards"]
    workers = max(1, min(4, (os.cpu_count() or 1)))
    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        results = list(pool.map(lambda b: check_board(chromium, b, manifest["title"]), boards))
    failures = [f for r in results for f in r]
    for f in failures:
        print("FAIL:", f)
    print("%d boards in chromium, %d failures" % (len(boards), len(failures)))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
