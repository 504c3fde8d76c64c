"""Gives the programs less and less memory and fewer and fewer files to open at once.

engpass_test.py PROGRAM RESOURCES HELPERS [STEPS]: so many for each command. Nothing ends by a signal: it succeeds as ever,
or ends with 1 and a sentence, and the files and the next run are right.
"""

import os
import tempfile

from pruefstand import LAUF, MENGE, PROGRAMM, SPEICHERPLATTE, beende, befehle, erwarte, erwarte_richtig, inhalt, lies, rufe, schreibe, spur

MIB = 1 << 20


def bedarf(*befehl, **wie):
    """How much address space a command needs at least, in MiB."""
    zu_wenig, genug = 1, 4096
    while genug - zu_wenig > 1:
        mitte = (zu_wenig + genug) // 2
        if rufe(*befehl, grenze=f"--as={mitte * MIB}", **wie).ende == 0:
            genug = mitte
        else:
            zu_wenig = mitte
    return genug


def main():
    fehler, gescheitert, gelungen = [], 0, 0
    with tempfile.TemporaryDirectory(dir=SPEICHERPLATTE) as ablage:
        ordner, fremd = (os.path.join(ablage, name) for name in ("Bibliothek", "fremd"))
        os.mkdir(ordner)
        os.mkdir(fremd)
        alte = {f"{i}.gpx": spur(i, punkte=30 if i else 60000) for i in range(40)}
        neu = spur(77, punkte=1000)
        quelle = schreibe(os.path.join(fremd, "neu.gpx"), neu)
        pfad = os.path.join(ordner, "0.gpx")
        berg = os.path.join(fremd, "berg.gpx")
        with open(berg, "wb") as datei:
            datei.truncate(3 << 30)
        anderes = {"0.gpx": spur(0, "cycling", 60000)}
        # What is done, what it is told, and which files it may change to what.
        befehle_ = [
            ([PROGRAMM, "liste", ordner, "--format", "json"], "", {}), ([PROGRAMM, "liste", ordner, "--ohne-cache", "--format", "csv"], "", {}),
            ([PROGRAMM, "pruefe", ordner, "--json"], "", {}), ([PROGRAMM, "doppelte", ordner], "", {}),
            ([PROGRAMM, "sport", "cycling", pfad], "", anderes), ([PROGRAMM, "sport", "cycling", berg], "", {}),
            ([LAUF, ordner, os.path.join(ablage, "einstellungen")], befehle(["lade"], ["importiere", quelle]), {"neu.gpx": neu})]
        kleinster = bedarf(PROGRAMM, "--version")
        for befehl, eingabe, neue in befehle_:
            def richte_ein():
                for name in os.listdir(ordner):
                    if name not in alte:
                        os.remove(os.path.join(ordner, name))
                for name, text in alte.items():
                    if lies(os.path.join(ordner, name)) != text:
                        schreibe(os.path.join(ordner, name), text)

            richte_ein()
            vorbild = rufe(*befehl, eingabe=eingabe, grenze=f"--as={2048 * MIB}")
            richte_ein()
            genug = 400 if berg in befehl else bedarf(*befehl, eingabe=eingabe)
            schritt = max(1, (genug - kleinster) // (MENGE // 2))
            grenzen = [f"--as={mib * MIB}" for mib in range(kleinster, genug + schritt, schritt)]
            grenzen += [f"--nofile={anzahl}" for anzahl in range(4, 4 + MENGE // 2)]
            for grenze in grenzen:
                richte_ein()
                lauf = rufe(*befehl, eingabe=eingabe, grenze=grenze)
                gescheitert, gelungen = gescheitert + (lauf.ende != 0), gelungen + (lauf.ende == 0)
                try:
                    if lauf.ende == 127 and "error while loading shared libraries" in lauf.fehler:
                        continue  # before anything of ours runs
                    erwarte(lauf.ende in (0, 1), "no way to end")
                    erwarte(lauf.ende == vorbild.ende == 0 and lauf.aus == vorbild.aus or lauf.ende == 1 and lauf.aus + lauf.fehler,
                            "it gives something else, or no reason")
                    da = inhalt(ordner)
                    erwarte(da in (alte, alte | neue) and (lauf.ende or da == alte | neue), "the files are not as it says")
                    erwarte(lies(quelle) == neu and os.path.getsize(berg) == 3 << 30, "a source has changed")
                    erwarte_richtig(ordner, "afterwards")
                except AssertionError as falsch:
                    fehler.append(f"{' '.join(befehl[:2])} with {grenze}: {lauf}: {falsch}")
    erwarte(min(gescheitert, gelungen) > 5, f"{gescheitert} failed and {gelungen} succeeded: the bounds bound nothing")
    beende(fehler, f"{gescheitert + gelungen} runs with too little, of which {gescheitert} failed")


if __name__ == "__main__":
    main()
