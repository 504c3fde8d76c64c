#!/usr/bin/python3
"""Measures the real window: how soon it has its rows, and how long its event loop is busy at a time.

fenster.py [--bau FOLDER] [--anzahl N] [--laeufe N] [--bibliothek FOLDER]

On a display and a bus of its own it starts the program on a made-up library whose cache is complete, and works in it
with mouse and keyboard. A module loaded into the program (bench/app/Rundenschreiber.cpp) writes down the turns of its
event loop. Printed are the medians of all runs: the longest turn of each action, in milliseconds of the main thread's
processor time and of the clock. The exit status is 1 when a bar was missed. Processor time is what is judged: on a busy
machine the clock measures the others.
"""

import argparse
import os
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

NEUE = 200
CACHE = ".spurkiste-cache.json"
# By the number of tracks: seconds from the start to the rows, milliseconds of the longest turn; each bar and goal.
GRENZEN = {10_000: ((0.30, 0.20), (16, 8)), 100_000: ((1.3, 0.8), (100, 50))}


def lies_argumente():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--bau", type=Path, default=Path(__file__).resolve().parent.parent / "build")
    parser.add_argument("--anzahl", type=int, default=10_000, help="of tracks in the library")
    parser.add_argument("--laeufe", type=int, default=5)
    parser.add_argument("--bibliothek", type=Path, help="a library to take instead of one made up; it stays as it is")
    parser.add_argument("--ablage", type=Path, default=Path(tempfile.gettempdir()), help="where to work")
    parser.add_argument("--profil", help="for one run: a file for `perf record` of the main thread")
    return parser.parse_args()


def umgib():
    """Starts this program again on a display and a bus of its own."""
    lesen, schreiben = os.pipe()
    anzeige = subprocess.Popen(["Xvfb", "-displayfd", str(schreiben), "-screen", "0", "1600x1000x24", "-nolisten", "tcp", "-r"],
                               pass_fds=[schreiben], stderr=subprocess.DEVNULL)
    os.close(schreiben)
    try:
        with os.fdopen(lesen) as strom:
            umgebung = os.environ | {"DISPLAY": ":" + strom.readline().strip(), "FENSTERMASS_INNEN": "1"}
        return subprocess.run(["dbus-run-session", "--", sys.executable, *sys.argv], env=umgebung).returncode
    finally:
        anzeige.terminate()
        anzeige.wait()


def fuehre(*befehl, **weiteres):
    subprocess.run([str(wort) for wort in befehl], check=True, stdout=subprocess.DEVNULL, **weiteres)


def taste(*tasten):
    fuehre("xdotool", "key", "--delay", 40, *tasten)


def dateien(ordner):
    return sum(name.lower().endswith(".gpx") for name in os.listdir(ordner))


class Fenster:
    """The running program."""

    def __init__(self, bau, ordner, heim):
        self.ordner, self.programm, self.buch = ordner, bau / "bin" / "spurkiste", heim / "runden"
        self.umgebung = os.environ | {
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb", "LANG": "de_DE.UTF-8",
            "SPURKISTE_RESSOURCEN": str(bau.parent / "resources"), "HOME": str(heim), "XDG_CONFIG_HOME": str(heim),
            "XDG_RUNTIME_DIR": str(heim), "XDG_DATA_HOME": str(heim)}
        self.beginn = time.monotonic()
        self.prozess = subprocess.Popen([self.programm, "--ordner", ordner], env=self.umgebung | {
            "LD_PRELOAD": str(bau / "bench" / "Rundenschreiber.so"), "RUNDENSCHREIBER": str(self.buch)})
        self.tabelle = self.warte(self.suche, 0.002).queryTable()

    @staticmethod
    def warte(frage, takt, frist=60):
        ende = time.monotonic() + frist
        while time.monotonic() < ende:
            try:
                if antwort := frage():
                    return antwort
            except Exception:  # what is asked about is still being built
                pass
            time.sleep(takt)
        raise SystemExit(f"in vain: {frage}")

    def elemente(self):
        """All of the window, without the cells of the table."""
        import pyatspi

        offen = [f for a in pyatspi.Registry.getDesktop(0) if a is not None and a.name == "spurkiste" for f in a]
        while offen:
            element = offen.pop(0)
            if element is not None:
                yield element
                offen += list(element) if element.getRole() != pyatspi.ROLE_TABLE else []

    def suche(self):
        import pyatspi

        return next((e for e in self.elemente() if e.getRole() == pyatspi.ROLE_TABLE), None)

    def knopf(self, name):
        return next(e for e in self.elemente() if e.name == name).queryAction()

    def zeit_bis_reihen(self, anzahl):
        def reihen():
            return self.tabelle.nRows >= anzahl

        self.warte(reihen, 0.004)
        return time.monotonic() - self.beginn

    def verbrauch(self):
        """Processor time of all threads, in ticks."""
        return sum(map(int, Path(f"/proc/{self.prozess.pid}/stat").read_text().rsplit(") ", 1)[1].split()[11:13]))

    def ruhe(self, dauer=0.7):
        """Waits until the program has done nothing for so many seconds."""
        zuletzt, seit = self.verbrauch(), time.monotonic()
        while time.monotonic() - seit < dauer:
            time.sleep(0.05)
            if (jetzt := self.verbrauch()) > zuletzt + 1:
                zuletzt, seit = jetzt, time.monotonic()

    def laengste(self, seit):
        """The longest turns since then, by processor time and by the clock, in milliseconds."""
        runden = [tuple(map(int, zeile.split())) for zeile in self.buch.read_text().splitlines() if zeile.count(" ") == 2]
        spaet = [(cpu / 1e6, uhr / 1e6) for ab, uhr, cpu in runden if ab / 1e9 >= seit]
        return max((cpu for cpu, _ in spaet), default=0.0), max((uhr for _, uhr in spaet), default=0.0)

    def messe(self, tue, gelungen):
        """Does it, waits until nothing follows, and makes sure that it was done."""
        seit = time.monotonic()
        tue()
        self.warte(gelungen, 0.1)
        self.ruhe()
        return self.laengste(seit)

    def beende(self):
        self.prozess.send_signal(signal.SIGTERM)
        self.prozess.wait(60)


class Vorlage:
    """A library to begin each run with, always under the same path: the cache knows files by their paths."""

    def __init__(self, wahl, ablage):
        erzeuge = wahl.bau / "bin" / "spurkiste-erzeuge"
        self.bau, self.quelle, self.ordner, self.cache = wahl.bau, wahl.bibliothek, ablage / "bibliothek", ablage / "cache"
        if self.quelle is None:
            self.quelle = ablage / "vorlage"
            fuehre(erzeuge, self.quelle, "--anzahl", wahl.anzahl, "--punkte", 60)
        self.stelle_hin()
        (self.ordner / CACHE).unlink(missing_ok=True)
        fuehre(wahl.bau / "bin" / "spurkiste-cli", "liste", self.ordner, "--format", "csv")
        shutil.copyfile(self.ordner / CACHE, self.cache)
        fuehre(erzeuge, ablage / "neue", "--anzahl", NEUE, "--punkte", 400, "--saat", 7, "--defekt", 0)
        self.neue = sorted((ablage / "neue").glob("*.[gG][pP][xX]"))

    def stelle_hin(self):
        """As at first. Links are enough: the program replaces files, it never writes into them."""
        shutil.rmtree(self.ordner, ignore_errors=True)
        fuehre("cp", "-al", self.quelle, self.ordner)
        if self.cache.exists():
            (self.ordner / CACHE).unlink(missing_ok=True)
            shutil.copyfile(self.cache, self.ordner / CACHE)


def lauf(vorlage, profil):
    """One run; the figures by name."""
    vorlage.stelle_hin()
    with tempfile.TemporaryDirectory() as heim:
        fenster = Fenster(vorlage.bau, vorlage.ordner, Path(heim))
        return messe_alles(fenster, dateien(vorlage.ordner), vorlage.neue, Path(heim), profil)


def messe_alles(fenster, anzahl, neue, heim, profil):
    ordner, werte = fenster.ordner, {}
    cache = ordner / CACHE
    try:
        werte["start to rows, s"] = fenster.zeit_bis_reihen(anzahl)
        fenster.ruhe()
        erste = fenster.buch.read_text().splitlines()[0].split()
        werte["start"] = fenster.laengste(int(erste[0]) / 1e9 + int(erste[1]) / 1e9)
        werte["before the event loop"] = (int(erste[2]) / 1e6, int(erste[1]) / 1e6)
        fuehre("xdotool", "search", "--sync", "--all", "--onlyvisible", "--pid", fenster.prozess.pid, "--name", "Korvo GPX Library",
               "windowfocus", "--sync", "mousemove", 5, 5)
        if profil:
            perf = subprocess.Popen(["perf", "record", "-q", "-g", "-F", "2000", "-o", profil, "-t", str(fenster.prozess.pid)],
                                    stderr=subprocess.DEVNULL)
        werte["F5"] = fenster.messe(lambda: taste("F5"), lambda: True)
        taste("Home", "Down")  # the first file is a broken one
        stand = cache.stat().st_mtime_ns
        taste("F4")
        time.sleep(0.5)
        taste("Down", "Down", "Down")
        werte["sport"] = fenster.messe(lambda: taste("Return"), lambda: cache.stat().st_mtime_ns != stand)
        taste("F2")
        time.sleep(0.3)
        taste("ctrl+a")
        fuehre("xdotool", "type", "umbenannt")
        werte["rename"] = fenster.messe(lambda: taste("Return"), lambda: (ordner / "umbenannt.gpx").exists())
        werte["trash"] = fenster.messe(lambda: taste("Delete"), lambda: dateien(ordner) == anzahl - 1)
        uebergib = [fenster.programm, "--ordner", ordner, *neue]
        werte[f"{len(neue)} files"] = fenster.messe(lambda: fuehre(*uebergib, env=fenster.umgebung),
                                                    lambda: dateien(ordner) == anzahl - 1 + len(neue))
        werte["Ctrl+A"] = fenster.messe(lambda: taste("ctrl+a"), lambda: True)
        werte["search, one letter"] = fenster.messe(lambda: taste("ctrl+f", "r"), lambda: True)
        werte["search cleared"] = fenster.messe(lambda: taste("Escape"), lambda: True)
        fenster.knopf("Sprache").doAction(0)
        time.sleep(0.5)
        taste("Down", "Down", "Down")
        werte["language"] = fenster.messe(lambda: taste("Return"), lambda: any(
            "appLanguage" in d.read_text(errors="replace") for d in heim.rglob("*") if d.is_file()))
        if profil:
            perf.send_signal(signal.SIGINT)
            perf.wait()
    finally:
        fenster.beende()
    return werte


def zeige(name, werte, grenze):
    """Prints a line; whether the bar was passed."""
    bar, ziel = grenze or (None, None)
    paare = [w if isinstance(w, tuple) else (w, w) for w in werte]
    cpu, uhr = (statistics.median(werte) for werte in zip(*paare))
    urteil = "" if bar is None else "goal" if cpu <= ziel else "ok" if cpu <= bar else "MISSED"
    print(f"{name:24} {cpu:8.2f} {uhr:8.2f}   {min(p[0] for p in paare):8.2f} .. {max(p[0] for p in paare):<8.2f} "
          f"{'' if bar is None else bar:>6} {'' if ziel is None else ziel:>6}  {urteil}")
    return bar is None or cpu <= bar


def main():
    wahl = lies_argumente()
    if "FENSTERMASS_INNEN" not in os.environ:
        return umgib()
    wahl.bau = wahl.bau.resolve()
    with tempfile.TemporaryDirectory(dir=wahl.ablage) as ablage:
        vorlage = Vorlage(wahl, Path(ablage))
        anzahl = dateien(vorlage.ordner)
        laeufe = [lauf(vorlage, wahl.profil) for _ in range(wahl.laeufe)]
    start, runde = GRENZEN.get(anzahl, (None, None))
    print(f"{anzahl} tracks, {os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}, medians of {wahl.laeufe}; turns in ms")
    print(f"{'':24} {'cpu':>8} {'clock':>8}   {'least .. most (cpu)':20} {'bar':>6} {'goal':>6}")
    ohne = ("before the event loop", "search, one letter", "search cleared")
    return 0 if all([zeige(name, [w[name] for w in laeufe], start if "rows" in name else None if name in ohne else runde)
                     for name in laeufe[0]]) else 1


if __name__ == "__main__":
    sys.exit(main())
