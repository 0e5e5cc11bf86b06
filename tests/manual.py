#!/usr/bin/env python3
"""The manual describes the program as it is. Prints each fault and fails when there is one."""

import os
import re
import sys
from html.parser import HTMLParser

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
MANUAL = os.path.join(ROOT, "docs", "manual")

# The pages that the program opens by their names.
OPENED = {"index.html", "options.html", "folderoptions.html", "displayoptions.html", "miscoptions.html",
          "quicktour.html", "support.html", "license.html"}
# Filters of the system's file dialogs, and what only puts other texts together.
NOT_DESCRIBED = {"allFilesFilter", "htmlFilesFilter", "dateAndTime", "printHeader", "zoomPercent"}
KEY_NAMES = {"VK_BACK": "Backspace", "VK_DELETE": "Del", "VK_INSERT": "Ins", "VK_OEM_4": "[", "VK_OEM_6": "]",
             "VK_LEFT": "Left", "VK_RIGHT": "Right", "VK_UP": "Up", "VK_DOWN": "Down", "VK_HOME": "Home",
             "VK_END": "End", "VK_PRIOR": "PgUp", "VK_NEXT": "PgDn"}


def read(*path):
    with open(os.path.join(ROOT, *path), encoding="utf-8") as file:
        return file.read()


def one_line(text):
    return " ".join(text.split())


class Page(HTMLParser):
    """What the checks look at: links, pictures, ids, and the texts of elements."""

    VOID = {"meta", "link", "img", "br"}

    def __init__(self, name):
        super().__init__()
        self.targets, self.ids, self.texts, self.rows, self.open, self.faults = [], set(), {}, {}, [], []
        self.feed(read("docs", "manual", name))
        if self.open:
            self.faults.append(f"<{self.open[-1][0]}> is not closed")

    def handle_starttag(self, tag, attributes):
        given = dict(attributes)
        self.targets += [given[key] for key in ("href", "src") if key in given]
        if tag == "img" and not given.get("alt"):
            self.faults.append(f"a picture without words: {given.get('src')}")
        if "id" in given:
            self.ids.add(given["id"])
        if tag not in self.VOID:
            self.open.append((tag, [], given.get("id")))

    def handle_data(self, data):
        for _, pieces, _ in self.open:
            pieces.append(data)

    def handle_endtag(self, tag):
        if not self.open or self.open[-1][0] != tag:
            self.faults.append(f"</{tag}> in the wrong place")
            return
        _, pieces, name = self.open.pop()
        text = one_line("".join(pieces))
        self.texts.setdefault(tag, set()).add(text)
        if tag == "td":
            self.handle_data(" ")
        if tag == "tr" and name:
            self.rows[name] = text


def key_name(key, modifiers):
    held = "".join(name for word, name in (("CONTROL", "Ctrl+"), ("ALT", "Alt+"), ("SHIFT", "Shift+")) if word in modifiers)
    return held + KEY_NAMES.get(key, key.strip('"').removeprefix("VK_"))


def check_links(pages):
    for name, page in pages.items():
        yield from (f"{name}: {fault}" for fault in page.faults)
        for target in page.targets:
            file, _, place = target.partition("#")
            if "://" in target or target.startswith("mailto:"):
                yield f"{name}: a link out of the manual: {target}"
            elif not os.path.isfile(os.path.join(MANUAL, file or name)):
                yield f"{name}: a link or picture that leads nowhere: {target}"
            elif place and place not in pages[file or name].ids:
                yield f"{name}: a link to a place that is not there: {target}"
    listed = set(pages["index.html"].targets)
    yield from (f"{name}: not in the contents" for name in pages if name not in listed | {"index.html"})
    yield from (f"{name}: the program opens it, and it is not there" for name in OPENED - set(pages))


def check_commands(pages):
    source = read("resources", "commands.inc")
    commands = re.findall(r"^COMMAND\((\w+), \d+, (\w+)", source, re.MULTILINE)
    rows, keys = pages["commands.html"].rows, pages["keys.html"].texts["kbd"]
    labels = {name: label.split("\\t")[0].replace("&", "")
              for label, name in re.findall(r'MENUITEM "([^"]*)", CMD_(\w+)', read("resources", "menus.rc"))}
    yield from (f"commands.html: {name} is not described" for name, _ in commands if name not in rows)
    yield from (f"commands.html: there is no command {name}" for name in rows.keys() - {name for name, _ in commands})
    for name, windows in commands:
        begin = f"{labels[name]} {windows} " if name in labels else ""
        if not rows.get(name, begin).startswith(begin):
            yield f"commands.html: {name} is not told as '{begin}'"
    for name, key, modifiers in re.findall(r'^KEY\((\w+), \w+, ("[^"]+"|\w+)((?:, \w+)*)\)', source, re.MULTILINE):
        shown = key_name(key, modifiers)
        if f" {shown} " not in rows.get(name, "") or shown not in keys:
            yield f"keys.html, commands.html: {shown} of {name} is missing"
    for key in re.findall(r"case (VK_\w+)", read("mergeview", "win", "text_view_input.cpp")):
        if key_name(key, "") not in keys:
            yield f"keys.html: {key} of the panes is missing"


def check_options(pages):
    told = " ".join(" ".join(pages[name].texts["body"]) for name in OPENED if name.endswith("options.html")).casefold()
    controls = re.findall(r'^  (?:AUTOCHECKBOX|CHECKBOX|PUSHBUTTON) "((?:[^"]|"")*)", (10[1-4]\d\d),',
                          read("resources", "dialogs.rc"), re.MULTILINE)
    if len(controls) < 30:
        yield "resources/dialogs.rc: the options are not where they were"
    for label, number in controls:
        shown = label.replace("&", "").replace('""', '"').strip().rstrip(".:")
        if shown.casefold() not in told:
            yield f"no page of options tells of '{shown}' ({number})"


def check_messages(pages):
    shown = set().union(*(page.texts.get("samp", set()) for page in pages.values()))
    texts = set()
    for name, text in re.findall(r'^TEXT\((\w+), \d+, "((?:[^"\\]|\\.)*)"\)', read("resources", "texts.inc"), re.MULTILINE):
        if name in NOT_DESCRIBED:
            continue
        text = re.sub(r"%\d+(![^!]+!)?", "\u2026", re.sub(r"\\[nt]", " ", text.replace("&", "")))
        texts.add(one_line(text))
        if one_line(text) not in shown:
            yield f"no page has the text {name}: {one_line(text)}"
    yield from (f"the program has no such text: {text}" for text in shown - texts)


def check_console(pages):
    told = " ".join(pages["console.html"].texts["code"])
    for option in sorted(set(re.findall(r"(?<![\w-])--?[a-zA-Z][a-z-]*", read("cli", "usage.cpp")))):
        if not re.search(re.escape(option) + r"(?![a-z-])", told):
            yield f"console.html: {option} is not described"


def main():
    pages = {name: Page(name) for name in sorted(os.listdir(MANUAL)) if name.endswith(".html")}
    faults = [fault for check in (check_links, check_commands, check_options, check_messages, check_console) for fault in check(pages)]
    license_text = [one_line(paragraph) for paragraph in read("LICENSE").split("\n\n")]
    faults += [f"license.html: it lacks '{text[:40]}...'" for text in license_text
               if text not in pages["license.html"].texts["p"]]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
