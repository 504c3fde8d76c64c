"""Folders of horror: caches that are none, and names that nobody would choose.

horror_test.py PROGRAM RESOURCES HELPERS.
"""

import csv
import io
import json
import os
import pty
import stat
import subprocess
import tempfile

from pruefstand import (CACHE, LAUF, PROGRAMM, UMGEBUNG, beende, befehle, erwarte, erwarte_richtig, inhalt, lies, liste, rufe, schreibe, spur,
                        vorlaeufige)

MIB = 1 << 20
NAMEN = [b"zwei\nZeilen", b"\x1b]0;boese\x07\x1b[2J", b"\x1b[31mrot", b"R\xfcckschritt\x08\x7f", b"\xc2\x9b31mC1", b"\xff\xfe", b"x" * 251, "ä".encode() * 125,
         b"\xe2\x80\xaegpx.exe", b"-rf", b"=1+1", b" ", b"%s%n", b"a\tb\rc", b'"', b"\\", b".hidden"]


def im_terminal(*worte):
    """What a program writes to a terminal, both of its streams, line breaks as it wrote them."""
    herr, knecht = pty.openpty()
    with subprocess.Popen([PROGRAMM, *worte], stdin=subprocess.DEVNULL, stdout=knecht, stderr=knecht, env=UMGEBUNG | {"TERM": "dumb", "NO_COLOR": "1"}):
        os.close(knecht)
        teile = []
        try:
            while teil := os.read(herr, 65536):
                teile.append(teil)
        except OSError:  # the other end is closed
            pass
    os.close(herr)
    return b"".join(teile).replace(b"\r\n", b"\n").replace(b"\r\n", b"\n")  # CSV has such line breaks, too


class Ordner:
    def __init__(self, ablage):
        self.ablage, self.pfad = ablage, os.path.join(ablage, "Bibliothek")
        os.mkdir(self.pfad)
        self.cache = os.path.join(self.pfad, CACHE)
        self.alte = {f"{i}.gpx": spur(i) for i in range(3)}
        for name, text in self.alte.items():
            schreibe(os.path.join(self.pfad, name), text)

    def gelesen(self, lauf):
        """The list is complete whatever the cache is."""
        erwarte((lauf.ende, lauf.fehler) == (0, ""), str(lauf))
        erwarte([e["punkte"] for e in json.loads(lauf.aus)] == [30] * 3, f"it lists {lauf.aus[:300]}")
        erwarte(inhalt(self.pfad) == self.alte, f"there is {sorted(os.listdir(self.pfad))}")


def cache_ist_verweis(ordner, ziel_gibt_es=True):
    """Nothing is read or written through it; what is written stands in its place."""
    ziel = os.path.join(ordner.ablage, "notizen.txt")
    if ziel_gibt_es:
        schreibe(ziel, b'{"version":3,"eintraege":{}}')
    os.symlink("../notizen.txt", ordner.cache)
    ordner.gelesen(liste(ordner.pfad))
    erwarte(lies(ziel) == (b'{"version":3,"eintraege":{}}' if ziel_gibt_es else None), "what the link leads to was written")
    erwarte(not os.path.islink(ordner.cache), "the link is still there")


def cache_haengt(ordner):
    cache_ist_verweis(ordner, False)


def cache_ist_rohr(ordner):
    os.mkfifo(ordner.cache)
    ordner.gelesen(liste(ordner.pfad))


def cache_ist_ordner(ordner):
    os.mkdir(ordner.cache)
    schreibe(os.path.join(ordner.cache, "mein.txt"), b"bleibt")
    ordner.gelesen(liste(ordner.pfad))
    erwarte(lies(os.path.join(ordner.cache, "mein.txt")) == b"bleibt", "the folder was touched")


def cache_ist_geraet(ordner):
    """As root, who alone could write over one: one of the test's own."""
    if os.geteuid() != 0:
        return
    geraet = os.path.join(ordner.ablage, "nullen")
    os.mknod(geraet, 0o666 | stat.S_IFCHR, os.makedev(1, 5))
    os.symlink(geraet, ordner.cache)
    ordner.gelesen(liste(ordner.pfad))
    erwarte(stat.S_ISCHR(os.stat(geraet).st_mode), "the device was written over")


def cache_ist_riesig(ordner):
    with open(ordner.cache, "wb") as datei:
        datei.truncate(2048 * MIB)
    lauf = liste(ordner.pfad)
    ordner.gelesen(lauf)
    erwarte(lauf.speicher < 200 * MIB, f"it takes {lauf.speicher / MIB:.0f} MiB")
    erwarte_richtig(ordner.pfad, "afterwards")
    erwarte(os.path.getsize(ordner.cache) < MIB, "the cache is as it was")


def tracks_die_keine_sind(ordner):
    for name, ziel in (("geraet.gpx", "/dev/zero"), ("haengt.gpx", "/nonexistent"), ("kreis.gpx", "kreis.gpx"), ("ordner.gpx", "/")):
        os.symlink(ziel, os.path.join(ordner.pfad, name))
    os.mkfifo(os.path.join(ordner.pfad, "rohr.gpx"))
    os.mkdir(os.path.join(ordner.pfad, "verzeichnis.gpx"))
    lauf = liste(ordner.pfad)
    namen = [e["dateiName"] for e in json.loads(lauf.aus)]
    erwarte(namen == ["0", "1", "2"], f"it lists {namen}")


def namen_im_terminal(ordner):
    """No name reaches a terminal with what the terminal would obey."""
    for nummer, name in enumerate(NAMEN):
        schreibe(os.fsencode(ordner.pfad) + b"/" + name + b".gpx", spur(nummer % 2))
    pfade = [os.fsencode(ordner.pfad) + b"/" + name + b".gpx" for name in NAMEN]
    kaputt = os.fsencode(ordner.ablage) + b"/\x1b[31m\n.gpx"
    schreibe(kaputt, b"kein XML")
    for worte in (["liste", ordner.pfad], ["liste", ordner.pfad, "--format", "csv"], ["liste", ordner.pfad, "--format", "json"],
                  ["pruefe", ordner.pfad, kaputt], ["pruefe", ordner.pfad, "--json"], ["doppelte", ordner.pfad], ["sport", "cycling", *pfade, kaputt],
                  ["liste", kaputt], ["pruefe", kaputt + b"x"], [kaputt]):
        text = im_terminal(*worte).decode(errors="replace")
        boese = sorted({z for z in text if (z < " " and z != "\n") or "\x7f" <= z <= "\x9f" or z == "\u202e"})
        erwarte(not boese, f"{worte[:1]} {worte[2:4] if worte[0] == 'liste' else ''} writes {boese}: {text[:200]!r}")


def namen_ueberall(ordner):
    """Files of such names are listed, read again, written and renamed like any other."""
    for name in NAMEN:
        schreibe(os.fsencode(ordner.pfad) + b"/" + name + b".gpx", spur(5))
    anzahl = len(NAMEN) + len(ordner.alte)
    erwarte(len(erwarte_richtig(ordner.pfad, "at first")) == anzahl, "not all are listed")
    zeilen = list(csv.reader(io.StringIO(rufe(PROGRAMM, "liste", ordner.pfad, "--format", "csv").aus, newline="")))
    erwarte(len(zeilen) == anzahl + 1 and {len(zeile) for zeile in zeilen} == {len(zeilen[0])}, "the CSV is torn")
    for name in NAMEN:
        pfad = os.fsencode(ordner.pfad) + b"/" + name + b".gpx"
        lauf = rufe(PROGRAMM, "sport", "cycling", "--", pfad)
        erwarte(lauf.ende == 0 and lies(pfad) == spur(5, "cycling"), f"{name}: {lauf}")
    erwarte(not vorlaeufige(os.listdir(ordner.pfad)), "something is left")
    lang = "x" * 251
    fremd = schreibe(os.path.join(ordner.ablage, lang + ".gpx"), spur(9))
    lauf = rufe(LAUF, ordner.pfad, os.path.join(ordner.ablage, "e"), eingabe=befehle(["lade"], ["benenne", lang, "y" * 251], ["importiere", fremd]))
    erwarte(lauf.ende == 0, f"long names: {lauf}")
    lauf = rufe(LAUF, ordner.pfad, os.path.join(ordner.ablage, "e"), eingabe=befehle(["lade"], ["benenne", lang, "z" * 252], ["importiere", fremd]))
    erwarte(lauf.aus.count("schlecht") == 2 and len(os.listdir(ordner.pfad)) == anzahl + 2, f"names that are too long: {lauf}")


FAELLE = [cache_ist_verweis, cache_haengt, cache_ist_rohr, cache_ist_ordner, cache_ist_geraet, cache_ist_riesig, tracks_die_keine_sind,
          namen_im_terminal, namen_ueberall]


def main():
    fehler = []
    for fall in FAELLE:
        with tempfile.TemporaryDirectory() as ablage:
            try:
                fall(Ordner(ablage))
            except (AssertionError, ValueError) as falsch:
                fehler.append(f"{fall.__name__}: {falsch}")
    beende(fehler, f"{len(FAELLE)} folders of horror")


if __name__ == "__main__":
    main()
