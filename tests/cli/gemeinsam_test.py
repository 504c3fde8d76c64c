"""Four processes at work on one folder: two that read it and write the cache, one that writes sports, one that renames and
imports.

gemeinsam_test.py PROGRAM RESOURCES HELPERS [SECONDS]: nothing is lost, torn or there twice, each reads what is there, and at
the end the cache is right.
"""

import itertools
import json
import os
import subprocess
import tempfile
import threading
import time

from pruefstand import LAUF, MENGE, PROGRAMM, SPEICHERPLATTE, UMGEBUNG, beende, befehle, erwarte, erwarte_richtig, inhalt, liste, rufe, schreibe, spur

DATEIEN = 24
IMPORTE = 16  # so many rounds from one to the next: else the folder would grow without end
SPORTARTEN = ["cycling", "running", "kayaking", "mountain_biking"]


class Gemeinsam:
    def __init__(self, ablage):
        self.ablage, self.ordner = ablage, os.path.join(ablage, "Bibliothek")
        self.fehler, self.laeufe, self.schluss = [], 0, threading.Event()
        self.runden, self.sport, self.bis = 0, None, time.monotonic() + MENGE
        os.mkdir(self.ordner)
        for nummer in range(DATEIEN):
            schreibe(os.path.join(self.ordner, f"{nummer}.gpx"), spur(nummer, punkte=100 + nummer))

    def lese(self):
        """A file that gets another name while the folder is read is there twice or not at all, but never half."""
        while not self.schluss.is_set():
            lauf = liste(self.ordner)
            self.laeufe += 1
            if lauf.ende != 0:
                self.fehler.append(f"reading {lauf}")
            elif not {e["punkte"] for e in json.loads(lauf.aus)} <= set(range(100, 100 + DATEIEN)) | {500}:
                self.fehler.append("something half was read")

    def setze_sport(self):
        """The first half of the files keeps its names."""
        pfade = [os.path.join(self.ordner, f"{nummer}.gpx") for nummer in range(DATEIEN // 2)]
        for sport in itertools.cycle(SPORTARTEN):
            self.sport = sport
            lauf = rufe(PROGRAMM, "sport", sport, *pfade)
            if lauf.ende != 0:
                self.fehler.append(f"sport {lauf}")
            if time.monotonic() > self.bis:
                return

    def benenne_und_importiere(self):
        """The second half gets a new name in each round, and now and then one more file comes."""
        quelle = schreibe(os.path.join(self.ablage, "neu.gpx"), spur(99, punkte=500))
        namen = {nummer: str(nummer) for nummer in range(DATEIEN // 2, DATEIEN)}
        with subprocess.Popen([LAUF, self.ordner, os.path.join(self.ablage, "einstellungen")], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              env=UMGEBUNG, bufsize=0) as lauf:
            while self.runden < 2 or time.monotonic() < self.bis:
                runde, self.runden = self.runden, self.runden + 1
                zeilen = [["lade"]] if runde % 4 == 0 else []
                for nummer, alt in namen.items():
                    namen[nummer] = f"{nummer} in {runde}"
                    zeilen.append(["benenne", alt, namen[nummer]])
                if runde % IMPORTE == 0:
                    zeilen.append(["importiere", quelle])
                lauf.stdin.write(befehle(*zeilen).encode())
                for zeile in zeilen:
                    if (antwort := lauf.stdout.readline()) != b"gut\n":
                        self.fehler.append(f"{zeile}: {antwort}")
        return {f"{namen[nummer]}.gpx" for nummer in namen}

    def laufe(self):
        leser = [threading.Thread(target=self.lese) for _ in range(2)]
        schreiber = threading.Thread(target=self.setze_sport)
        for faden in [*leser, schreiber]:
            faden.start()
        namen = self.benenne_und_importiere()
        schreiber.join()
        self.schluss.set()
        for faden in leser:
            faden.join()
        da = inhalt(self.ordner)
        erwartet = {f"{i}.gpx": spur(i, self.sport, 100 + i) for i in range(DATEIEN // 2)}
        erwartet |= {name: spur(int(name.split()[0]), punkte=100 + int(name.split()[0])) for name in namen}
        erwartet |= {"neu.gpx" if i < 2 else f"neu {i}.gpx": spur(99, punkte=500) for i in range(1, (self.runden - 1) // IMPORTE + 2)}
        for name in da.keys() | erwartet.keys():
            if da.get(name) != erwartet.get(name):
                self.fehler.append(f"{name} is {'torn' if name in da and name in erwartet else 'lost' if name in erwartet else 'nobody'}" + "'s" * (name not in erwartet))
        erwarte(len(erwarte_richtig(self.ordner, "at the end")) == len(erwartet), "not all are listed at the end")


def main():
    with tempfile.TemporaryDirectory(dir=SPEICHERPLATTE) as ablage:
        gemeinsam = Gemeinsam(ablage)
        try:
            gemeinsam.laufe()
        except AssertionError as falsch:
            gemeinsam.fehler.append(str(falsch))
    beende(gemeinsam.fehler, f"{gemeinsam.runden} rounds, read {gemeinsam.laeufe} times meanwhile")


if __name__ == "__main__":
    main()
