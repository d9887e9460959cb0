#!/usr/bin/env python3
"""What an installed program tells the desktop and the shell: that its parts agree with each other and with the program.

Usage: desktop_test.py BUILD-FOLDER SOURCE-FOLDER
"""
import configparser
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

MIME = "{http://www.freedesktop.org/standards/shared-mime-info}"
LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"
build, source = (pathlib.Path(a).resolve() for a in sys.argv[1:])
faults = []


def check(good, what):
    if not good:
        faults.append(what)


def matches(rule, content):
    value = re.sub(rb"\\[rn]", lambda m: {b"\\r": b"\r", b"\\n": b"\n"}[m[0]], rule.get("value").encode())
    mask, at = bytes.fromhex(rule.get("mask")[2:]), int(rule.get("offset"))
    found = content[at:at + len(value)]
    same = len(found) == len(value) == len(mask) and all((f ^ v) & m == 0 for f, v, m in zip(found, value, mask))
    inner = rule.findall(MIME + "match")
    return same and (not inner or any(matches(rule, content) for rule in inner))


def check_types(share):
    """The types by content, with files of both kinds and tables that look like a knot at first."""
    types = {t.get("type"): t for t in xml.parse(share / "mime/packages/lorivan.xml").getroot()}

    def of(content):
        return [name for name, kind in types.items() if any(matches(r, content) for r in kind.iter(MIME + "match")
                                                            if r.get("offset") == "0")]
    by_glob = {kind.find(MIME + "glob").get("pattern")[1:]: name for name, kind in types.items()}
    for path in (source / "examples").iterdir():
        if path.suffix in by_glob:
            check(of(path.read_bytes()) == [by_glob[path.suffix]], f"{path.name} is taken for {of(path.read_bytes())}")
    check(of(b"9,12\r\n12.5,20,3,-4,7,10,3,5\r\n") == [by_glob[".qzd"]], "a scale with a fraction")
    for other in (b"12,3\r\n4,5\r\n", b"12,3,4\r\n4,5,6,7\r\n", b"x,0\r\n", b" 7500 6000\r\n", b""):
        check(of(other) == [], f"{other} is taken for {of(other)}")
    return set(types)


def check_desktop(share, types):
    entry = configparser.ConfigParser(interpolation=None)
    entry.optionxform = str
    entry.read(share / "applications/lorivan.desktop")
    entry = entry["Desktop Entry"]
    check(set(filter(None, entry["MimeType"].split(";"))) == types, "the menu entry opens other types")
    names = [f"apps/{entry['Icon']}"] + [f"mimetypes/{t.replace('/', '-')}" for t in types]
    for size in ("16x16", "48x48", "256x256", "scalable"):
        for name in names:
            file = share / f"icons/hicolor/{size}/{name}{'.svg' if size == 'scalable' else '.png'}"
            check(file.exists(), f"{file} is missing")
    about = xml.parse(share / "metainfo/invalid.lorivan.Lorivan.metainfo.xml").getroot()
    check({m.text for m in about.iter("mediatype")} == types, "the metadata tell other types")
    check([c.text for c in about.iter("category")] == entry["Categories"].rstrip(";").split(";"), "categories differ")
    return about.find("releases/release")


def check_installer(share, manual):
    """That the installer for Windows opens and offers what the program reads as knots and shapes."""
    script = (source / "packaging/lorivan.nsi").read_text()
    own = {g.get("pattern")[1:] for g in xml.parse(share / "mime/packages/lorivan.xml").getroot().iter(MIME + "glob")}
    holding = re.search(r"still holds it \(([^)]*)\)", manual)[1].replace(" and ", ", ").split(", ")
    for macro, wanted in (("Associate", own), ("Dissociate", own), ("Supported", own | {f".{name}" for name in holding})):
        listed = re.findall(rf'!insertmacro {macro} "(\.\w+)"', script)
        check(sorted(listed) == sorted(wanted), f"the installer has {macro} for {listed}")


def check_words(share):
    """What several parts say, in both languages."""
    entry = (share / "applications/lorivan.desktop").read_text()
    entry = {language: dict(re.findall(rf"(?m)^(\w+){mark}=(.*)", entry)) for language, mark in ((None, ""), ("de", r"\[de\]"))}
    check({"GenericName", "Comment", "Keywords"} == set(entry["de"]), "the menu entry lacks German words")
    installer = {name: {None: english, "de": german} for name, english, german in re.findall(
        r'!insertmacro Text (\w+) "([^"]*)" "([^"]*)"', (source / "packaging/lorivan.nsi").read_text())}

    def said(element, tag):
        return {e.get(LANGUAGE): e.text for e in element.iter(tag)}
    about = xml.parse(share / "metainfo/invalid.lorivan.Lorivan.metainfo.xml").getroot()
    comments = {language: words["Comment"] for language, words in entry.items()}
    check(said(about, "summary") == comments == installer["AboutLink"], "the program is described in different words")
    for name, kind in zip(("KnotType", "ShapeType"), xml.parse(share / "mime/packages/lorivan.xml").getroot()):
        check(said(kind, MIME + "comment") == installer[name], f"the installer has other words for {kind.get('type')}")


def completed(script, *words):
    """What a shell would offer for the last word."""
    run = 'source "$1"; shift; COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)); _lorivan; printf "%s\\n" "${COMPREPLY[@]}"'
    out = subprocess.run(["bash", "-c", run, "-", script, "lorivan", *words], capture_output=True, text=True, check=True)
    check(out.stderr == "", f"completing {words}: {out.stderr}")
    return [line for line in out.stdout.split("\n") if line]


def check_completion(script):
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        for name in ("a knot.qzd", "a.svg", "a.txt"):
            pathlib.Path(name).touch()
        for words, expected in (
                (["--fit"], ["--fit", "--fit-radius"]), (["a"], ["a knot.qzd", "a.svg"]),
                (["--shape", "Re"], ["Regular\\ Hexagonal"]), (["--strands", ""], ["most"]),
                (["--set", "chkM"], ["chkMirror="]), (["--set", "chkMirror", "="], ["0", "1"]),
                (["--set", "chkMirror", "=", "1"], ["1"]), (["--set", "vtXNo", "="], []), (["--sweep", "chk"], []),
                (["-o", "a.p"], ["a.pdf", "a.png", "a.pov"]), (["--mm", ""], []),
                (["--list", ""], ["parameters", "shapes", "presets", "formats"])):
            got = completed(script, *words)
            check(sorted(got) == sorted(expected), f"completing {words} offers {got}")
        os.chdir(source)


def main():
    with tempfile.TemporaryDirectory() as folder:
        place = pathlib.Path(folder)
        subprocess.run(["cmake", "--install", build, "--prefix", place], check=True, stdout=subprocess.DEVNULL)
        release = check_desktop(place / "share", check_types(place / "share"))
        program = subprocess.run([place / "bin/lorivan", "--version"], capture_output=True, text=True, check=True)
        version = program.stdout.split()[1]
        check(release.get("version") == version, "the metadata have another version than the program")
        manual = (place / "share/man/man1/lorivan.1").read_text()
        check(f'"{release.get("date")}" "Lorivan {version}"' in manual, "the manual page has another version")
        check_installer(place / "share", manual)
        check_words(place / "share")
        check_completion(place / "share/bash-completion/completions/lorivan")
    print("\n".join(faults) or "all agree")
    sys.exit(1 if faults else 0)


main()
