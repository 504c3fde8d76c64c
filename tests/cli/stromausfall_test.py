"""Takes the power away from a file system at random moments: it lives in a file, which is copied while a library on it
imports, renames and writes sports, and the copy is what a disk would hold after the cut.

stromausfall_test.py PROGRAM RESOURCES HELPERS [CUTS]: needs root and loop devices; where there are none nothing is checked,
and that is said. After each cut the file system is repaired as at the next start; then no file is lost or torn, and what was
said to be done is there: a copy, a sport; of a renamed file the content, under one of both names.
"""

import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile

from pruefstand import CACHE, LAUF, MENGE, UMGEBUNG, beende, befehle, erwarte, schreibe, spur

SPORTARTEN = ["cycling", "running", "kayaking", "mountain_biking"]
DATEIEN = 8
IMPORTE = 4


def tue(*befehl, gut=(0,)):
    lauf = subprocess.run(befehl, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
    erwarte(lauf.returncode in gut, f"{' '.join(befehl)}: {lauf.stdout}")
    return lauf.stdout


class Platte:
    def __init__(self, ablage):
        self.bild, self.ort, self.kopie, self.danach = (os.path.join(ablage, name) for name in ("bild", "ort", "kopie", "danach"))
        os.mkdir(self.ort)
        os.mkdir(self.danach)

    def beginne(self):
        """A fresh file system. It gives what is written its place late and its names early, as they all do."""
        with open(self.bild, "wb") as datei:
            datei.truncate(48 << 20)
        tue("mkfs.ext4", "-q", "-F", self.bild)
        tue("mount", "-o", "loop,commit=1", self.bild, self.ort)
        geraet = os.path.basename(tue("findmnt", "-n", "-o", "SOURCE", self.ort).strip())
        self.zaehler = f"/sys/block/{geraet}/stat"

    def ende(self):
        subprocess.run(["umount", "-l", self.ort], stderr=subprocess.DEVNULL, check=False)

    def schreibstand(self):
        """How much was written so far; nothing while something is under way."""
        with open(self.zaehler, encoding="ascii") as datei:
            felder = datei.read().split()
        return None if felder[8] != "0" else (felder[4], felder[6])

    def schneide_ab(self):
        """Copies what is on the disk at one moment: as often as somebody has written meanwhile, again."""
        while True:
            vorher = self.schreibstand()
            shutil.copyfile(self.bild, self.kopie)
            if vorher is not None and vorher == self.schreibstand():
                return

    def danach_da(self):
        """What stands on the disk after the power has come back: every file's bytes by its path."""
        tue("e2fsck", "-f", "-p", self.kopie, gut=(0, 1))
        tue("mount", "-o", "loop,ro", self.kopie, self.danach)
        try:
            da = {}
            for ort, _, namen in os.walk(os.path.join(self.danach, "Bibliothek")):
                for name in namen:
                    with open(os.path.join(ort, name), "rb") as datei:
                        da[name] = datei.read()
            return da
        finally:
            tue("umount", self.danach)


class Arbeit:
    """What the library is told, and what must be there after so many of it were confirmed."""

    def __init__(self, platte, ablage):
        self.ordner = os.path.join(platte.ort, "Bibliothek")
        os.mkdir(self.ordner)
        for nummer in range(DATEIEN):
            schreibe(os.path.join(self.ordner, f"{nummer}.gpx"), spur(nummer, punkte=300))
        os.sync()
        quellen = [schreibe(os.path.join(ablage, f"neu {i}.gpx"), spur(50 + i, punkte=400)) for i in range(200)]
        self.schritte = [["lade"]]
        for runde in range(200 // IMPORTE):
            self.schritte.append(["importiere", *quellen[runde * IMPORTE:(runde + 1) * IMPORTE]])
            nummer = runde % (DATEIEN // 2)
            self.schritte.append(["sport", str(nummer), SPORTARTEN[runde // (DATEIEN // 2) % len(SPORTARTEN)]])
            self.schritte.append(["benenne", self.name(runde, 0), self.name(runde, 1)])

    @staticmethod
    def name(runde, nach):
        nummer, mal = DATEIEN // 2 + runde % (DATEIEN // 2), runde // (DATEIEN // 2) + nach
        return f"{nummer} zum {mal}" if mal else str(nummer)

    def pruefe(self, da, gesagt):
        getan = self.schritte[:gesagt]
        da = {k: v for k, v in da.items() if k != CACHE and not k.endswith(".tmp")}
        importiert = {os.path.basename(pfad) for schritt in getan if schritt[0] == "importiere" for pfad in schritt[1:]}
        fehlt = importiert - da.keys()
        erwarte(not fehlt, f"{len(fehlt)} copies that were confirmed are gone")
        leer = [name for name in da if name.startswith("neu ") and da[name] != spur(50 + int(name[4:-4]), punkte=400)]
        erwarte(not leer, f"{len(leer)} copies are torn ({sum(not da[name] for name in leer)} empty), {len(importiert & set(leer))} of them confirmed")
        for nummer in range(DATEIEN // 2):
            arten = [None, *(s[2] for s in self.schritte if s[0] == "sport" and s[1] == str(nummer))]
            fertig = sum(s[0] == "sport" and s[1] == str(nummer) for s in getan)
            erwarte(da.get(f"{nummer}.gpx") in [spur(nummer, art, 300) for art in arten[fertig:fertig + 2]], f"the sport of {nummer} is not what was confirmed")
        for nummer in range(DATEIEN // 2, DATEIEN):
            namen = [name for name in da if re.fullmatch(rf"{nummer}( zum \d+)?\.gpx", name)]
            erwarte([da[name] for name in namen] == [spur(nummer, punkte=300)], f"the renamed file {nummer} is lost, torn or there twice: {namen}")


def lebe(platte, ablage, zufall, schnitte, fehler):
    """One life of a file system, with cuts at random moments of it. Returns how many there were, and of how many steps."""
    arbeit = Arbeit(platte, ablage)
    gemacht = gesagt = 0
    with subprocess.Popen([LAUF, arbeit.ordner, os.path.join(ablage, "einstellungen")], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          env=UMGEBUNG, bufsize=0) as lauf:
        while gemacht < schnitte and gesagt < len(arbeit.schritte) - 30:
            bis = gesagt + zufall.randrange(1, 12)
            lauf.stdin.write(befehle(*arbeit.schritte[gesagt:bis + 1]).encode())
            antworten = [lauf.stdout.readline() for _ in range(gesagt, bis)]
            if zufall.random() < 0.5:  # a neighbour who is in a hurry brings all names onto the disk, but no bytes of ours
                with open(os.path.join(platte.ort, "nachbar"), "wb") as datei:
                    datei.write(b"x")
                    os.fsync(datei.fileno())
            lauf.send_signal(signal.SIGSTOP)
            platte.schneide_ab()
            lauf.send_signal(signal.SIGCONT)
            try:
                erwarte(set(antworten) == {b"gut\n"}, f"it said {antworten}")
                arbeit.pruefe(platte.danach_da(), bis)
            except AssertionError as falsch:
                fehler.append(f"cut after {bis} steps: {falsch}")
            gesagt = bis + 1
            erwarte(lauf.stdout.readline() == b"gut\n", "the step that was interrupted is done")
            gemacht += 1
    return gemacht, gesagt


def main():
    with tempfile.TemporaryDirectory() as ablage:
        platte = Platte(ablage)
        try:
            platte.beginne()
        except (AssertionError, OSError) as warum:
            platte.ende()
            print(f"skipped, no power was cut: {warum}")
            return 0
        zufall, schnitte, schritte, fehler = random.Random(1), 0, 0, []
        while schnitte < MENGE:
            try:
                mehr = lebe(platte, ablage, zufall, MENGE - schnitte, fehler)
            finally:
                platte.ende()
            schnitte, schritte = schnitte + mehr[0], schritte + mehr[1]
            if schnitte < MENGE:
                platte.beginne()
    return beende(fehler, f"{schnitte} power cuts in {schritte} steps")


if __name__ == "__main__":
    sys.exit(main())
