#!/usr/bin/env python3
"""Checks that every link and image of the documents leads to something that is there: a file of the repository and, where
it names one, a heading of that document. What lies elsewhere is not asked for."""

import re
import subprocess
import sys
from pathlib import Path
from urllib.parse import unquote, urlsplit

from markdown_it import MarkdownIt

ROOT = Path(__file__).resolve().parent.parent
MARKDOWN = MarkdownIt("commonmark").enable("table")


def inline_tokens(document):
    """Each run of text with what it holds, and the line that it begins in."""
    for block in MARKDOWN.parse(document.read_text()):
        for token in block.children or []:
            yield block.map[0] + 1, token


def anchors(document):
    """The names of the headings, as the places that show the documents make them up."""
    seen = {}
    tokens = MARKDOWN.parse(document.read_text())
    for opening, heading in zip(tokens, tokens[1:]):
        if opening.type == "heading_open":
            text = "".join(token.content for token in heading.children)
            name = re.sub(r"[^\w\- ]", "", text.lower()).replace(" ", "-")
            count = seen[name] = seen.get(name, -1) + 1
            yield f"{name}-{count}" if count else name


def faults(document, tracked):
    in_link = False
    for line, token in inline_tokens(document):
        in_link = token.type != "link_close" and (in_link or token.type == "link_open")
        if in_link and token.type == "softbreak":
            yield f"{document.relative_to(ROOT)}:{line}: a link over two lines, which Doxygen takes for none"
        target = token.attrGet("href") or token.attrGet("src")
        if not target or urlsplit(target).scheme:
            continue
        path = unquote(urlsplit(target).path)
        found = (document.parent / path).resolve() if path else document
        fragment = urlsplit(target).fragment
        if found not in tracked:
            yield f"{document.relative_to(ROOT)}:{line}: nothing at {target}"
        elif fragment and (found.suffix != ".md" or fragment not in anchors(found)):
            yield f"{document.relative_to(ROOT)}:{line}: no heading at {target}"


def main():
    names = subprocess.run(
        ["git", "ls-files", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, check=True, capture_output=True, text=True,
    ).stdout.splitlines()
    files = {ROOT / name for name in names if (ROOT / name).exists()}
    tracked = files | {folder for name in files for folder in name.parents}
    documents = sorted(name for name in files if name.suffix == ".md")
    all_faults = [fault for document in documents for fault in faults(document, tracked)]
    print("\n".join(all_faults) if all_faults else f"the links of {len(documents)} documents lead somewhere")
    return 1 if all_faults else 0


if __name__ == "__main__":
    sys.exit(main())
