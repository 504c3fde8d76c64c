"""Kills a library that imports and renames, again and again at random moments, and looks at what it left behind.

toetung_test.py PROGRAM RESOURCES HELPERS [KILLS]: of each kind. No file may be lost, torn or doubled, what was said to be
done is done, and the next reading of the folder finds nothing foreign. Writing sports and reading have tests of their own.
"""

import concurrent.futures
import os
import random
import subprocess
import tempfile

from pruefstand import (LAUF, MENGE, SPEICHERPLATTE, UMGEBUNG, beende, befehle, erwarte, erwarte_richtig, inhalt, schreibe, spur,
                        vorlaeufige)

DATEIEN = 12


class Import:
    """Every copy is whole or not there."""

    def __init__(self, fremd):
        self.quellen = {f"{i}.gpx": spur(i, punkte=200 + 500 * i) for i in range(DATEIEN)}
        self.pfade = [schreibe(os.path.join(fremd, name), text) for name, text in self.quellen.items()]

    def zeilen(self, _da):
        return [["lade"], *[["importiere", *self.pfade[i:i + 3]] for i in range(0, DATEIEN, 3)]]

    def pruefe(self, da, gesagt):
        erwarte(da.items() <= self.quellen.items(), "a copy is torn")
        sicher = [f"{i}.gpx" for i in range(3 * (gesagt - 1))]
        erwarte(da.keys() >= set(sicher), "a copy that was confirmed is gone")

    def raeume(self, ordner):
        for name in self.quellen:
            if os.path.exists(pfad := os.path.join(ordner, name)):
                os.remove(pfad)


class Umbenennen:
    """Every content stands under one name: that which was said to be its last one, or the next."""

    def __init__(self, _fremd):
        self.texte = [spur(i, punkte=200) for i in range(DATEIEN)]
        self.runde = 0

    def zeilen(self, da):
        self.runde += 1
        jetzt = {text: name[:-4] for name, text in da.items()}
        self.namen = [[jetzt[text], *(f"Runde {self.runde} - {nummer} - {mal}" for mal in range(10))] for nummer, text in enumerate(self.texte)]
        return [["lade"], *[["benenne", *namen[mal:mal + 2]] for mal in range(10) for namen in self.namen]]

    def pruefe(self, da, gesagt):
        erwarte(sorted(da.values()) == sorted(self.texte), "a file is lost, torn or there twice")
        for name, text in da.items():
            nummer = self.texte.index(text)
            mal = len(range(nummer, gesagt - 1, DATEIEN))
            erwarte(name[:-4] in self.namen[nummer][mal:mal + 2], f"{name} is not what it was said to be called, nor the next")

    def raeume(self, ordner):
        if not inhalt(ordner):
            for nummer, text in enumerate(self.texte):
                schreibe(os.path.join(ordner, f"{nummer}.gpx"), text)


class Takt:
    """How long a step takes, on this machine and with this build, however busy it becomes: the kills fall into it."""

    def __init__(self):
        self.dauer = 0.002

    def lerne(self, mitten):
        self.dauer *= 1.2 if mitten else 0.5


def toete(fall, ordner, einstellungen, zufall, takt):
    """Lets some steps be done, and kills it in those that follow; returns whether it was still at work, and left something."""
    zeilen = [befehle(zeile).encode() for zeile in fall.zeilen(inhalt(ordner))]
    davor = zufall.randrange(1, len(zeilen) * 3 // 4)
    with subprocess.Popen([LAUF, ordner, einstellungen], stdin=subprocess.PIPE, stdout=subprocess.PIPE, env=UMGEBUNG, bufsize=0) as lauf:
        lauf.stdin.write(b"".join(zeilen[:davor]))
        gesagt = [lauf.stdout.readline() for _ in range(davor)]
        gefragt = zeilen[davor:]
        lauf.stdin.write(b"".join(gefragt))
        try:
            lauf.wait(zufall.uniform(0, 2) * takt.dauer)  # a moment, not a hope
        except subprocess.TimeoutExpired:
            lauf.kill()
        gesagt += lauf.stdout.readlines()
    erwarte(set(gesagt) == {b"gut\n"}, f"it said {gesagt}")
    mitten = len(gesagt) < davor + len(gefragt)
    takt.lerne(mitten)
    da = inhalt(ordner)
    reste = vorlaeufige(da)
    fall.pruefe({k: v for k, v in da.items() if k not in reste}, len(gesagt))
    erwarte_richtig(ordner, "afterwards")
    return mitten, bool(reste)


def toete_oft(art):
    """The findings, how often it was still at work, and how often something was left."""
    zufall, takt, fehler, mitten, reste = random.Random(1), Takt(), [], 0, 0
    with tempfile.TemporaryDirectory(dir=SPEICHERPLATTE) as ablage:
        ordner, fremd = (os.path.join(ablage, name) for name in ("Bibliothek", "fremd"))
        os.mkdir(ordner)
        os.mkdir(fremd)
        fall = art(fremd)
        for runde in range(MENGE):
            fall.raeume(ordner)
            try:
                war_mitten, hatte_reste = toete(fall, ordner, os.path.join(ablage, "einstellungen"), zufall, takt)
                mitten, reste = mitten + war_mitten, reste + hatte_reste
            except AssertionError as falsch:
                fehler.append(f"{art.__name__}, kill {runde}: {falsch}")
    erwarte(mitten + len(fehler) > MENGE // 5, f"only {mitten} of {MENGE} were killed at work")
    return fehler, mitten, reste


def main():
    with concurrent.futures.ThreadPoolExecutor(2) as faeden:
        fehler, mitten, reste = zip(*faeden.map(toete_oft, (Import, Umbenennen)))
    beende(sum(fehler, []), f"{2 * MENGE} kills, {sum(mitten)} in the middle, {sum(reste)} times something left and cleaned away by the "
                            "next reading")


if __name__ == "__main__":
    main()
