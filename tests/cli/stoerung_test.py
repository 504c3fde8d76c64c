"""Lets every call of the system that has to do with the user's files fail once, and looks at what became of them.

stoerung_test.py PROGRAM RESOURCES HELPERS [INJECTIONS]: so many of all there are, 0 for all. After each: every file holds
its old or its new bytes, the user was told the truth, nothing is left over, and the next run finds everything right.
"""

import collections
import concurrent.futures
import errno
import os
import random
import re
import tempfile

from pruefstand import (CACHE, LAUF, MENGE, PROGRAMM, SPEICHERPLATTE, STOERUNG, beende, befehle, erwarte, erwarte_richtig, inhalt, lies, rufe,
                        schreibe, spur, vorlaeufige)

E = errno
KURZ = 0
OEFFNEN = [E.EIO, E.EINTR, E.EACCES, E.EMFILE, E.ENOMEM, E.ESTALE]
LESEN = [E.EIO, E.EINTR, E.ESTALE, KURZ]
SCHREIBEN = [E.ENOSPC, E.EIO, E.EINTR, KURZ]
SICHERN = [E.EIO, E.ENOSPC, E.EINTR]
NAMEN = [E.EIO, E.ENOSPC, E.EACCES, E.ENOMEM]
FRAGEN = [E.EIO, E.EACCES, E.ENOMEM, E.ESTALE]
# What the manual says of each call, and of those that do not say: what a file system over a network makes of it.
FEHLER = collections.defaultdict(lambda: [E.EIO, E.EACCES]) | {
    **dict.fromkeys(("open", "open64", "openat", "opendir"), OEFFNEN), **dict.fromkeys(("read", "pread", "pread64"), LESEN),
    **dict.fromkeys(("write", "pwrite", "copy_file_range"), SCHREIBEN), **dict.fromkeys(("fsync", "fdatasync", "syncfs"), SICHERN),
    **dict.fromkeys(("rename", "renameat2", "linkat", "unlink", "mkdir"), NAMEN),
    **dict.fromkeys(("stat", "lstat", "fstat", "fstatat"), FRAGEN), "close": SICHERN, "readdir": [E.EIO], "mmap": [E.ENOMEM, E.EACCES],
    "flock": [E.EINTR, E.ENOMEM], "ioctl": [E.EIO, E.EINTR], "fcntl": [E.EAGAIN, E.EINVAL, E.ENOMEM]}
# After these nothing is to be lost at all: the call is made again, or what is missing fetched.
HARMLOS = {("open", E.EINTR), ("openat", E.EINTR), ("read", E.EINTR), ("pread", E.EINTR), ("write", E.EINTR),
           ("copy_file_range", E.EINTR), ("flock", E.EINTR),
           ("fcntl", E.EAGAIN), ("fcntl", E.EINVAL), ("fcntl", E.ENOMEM)}
ALTE = {f"Bibliothek/{i}.gpx": spur(i, punkte=30 + 900 * (i % 2)) for i in range(4)} | {
    "fremd/neu.gpx": spur(77, punkte=500), "fremd/0.gpx": spur(78), "heim/spurkiste": b"alt=1\n"}


def mit(**neue):
    """All files as they were but these tracks, FOLDER_NAME; None: no file."""
    return {k: v for k, v in (ALTE | {name.replace("_", "/", 1) + ".gpx": v for name, v in neue.items()}).items() if v is not None}


KOPIEN = {"Bibliothek/neu.gpx": ALTE["fremd/neu.gpx"], "Bibliothek/0 2.gpx": ALTE["fremd/0.gpx"]}

# What is done: its name, whether there is a cache before, the command, what it is told, and all that may be in the files
# afterwards, what it is about last. {} stands for the place of the files.
Fall = collections.namedtuple("Fall", "name mit_cache befehl eingabe moegliche")
FAELLE = [
    Fall("reading", False, [PROGRAMM, "liste", "{}/Bibliothek", "--format", "json"], [], [ALTE]),
    Fall("reading with a cache", True, [PROGRAMM, "liste", "{}/Bibliothek", "--format", "json"], [], [ALTE]),
    Fall("checking", False, [PROGRAMM, "pruefe", "{}/Bibliothek", "--json"], [], [ALTE]),
    Fall("duplicates", False, [PROGRAMM, "doppelte", "{}/Bibliothek"], [], [ALTE]),
    Fall("sport", False, [PROGRAMM, "sport", "cycling", "{}/Bibliothek/1.gpx"], [],
         [ALTE, mit(Bibliothek_1=spur(1, "cycling", 930))]),
    Fall("import", True, [LAUF, "{}/Bibliothek", "{}/heim/spurkiste"],
         [["lade"], ["importiere", "{}/fremd/neu.gpx", "{}/fremd/0.gpx"]],
         [ALTE, *[ALTE | {name: text} for name, text in KOPIEN.items()], ALTE | KOPIEN]),
    Fall("rename", True, [LAUF, "{}/Bibliothek", "{}/heim/spurkiste"], [["lade"], ["benenne", "0", "anders"]],
         [ALTE, mit(Bibliothek_0=None, Bibliothek_anders=ALTE["Bibliothek/0.gpx"])]),
    Fall("sport in the library", True, [LAUF, "{}/Bibliothek", "{}/heim/spurkiste"], [["lade"], ["sport", "1", "cycling"]],
         [ALTE, mit(Bibliothek_1=spur(1, "cycling", 930))]),
    Fall("settings", True, [LAUF, "{}/Bibliothek", "{}/heim/spurkiste"], [["einstellung", "neu", "2"]],
         [ALTE, ALTE | {"heim/spurkiste": b"alt=1\nneu=2\n"}])]


class Buehne:
    """A library, another folder and settings, made anew for each injection in the same place, dates included."""

    def __init__(self, ort):
        self.ort, self.ordner, self.bericht = ort, os.path.join(ort, "Bibliothek"), os.path.join(ort, "bericht")
        for name in ("Bibliothek", "fremd", "heim"):
            os.mkdir(os.path.join(ort, name))
        self.bekannte = {}
        self.richte_ein(None)
        erwarte_richtig(self.ordner, "at first")
        self.cache = lies(os.path.join(self.ordner, CACHE))

    def richte_ein(self, cache):
        for name, text in (self.da() | ALTE).items():
            pfad = os.path.join(self.ort, name)
            os.remove(pfad) if name not in ALTE else schreibe(pfad, text)
        pfad = os.path.join(self.ordner, CACHE)
        if cache is not None:
            schreibe(pfad, cache)
        elif os.path.exists(pfad):
            os.remove(pfad)

    def da(self):
        return {f"{ordner}/{k}": v for ordner in ("Bibliothek", "fremd", "heim") for k, v in inhalt(os.path.join(self.ort, ordner)).items()}

    def laufe(self, fall, stoerung=""):
        self.richte_ein(self.cache if fall.mit_cache else None)
        if os.path.exists(self.bericht):
            os.remove(self.bericht)
        zeilen = [[wort.replace("{}", self.ort) for wort in zeile] for zeile in fall.eingabe]
        return rufe(*[wort.replace("{}", self.ort) for wort in fall.befehl], eingabe=befehle(*zeilen), LD_PRELOAD=STOERUNG, STOERUNG=stoerung,
                    STOERUNG_ORDNER=":".join(os.path.join(self.ort, name) for name in ("Bibliothek", "fremd", "heim")),
                    STOERUNG_BERICHT=self.bericht)

    def aufrufe(self, fall):
        """How often a case makes each call, undisturbed, and what it then says."""
        lauf = self.laufe(fall)
        erwarte(lauf.ende == 0, f"{fall.name}, undisturbed, {lauf}")
        self.pruefe(fall, lauf, lauf, "", 0)
        return {name: int(zahl) for name, zahl in re.findall(r"^count (\w+) (\d+)$", lies(self.bericht).decode(), re.M)}, lauf

    def pruefe(self, fall, lauf, vorbild, aufruf, fehler):
        da, gesagt = self.da(), lauf.aus + lauf.fehler
        reste = vorlaeufige(name.rsplit("/")[-1] for name in da)
        erwarte(not reste or aufruf in ("unlink", "unlinkat"), f"left behind {reste}")
        da = {k: v for k, v in da.items() if k.rsplit("/")[-1] not in reste}
        erwarte(da in fall.moegliche, f"neither old nor new: {({k: v and len(v) for k, v in da.items() ^ ALTE.items()})}")
        erwarte(lauf.ende in (0, 1), "no way to end")
        for name in ("Bibliothek/1.gpx", "heim/spurkiste"):
            erwarte(os.stat(os.path.join(self.ort, name)).st_mode & 0o7777 & ~0o640 == 0, f"{name} has more rights than before")
        if lauf.ende == 0:
            # Settings that cannot be written hold for the run, and nobody is told.
            erwarte(fall.name == "settings" or da == fall.moegliche[-1], "it ends with 0 and has not done it")
            erwarte(lauf.aus == vorbild.aus or fall.befehl[0] == LAUF, "it ends with 0 and gives something else")
            return
        erwarte(fehler != KURZ and (aufruf, fehler) not in HARMLOS, "it need not fail")
        erwarte(any(satz in gesagt for satz in (os.strerror(fehler), "Ordner nicht erreichbar", "konnte nach dem Schreiben nicht neu")),
                "it does not say why")
        erwarte(da != fall.moegliche[-1] or len(fall.moegliche) == 1 or aufruf not in ("close", "flock", "unlink"), "it says it failed and did it")


def probiere(buehne, fall, vorbild, aufruf, nummer, fehler):
    """What is wrong after one injection; None when it was not reached, since threads do not always take the same way."""
    lauf = buehne.laufe(fall, f"{aufruf}:{nummer}:{fehler}")
    if b"hit" not in (lies(buehne.bericht) or b""):
        return None
    wie = f"{fall.name}, {aufruf} {nummer}, {E.errorcode.get(fehler, 'short')}: {lauf}"
    try:
        buehne.pruefe(fall, lauf, vorbild, aufruf, fehler)
        erwarte_richtig(buehne.ordner, "afterwards", buehne.bekannte)
    except AssertionError as falsch:
        return [f"{wie}: {falsch}"]
    return []


def main():
    with tempfile.TemporaryDirectory(dir=SPEICHERPLATTE) as ablage:
        kerne = os.cpu_count()
        for nummer in range(kerne):
            os.mkdir(os.path.join(ablage, str(nummer)))
        buehnen = [Buehne(os.path.join(ablage, str(nummer))) for nummer in range(kerne)]
        versuche = []
        for fall in FAELLE:
            zahlen = buehnen[0].aufrufe(fall)[0]
            versuche += [(fall, name, i + 1, fehler) for name, zahl in zahlen.items() for i in range(zahl) for fehler in FEHLER[name]]
        if MENGE:
            versuche = random.Random(1).sample(versuche, MENGE)

        def arbeite(kern):
            vorbilder = {fall.name: buehnen[kern].aufrufe(fall)[1] for fall in FAELLE}
            return [probiere(buehnen[kern], fall, vorbilder[fall.name], *rest) for fall, *rest in versuche[kern::kerne]]

        with concurrent.futures.ThreadPoolExecutor(kerne) as faeden:
            befunde = [befund for teil in faeden.map(arbeite, range(kerne)) for befund in teil if befund is not None]
    erwarte(len(befunde) > 0.9 * len(versuche), f"only {len(befunde)} of {len(versuche)} injections were reached")
    beende([satz for befund in befunde for satz in befund], f"{len(befunde)} calls failed")


if __name__ == "__main__":
    main()
