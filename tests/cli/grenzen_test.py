"""Bombs: files of which one part is as large as nobody would make it. Twice the size may take about twice the time, not four
times, and no more memory than the program sets aside for such things.

grenzen_test.py PROGRAM RESOURCES HELPERS [HALVES]: of the sizes below.
"""

import os
import tempfile

from pruefstand import CACHE, MENGE, PROGRAMM, SPEICHERPLATTE, beende, liste, rufe, schreibe

MIB = 1 << 20
PUNKT = b'<trkpt lat="1" lon="2"/>'


def gpx(vorn=b"", im_trk=b"", dtd=b"", am_punkt=b""):
    return b'<?xml version="1.0"?>' + dtd + b"<gpx><trk" + vorn + b">" + im_trk + b'<trkseg><trkpt lat="1" lon="2"' + am_punkt + b"/></trkseg></trk></gpx>"


def entitaeten(anzahl):
    alle = b"".join(b'<!ENTITY e%d "%s">' % (i, b"&e%d;" % (i - 1) * 3 if i % 8 else b"ha") for i in range(anzahl))
    return gpx(im_trk=b"<name>" + b"".join(b"&e%d;" % i for i in range(7, anzahl, 8)) + b"</name>", dtd=b"<!DOCTYPE gpx [" + alle + b"]>")


# What is large, how it is made of a size, and the size. Half of it is still on the same side of the 8 MiB from which documents
# are read in pieces, another way that takes longer.
BOMBEN = {
    "entities": (entitaeten, 10_000),
    "entities in each other": (lambda n: gpx(im_trk=b"<name>&e%d;</name>" % (n - 1), dtd=b'<!DOCTYPE gpx [<!ENTITY e0 "ha">' + b"".join(
        b'<!ENTITY e%d "&e%d;&e%d;">' % (i, i - 1, i - 1) for i in range(1, n)) + b"]>"), 2_000),
    "depth": (lambda n: gpx(im_trk=b"<a>" * n + b"</a>" * n), 250_000),
    "attributes": (lambda n: gpx(vorn=b"".join(b' a%d="1"' % i for i in range(n))), 100_000),
    "one attribute": (lambda n: gpx(am_punkt=b' name="' + b"x" * n + b'"'), 30 * MIB),
    "one text": (lambda n: gpx(im_trk=b"<name>" + b"x" * n + b"</name>"), 30 * MIB),
    "one comment": (lambda n: gpx(im_trk=b"<!--" + b"x" * n + b"-->"), 30 * MIB),
    "one instruction": (lambda n: gpx(im_trk=b"<?a " + b"x" * n + b"?>"), 30 * MIB),
    "one CDATA": (lambda n: gpx(im_trk=b"<name><![CDATA[" + b"x" * n + b"]]></name>"), 30 * MIB),
    "one name": (lambda n: gpx(im_trk=b"<" + b"x" * n + b"/>"), 30 * MIB),
    "points": (lambda n: gpx(im_trk=b"<trkseg>" + PUNKT * n + b"</trkseg>"), 800_000),
    "segments": (lambda n: gpx(im_trk=(b"<trkseg>" + PUNKT + b"</trkseg>") * n), 450_000),
}
# A record's value, and the whole file of nothing: by how much they are larger than what is large in a track.
CACHES = {
    "one cache value": lambda n: b'{"version":3,"eintraege":{"/a":{"pfad":"/a","dateiName":"' + b"x" * n + b'"}}}',
    "one cache number": lambda n: b'{"version":3,"eintraege":{"/a":{"pfad":"/a","punkte":' + b"1" * n + b"}}}",
    "cache depth": lambda n: b'{"version":3,"eintraege":' + b'{"a":' * (n // 5) + b"1" + b"}" * (n // 5) + b"}",
    "one cache sketch": lambda n: b'{"version":3,"eintraege":{"/a":{"pfad":"/a","skizze":[[' + b'{"breite":1,"laenge":2},' * (n // 24) + b'{"breite":1,"laenge":2}]]}}}',
}
CACHE_BYTES = 20 * MIB
KERN = 130 * MIB  # what reading takes at most, whatever the file
BUDGET = 256 * MIB  # what the XML library may take for what it must see whole
AM_STUECK = ("one attribute", "one name")


def im_kind(tue):
    """In a process of its own: a process that is started counts as its own what its parent held then."""
    if (kind := os.fork()) == 0:
        tue()
        os._exit(0)
    os.waitpid(kind, 0)


def main():
    fehler = []
    with tempfile.TemporaryDirectory(dir=SPEICHERPLATTE) as ordner:
        spur, cache = os.path.join(ordner, "a.gpx"), os.path.join(ordner, CACHE)
        leer = min(liste(ordner, "--ohne-cache").rechenzeit for _ in range(3))

        def messe(pfad, mach, groesse, *befehl):
            """The processor's time beyond that of starting, most memory, and the end."""
            im_kind(lambda: schreibe(pfad, mach(groesse)))
            lauf = rufe(*befehl)
            return max(lauf.rechenzeit - leer, 0), lauf.speicher, lauf.ende

        def vergleiche(was, pfad, mach, groesse, grenze, *befehl):
            zeit = messe(pfad, mach, groesse, *befehl)[0]
            for _ in range(3):  # others who disturb the caches only ever make it longer
                doppelt, speicher, ende = messe(pfad, mach, 2 * groesse, *befehl)
                if doppelt <= 3 * zeit + 0.03:
                    break
            print(f"{was}: {zeit:.3f} s, twice as large {doppelt:.3f} s and {speicher / MIB:.0f} MiB", flush=True)
            if ende not in (0, 1):
                fehler.append(f"{was} ends the program with {ende}")
            if doppelt > 3 * zeit + 0.03:  # a quadratic way takes four times as long
                fehler.append(f"{was}: twice the size takes {doppelt / max(zeit, 1e-9):.1f} times the time")
            if speicher > grenze:
                fehler.append(f"{was} takes {speicher / MIB:.0f} MiB")

        for was, (mach, groesse) in BOMBEN.items():
            for name, befehl in (("reading", ["liste", ordner, "--ohne-cache"]), ("sport", ["sport", "cycling", spur])):
                vergleiche(f"{was}, {name}", spur, mach, groesse * MENGE // 2, KERN + BUDGET * (was in AM_STUECK), PROGRAMM, *befehl)
            os.remove(spur)
        for was, mach in CACHES.items():
            # Beside the text itself, the JSON library notes four bytes for each of it, and up to two for texts.
            groesse = CACHE_BYTES * MENGE // 2
            vergleiche(was, cache, mach, groesse, KERN + 7 * 2 * groesse, PROGRAMM, "liste", ordner)
            os.remove(cache)
    beende(fehler, f"{2 * len(BOMBEN) + len(CACHES)} comparisons")


if __name__ == "__main__":
    main()
