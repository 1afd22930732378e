"""Checks the links of Markdown files: check_links.py FILE.md...

A relative link must lead to an existing file or directory, and its anchor to a heading of that file, named as code hosts
name headings. Links to other sites are not fetched, and only their syntax is checked.
"""

import html.parser
import pathlib
import sys
import urllib.parse

import markdown_it
import mdit_py_plugins.anchors

PARSER = markdown_it.MarkdownIt("commonmark").enable("table").use(
    mdit_py_plugins.anchors.anchors_plugin, max_level=6)


class Page(html.parser.HTMLParser):
    """The links and the anchors of a Markdown file."""

    def __init__(self, path):
        super().__init__()
        self.links = []
        self.anchors = set()
        self.feed(PARSER.render(path.read_text(encoding="utf-8")))

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("href", "src"):
                self.links.append(value)
            elif name in ("id", "name"):
                self.anchors.add(value)


def complaint(page, path, link):
    """What is wrong with a link of a page, or None."""
    parts = urllib.parse.urlsplit(link)
    if parts.scheme in ("http", "https"):
        return None if parts.hostname and "." in parts.hostname else "no host's name"
    if parts.scheme:
        return f"unknown scheme '{parts.scheme}'"
    target = path.parent / urllib.parse.unquote(parts.path) if parts.path else path
    if not target.exists():
        return "no such file"
    if not parts.fragment:
        return None
    if target.suffix != ".md":
        return "an anchor in what is no Markdown"
    anchors = page.anchors if target == path else Page(target).anchors
    return None if urllib.parse.unquote(parts.fragment) in anchors else "no such heading"


def main(files):
    checked = 0
    broken = []
    for path in map(pathlib.Path, files):
        page = Page(path)
        checked += len(page.links)
        for link in page.links:
            wrong = complaint(page, path, link)
            if wrong:
                broken.append(f"{path}: {link}: {wrong}")
    print("\n".join(broken), file=sys.stderr, end="\n" if broken else "")
    print(f"links: {checked} in {len(files)} files, {len(broken)} broken")
    return 1 if broken or not checked else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
