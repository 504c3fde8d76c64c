#!/usr/bin/env python3
"""Measures reading as whole processes, against other programs on the same files.

messe.py [--bau FOLDER] [--megabyte N] [--laeufe N] [--ordner FOLDER] [--frueher PROGRAM] [--nur NAMES]

Makes a folder of pretty-printed recordings of 1 MB each with spurkiste-erzeuge (or takes the one of --ordner) and
prints a table: what was measured, the bar it must pass, the goal, the figure. Two commands of one line run in turn, A B A B, so that a
slow spell of the machine strikes both; the figure is the ratio of the medians, beside it the smallest and the largest
ratio of a pair. Processor time is user plus system time of the process as the kernel counts it. A program that is not
installed is skipped and said so. The exit status is 1 when a bar was missed.
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
        print(f"{'measured':<50} {'bar':>7} {'goal':>7} {'figure':>7} {'single pairs':>16}  verdict")

    def zeile(self, name, ziel, wert, streuung):
        """`ziel` is the pair of bar and goal, or None for what is only told."""
        latte, wunsch, urteil = "", "", ""
        if ziel is not None:
            self.verfehlt |= wert > ziel[0]
            urteil = "goal reached" if wert <= ziel[1] else "bar passed" if wert <= ziel[0] else "MISSED"
            latte, wunsch = (f"{grenze:.3g}" for grenze in ziel)
        print(f"{name:<50} {latte:>7} {wunsch:>7} {wert:>7.3g} {streuung:>16}  {urteil}", flush=True)

    def verhaeltnis(self, name, ziel, a, b):
        einzeln = [x / y for x, y in zip(a, b)]
        wert = statistics.median(a) / statistics.median(b)
        self.zeile(name, ziel, wert, f"{min(einzeln):.3g} to {max(einzeln):.3g}")
        print(f"{'':<4}{statistics.median(a):.3f} s against {statistics.median(b):.3f} s", flush=True)

    @staticmethod
    def ausgelassen(name, grund):
        print(f"{name:<50} left out: {grund}", flush=True)


def vergiss(dateien):
    """Takes the files' bytes out of the system's memory, as far as it lets go of them."""
    for datei in dateien:
        nummer = os.open(datei, os.O_RDONLY)
        os.posix_fadvise(nummer, 0, 0, os.POSIX_FADV_DONTNEED)
        os.close(nummer)


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
        gegen("processor time / xmllint --stream --noout", (0.80, 0.70), "xmllint", lambda: Lauf(befehl).prozessor)

    def expat():
        # The XML library alone, without anybody who listens, on the same bytes.
        allein = [args.bau / "bench" / "ExpatAllein", args.ordner]
        a, b = paare(args.laeufe, lambda: lies().prozessor, lambda: Lauf(allein).prozessor)
        tabelle.verhaeltnis("processor time / expat alone, no handlers", (0.75, 0.55), a, b)

    def kalt():
        name = "20000 small files, cold / an earlier program, clock"
        if not args.frueher:
            return tabelle.ausgelassen(name, "--frueher names none")
        with tempfile.TemporaryDirectory() as ordner:
            erzeuge = [args.bau / "bin" / "spurkiste-erzeuge", ordner, "--anzahl", "20000", "--punkte", "400"]
            subprocess.run(erzeuge, check=True, stdout=subprocess.DEVNULL)
            os.sync()
            viele = list(Path(ordner).rglob("*.gpx"))

            def erstes_mal(programm):
                vergiss(viele)
                return Lauf([programm, "liste", ordner, "--ohne-cache", "--format", "csv"]).uhr

            a, b = paare(args.laeufe, lambda: erstes_mal(cli[0]), lambda: erstes_mal(args.frueher))
        return tabelle.verhaeltnis(name, (1 / 1.6, 1 / 2), a, b)

    def speicher():
        # The records are small beside the limit, so the whole peak is held against it, the place list included.
        spitzen = [lies().speicher / 1e6 for _ in range(args.laeufe)]
        streuung = f"{min(spitzen):.3g} to {max(spitzen):.3g}"
        tabelle.zeile("peak memory, MB, everything included", (40, 30), statistics.median(spitzen), streuung)

    def gpsbabel():
        befehl = ["gpsbabel", "-i", "gpx", *(wort for datei in dateien for wort in ("-f", datei))]
        gegen("processor time / gpsbabel, one process", (1 / 6, 1 / 8), "gpsbabel", lambda: Lauf(befehl).prozessor)

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
            gegen("processor time / ogrinfo -al -so", (1 / 25, 1 / 35), "ogrinfo", alle)
            gegen("processor time / ogrinfo, layer of tracks", None, "ogrinfo", lambda: alle("tracks"))

    def arbeiter():
        name = "two cores / one core, time of the clock"
        kerne = sorted(os.sched_getaffinity(0))
        if len(kerne) < 2:
            return tabelle.ausgelassen(name, "there is only one core")
        a, b = paare(args.laeufe, lambda: lies(kerne[:2]).uhr, lambda: lies(kerne[:1]).uhr)
        return tabelle.verhaeltnis(name, (0.62, 0.57), a, b)

    messungen = {f.__name__: f for f in (xmllint, gpsbabel, ogrinfo, expat, arbeiter, kalt, speicher)}
    for name, messung in messungen.items():
        if not args.nur or name in args.nur.split(","):
            messung()


def main():
    teile = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    teile.add_argument("--bau", type=Path, default=Path(__file__).parent.parent / "build", help="build folder")
    teile.add_argument("--megabyte", type=int, default=300, help="size of the made-up folder")
    teile.add_argument("--laeufe", type=int, default=5, help="measured pairs, at least five")
    teile.add_argument("--ordner", type=Path, help="a folder of GPX files to read instead")
    teile.add_argument("--frueher", type=Path, help="another spurkiste-cli, for the measurement called kalt")
    teile.add_argument("--nur", help="only these of xmllint,gpsbabel,ogrinfo,expat,arbeiter,kalt,speicher")
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
