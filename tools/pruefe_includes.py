#!/usr/bin/env python3
"""Checks that every file under src/ includes only what its room of the house may know.

pruefe_includes.py SRC              prints one line per violation; exit status 1 when there is any
pruefe_includes.py --selbstpruefung checks this check on a made-up tree of right and wrong includes
"""

import re
import sys
import tempfile
from pathlib import Path

# The rooms of the house, each with those that it may include besides itself. A room is a folder with all below it that
# is no room of its own.
KERN = ["base", "platform", "geo", "i18n", "places", "track", "library"]
DARF = {
    "base": [],
    "platform": ["base"],
    "geo": ["base", "platform"],
    "i18n": ["base", "platform", "geo"],
    "places": ["base", "platform", "geo"],
    "track": KERN[:5],
    "library": KERN[:6],
    "sicht": ["base", "geo", "i18n", "track"],
    "ui/teile": ["base", "i18n", "track"],
    "ui/tabelle": ["base", "i18n", "track", "sicht", "ui/teile"],
    "ui/detail": ["base", "i18n", "track", "sicht", "ui/teile"],
    "ui/fenster": KERN + ["sicht", "ui/teile", "ui/tabelle", "ui/detail"],
    "cli": KERN + ["sicht"],
    "app": KERN + ["sicht", "ui/teile", "ui/fenster"],
}

# The bodies behind the platform's interfaces are chosen by the programs alone.
KOERPER = ("platform/qt/", "platform/posix/", "platform/gio/")
PROGRAMME = ("cli", "app")

# Third-party headers and the files (or folders, with a closing slash) that may see them.
BIBLIOTHEKEN = [
    ("ICU", r"unicode/", ["base/Text.cpp", "base/Namensordnung.cpp"]),
    ("expat", r"expat\w*\.h$", ["track/XmlExpat.h", "track/XmlExpat.cpp", "track/XmlLauf.cpp"]),
    ("SSE2", r"emmintrin\.h$", ["track/XmlZeichen.h"]),
    ("simdjson", r"simdjson", ["i18n/Sprachtabelle.cpp", "track/GpxMetadatenJson.cpp", "library/Cache.cpp"]),
    ("Qt", r"Q[A-Z]|Qt", ["platform/qt/", "ui/", "app/"]),
    ("XCB", r"xcb/", ["ui/teile/Schwebekarte.cpp"]),
    ("GIO", r"(gio|glib|gobject)(/|\.h|-)", ["platform/gio/"]),
    # The rest of the system interface; everybody else asks base/ or platform/.
    (
        "POSIX",
        r"(sys/\w+|linux/\w+|dirent|fcntl|unistd|termios|poll|signal|pwd|langinfo|malloc)\.h$",
        ["base/", "platform/", "cli/"],
    ),
    ("C++", r"[a-z_0-9]+$", [""]),
]

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def raum(datei):
    """The room of a path relative to src/, or None outside of every room."""
    return max((name for name in DARF if datei.startswith(name + "/")), key=len, default=None)


def einwand(datei, art, ziel, src):
    """What is wrong with one include of a file; None when it is right."""
    von = raum(datei)
    if von is None:
        return "lies in no room"
    if art == "<":
        for name, muster, erlaubt in BIBLIOTHEKEN:
            if re.match(muster, ziel):
                darf = any(datei == ort or (ort.endswith("/") or not ort) and datei.startswith(ort) for ort in erlaubt)
                return None if darf else f"must not see {name}"
        return "belongs to no library that the project uses"
    if not (src / ziel).is_file():
        return "is no file of src/"
    nach = raum(ziel)
    if nach != von and nach not in DARF[von]:
        return f"{von} must not know {nach}"
    if ziel.startswith(KOERPER) and von not in PROGRAMME and not datei.startswith(KOERPER):
        return "only the programs choose a platform"
    return None


def verstoesse(src):
    """One line per wrong include under src."""
    zeilen = []
    for datei in sorted(pfad for pfad in src.rglob("*") if pfad.suffix in (".h", ".cpp")):
        name = datei.relative_to(src).as_posix()
        for art, ziel in INCLUDE.findall(datei.read_text(encoding="utf-8")):
            grund = einwand(name, art, ziel, src)
            if grund:
                zeilen.append(f"{name}: {ziel}: {grund}")
    return zeilen


# file, include, whether it is right
PROBEN = [
    ("base/Text.cpp", "<unicode/uchar.h>", True),
    ("base/Zahl.cpp", "<unicode/uchar.h>", False),
    ("base/Zahl.cpp", '"geo/Koordinate.h"', False),
    ("base/Zahl.cpp", '"base/Text.h"', True),
    ("base/Zahl.cpp", "<sys/stat.h>", True),
    ("base/Zahl.cpp", "<boost/any.hpp>", False),
    ("geo/Koordinate.h", '"base/Text.h"', True),
    ("geo/Koordinate.h", '"places/Ortsbuch.h"', False),
    ("places/Ortsbuch.h", '"i18n/AppSprache.h"', False),
    ("track/XmlLauf.cpp", "<expat.h>", True),
    ("track/GpxLeser.cpp", "<expat.h>", False),
    ("track/GpxLeser.cpp", '"library/Cache.h"', False),
    ("track/GpxLeser.cpp", '"../base/Text.h"', False),
    ("track/GpxLeser.cpp", "<sys/stat.h>", False),
    ("library/Cache.cpp", "<simdjson.h>", True),
    ("library/Cache.h", "  <simdjson.h>", False),
    ("library/Cache.h", '"platform/posix/Dinge.h"', False),
    ("library/Cache.h", '"sicht/Formate.h"', False),
    ("platform/qt/Dinge.h", "<QString>", True),
    ("platform/Dinge.h", "<QString>", False),
    ("platform/Dinge.h", "<gio/gio.h>", False),
    ("platform/gio/Dinge.h", "<gio/gio.h>", True),
    ("library/Cache.cpp", '"platform/gio/Dinge.h"', False),
    ("sicht/Formate.cpp", '"track/Skizze.h"', True),
    ("sicht/Formate.cpp", '"library/Cache.h"', False),
    ("sicht/Formate.cpp", "<QString>", False),
    ("ui/teile/Knopf.h", "<QWidget>", True),
    ("ui/teile/Knopf.h", '"sicht/Formate.h"', False),
    ("ui/teile/Knopf.h", '"ui/fenster/Kopf.h"', False),
    ("ui/tabelle/Kopf.h", '"ui/teile/Knopf.h"', True),
    ("ui/tabelle/Kopf.h", '"ui/detail/Kachel.h"', False),
    ("ui/detail/Kachel.h", '"ui/tabelle/Kopf.h"', False),
    ("ui/detail/Kachel.h", '"library/Cache.h"', False),
    ("ui/fenster/Kopf.h", '"ui/tabelle/Kopf.h"', True),
    ("ui/fenster/Kopf.h", '"library/Cache.h"', True),
    ("ui/Fenster.h", "<vector>", False),
    ("cli/main.cpp", '"sicht/Formate.h"', True),
    ("cli/main.cpp", '"ui/fenster/Kopf.h"', False),
    ("cli/main.cpp", '"platform/posix/Dinge.h"', True),
    ("cli/main.cpp", "<QString>", False),
    ("app/main.cpp", '"ui/fenster/Kopf.h"', True),
    ("neu/Ding.cpp", "<vector>", False),
]


def selbstpruefung():
    with tempfile.TemporaryDirectory() as ordner:
        src = Path(ordner)
        ziele = {ziel.strip('"') for _, ziel, _ in PROBEN if ziel.startswith('"') and ".." not in ziel}
        for datei in sorted({datei for datei, _, _ in PROBEN} | ziele):
            (src / datei).parent.mkdir(parents=True, exist_ok=True)
            zeilen = [f"#include {ziel}\n" for d, ziel, _ in PROBEN if d == datei]
            (src / datei).write_text("// a made-up file\n" + "".join(zeilen), encoding="utf-8")
        gefunden = {":".join(zeile.split(":")[:2]) for zeile in verstoesse(src)}
    erwartet = {datei + ": " + ziel.strip(" <>\"") for datei, ziel, richtig in PROBEN if not richtig}
    return [f"not noticed: {probe}" for probe in sorted(erwartet - gefunden)] + [
        f"wrongly accused: {probe}" for probe in sorted(gefunden - erwartet)
    ]


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    zeilen = selbstpruefung() if sys.argv[1] == "--selbstpruefung" else verstoesse(Path(sys.argv[1]))
    print("\n".join(zeilen) if zeilen else "all includes are in order")
    sys.exit(1 if zeilen else 0)


if __name__ == "__main__":
    main()
