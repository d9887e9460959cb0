#!/usr/bin/env python3
"""Shows that lorivan_help_pages notices every kind of fault.

Usage: checker_test.py PROGRAM DATA-FOLDER
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile

FAULTS = [  # file, what is there, what takes its place, and what is said of it
    ("help/de/faq.html", "Ansicht › Sprache", "Ansicht › Sprachen", "the window has no Ansicht › Sprachen"),
    ("help/faq.html", "View › Language", "View ›\nTongue", "the window has no View › Tongue"),
    ("help/de/faq.html", 'id="knot-error"', 'id="fault"', "knot-error on the English page"),
    ("help/de/things.html", "--kerf 0.15", "--kerf 0.51", "here, lorivan coaster.svg"),
    ("help/de/custom.html", "custom-beast.png", "custom-ring.png", "custom-beast.png on the English page"),
    ("help/de/3d.html", "index.html#saving", "index.html#keeping", "index.html#keeping is missing"),
    ("help/de/index.html", "anfangs 2", "anfangs 3", "is out of date"),
    ("texts/help/de.po", 'msgid "on"', 'msgid "onto"', "de.po lacks: on"),
    ("texts/help/de.po", 'msgid "on"', 'msgid "onto"', "what no page says: onto"),
]


def faults_of(program, data):
    run = subprocess.run([program, "--check", data / "help"], capture_output=True, text=True)
    return run.stderr if run.returncode else ""


def main(program, data):
    wrong = []
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder)
        for part in ("help", "texts"):
            shutil.copytree(pathlib.Path(data) / part, copy / part)
        if said := faults_of(program, copy):
            wrong.append(f"good pages are faulted: {said}")
        for name, good, bad, expected in FAULTS:
            page = (copy / name).read_text(encoding="utf-8")
            (copy / name).write_text(page.replace(good, bad, 1), encoding="utf-8")
            if expected not in (said := faults_of(program, copy)):
                wrong.append(f"{name} with {bad!r}: {said or 'passes'}")
            (copy / name).write_text(page, encoding="utf-8")
    print("\n".join(wrong) or "every fault is noticed")
    return 1 if wrong else 0


sys.exit(main(*sys.argv[1:]))
