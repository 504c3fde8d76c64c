#!/usr/bin/env python3
"""Measures reading as whole processes, against other programs on the same files.

messe.py [--bau FOLDER] [--megabyte N] [--laeufe N] [--ordner FOLDER] [--nur NAMES]

Makes a folder of pretty-printed recordings of 1 MB each with spurkiste-erzeuge (or takes the one of --ordner) and
prints a table: what was measured, the target, the figure. Two commands of one line run in turn, A B A B, so that a
slow spell of the machine strikes both; the figure is the ratio of the medians, beside it the smallest and the largest
ratio of a pair. Processor time is user plus system time of the process as the kernel counts it. A program that is not
installed is skipped and said so. The exit status is 1 when a target was missed.
"""

import argparse
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# Every tenth file is enough for a program that must be started anew for each file.
TEIL = 10
LEERE_SPUR = (
    '<?xml version="1.0"?><gpx version="1.1" creator="messe" xmlns="http://www.topografix.com/GPX/1/1"><trk><trkseg>'
    '<trkpt lat="47.0" lon="8.0"/><trkpt lat="47.1" lon="8.1"/></trkseg></trk></gpx>'
)


class Lauf:
    """The cost of one process: seconds of processor and of the clock, peak memory in bytes, lines it printed."""

    def __init__(self, befehl, kerne=None):
        with tempfile.TemporaryFile() as ausgabe:
            binde = (lambda: os.sched_setaffinity(0, kerne)) if kerne else None
            beginn = time.monotonic()
            prozess = subprocess.Popen(befehl, stdin=subprocess.DEVNULL, stdout=ausgabe, preexec_fn=binde)
            _, zustand, verbrauch = os.wait4(prozess.pid, 0)
            self.uhr = time.monotonic() - beginn
            prozess.returncode = os.waitstatus_to_exitcode(zustand)
            if prozess.returncode != 0:
                sys.exit(f"messe.py: {befehl[0]} ended with {prozess.returncode}")
            ausgabe.seek(0)
            self.zeilen = sum(1 for _ in ausgabe)
        self.prozessor = verbrauch.ru_utime + verbrauch.ru_stime
        self.speicher = verbrauch.ru_maxrss * 1024


def paare(anzahl, a, b):
    """Runs a and b in turn and gives both lists of results; one pair before, unmeasured, fills the caches."""
    a(), b()
    gemessen = [(a(), b()) for _ in range(anzahl)]
    return [x for x, _ in gemessen], [y for _, y in gemessen]


class Tabelle:
    def __init__(self):
        self.verfehlt = False
        print(f"{'measured':<50} {'target':>9} {'figure':>9} {'single pairs':>16}  verdict")

    def zeile(self, name, ziel, wert, streuung):
        gut = ziel is None or wert <= ziel
        self.verfehlt |= not gut
        urteil = "" if ziel is None else "reached" if gut else "MISSED"
        ziel = "" if ziel is None else f"{ziel:.3g}"
        print(f"{name:<50} {ziel:>9} {wert:>9.3g} {streuung:>16}  {urteil}", flush=True)

    def verhaeltnis(self, name, ziel, a, b):
        einzeln = [x / y for x, y in zip(a, b)]
        wert = statistics.median(a) / statistics.median(b)
        self.zeile(name, ziel, wert, f"{min(einzeln):.3g} to {max(einzeln):.3g}")
        print(f"{'':<4}{statistics.median(a):.3f} s against {statistics.median(b):.3f} s", flush=True)

    @staticmethod
    def ausgelassen(name, grund):
        print(f"{name:<50} left out: {grund}", flush=True)


def miss(args, dateien, tabelle):
    cli = [args.bau / "bin" / "spurkiste-cli", "liste", args.ordner, "--ohne-cache", "--format", "csv"]
    bytes_gesamt = sum(datei.stat().st_size for datei in dateien)

    def lies(kerne=None):
        lauf = Lauf(cli, kerne)
        if lauf.zeilen != len(dateien) + 1:
            sys.exit(f"messe.py: {lauf.zeilen} lines instead of {len(dateien) + 1}")
        return lauf

    def gegen(name, ziel, programm, anderes):
        if not shutil.which(programm):
            return tabelle.ausgelassen(name, f"{programm} is not installed")
        return tabelle.verhaeltnis(name, ziel, *paare(args.laeufe, lambda: lies().prozessor, anderes))

    def xmllint():
        befehl = ["xmllint", "--stream", "--noout", *dateien]
        gegen("processor time / xmllint --stream --noout", 1.6, "xmllint", lambda: Lauf(befehl).prozessor)

    def speicher():
        # The records are small beside the limit, so the whole peak is held against it, the place list included.
        spitzen = [lies().speicher / 1e6 for _ in range(args.laeufe)]
        streuung = f"{min(spitzen):.3g} to {max(spitzen):.3g}"
        tabelle.zeile("peak memory, MB, everything included", 120, statistics.median(spitzen), streuung)

    def gpsbabel():
        befehl = ["gpsbabel", "-i", "gpx", *(wort for datei in dateien for wort in ("-f", datei))]
        gegen("processor time / gpsbabel, one process", 1 / 3.5, "gpsbabel", lambda: Lauf(befehl).prozessor)

    def ogrinfo():
        # One process reads one file here. So that its start-up does not count, it is measured on a file of two points
        # and taken off; and every tenth file stands for ten, by its bytes.
        teil = dateien[::TEIL]
        faktor = bytes_gesamt / sum(datei.stat().st_size for datei in teil)

        def alle(*schicht):
            befehl = ["ogrinfo", "-al", "-so"]
            start = statistics.median(Lauf([*befehl, leer.name, *schicht]).prozessor for _ in range(5))
            return faktor * sum(Lauf([*befehl, datei, *schicht]).prozessor - start for datei in teil)

        with tempfile.NamedTemporaryFile("w", suffix=".gpx") as leer:
            leer.write(LEERE_SPUR)
            leer.flush()
            # All layers, as -al asks for; and, without a target, the one layer that holds tracks.
            gegen("processor time / ogrinfo -al -so", 1 / 15, "ogrinfo", alle)
            gegen("processor time / ogrinfo, layer of tracks", None, "ogrinfo", lambda: alle("tracks"))

    def arbeiter():
        name = "two cores / one core, time of the clock"
        kerne = sorted(os.sched_getaffinity(0))
        if len(kerne) < 2:
            return tabelle.ausgelassen(name, "there is only one core")
        a, b = paare(args.laeufe, lambda: lies(kerne[:2]).uhr, lambda: lies(kerne[:1]).uhr)
        return tabelle.verhaeltnis(name, 0.65, a, b)

    messungen = {f.__name__: f for f in (xmllint, gpsbabel, ogrinfo, arbeiter, speicher)}
    for name, messung in messungen.items():
        if not args.nur or name in args.nur.split(","):
            messung()


def main():
    teile = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    teile.add_argument("--bau", type=Path, default=Path(__file__).parent.parent / "build", help="build folder")
    teile.add_argument("--megabyte", type=int, default=300, help="size of the made-up folder")
    teile.add_argument("--laeufe", type=int, default=5, help="measured pairs, at least five")
    teile.add_argument("--ordner", type=Path, help="a folder of GPX files to read instead")
    teile.add_argument("--nur", help="only these of xmllint,gpsbabel,ogrinfo,arbeiter,speicher")
    args = teile.parse_args()
    args.laeufe = max(5, args.laeufe)
    args.bau = args.bau.resolve()
    last = os.getloadavg()[0]
    with tempfile.TemporaryDirectory() as eigener:
        if not args.ordner:
            args.ordner = Path(eigener) / "spuren"
            erzeuge = [args.bau / "bin" / "spurkiste-erzeuge", args.ordner, "--art", "spuren"]
            subprocess.run([*erzeuge, "--megabyte", str(args.megabyte)], check=True)
        dateien = sorted(args.ordner.glob("*.gpx"))
        print(f"{len(dateien)} files, {os.cpu_count()} cores, load {last:.1f} before the start", flush=True)
        if last > 1:
            print("others are at work here: times of the clock will mean little", flush=True)
        tabelle = Tabelle()
        miss(args, dateien, tabelle)
    sys.exit(1 if tabelle.verfehlt else 0)


if __name__ == "__main__":
    main()
