"""The package in a fresh system: installed, started, removed, with nothing left behind."""

import contextlib
import os
import re
import stat
import subprocess
import time

from . import frisch
from .bericht import GEDULD, rufe, umgebung
from .inhalt import FENSTERKLASSE, GROESSEN

# What dpkg writes anew whatever it does.
DPKGS_EIGENES = {"var/lib/dpkg/" + name for name in (
    "lock", "lock-frontend", "status", "status-old", "info/format", "triggers/Lock", "triggers/Unincorp")}
SPUR = """<?xml version="1.0" encoding="UTF-8"?>
<gpx version="1.1" creator="made up" xmlns="http://www.topografix.com/GPX/1/1"><trk><trkseg>
<trkpt lat="47.3769" lon="8.5417"><time>2024-05-01T17:00:00Z</time></trkpt>
<trkpt lat="47.3869" lon="8.5417"><time>2024-05-01T17:10:00Z</time></trkpt>
</trkseg></trk></gpx>
"""


def baue_frisch(paket, ort, archive):
    """A Debian with nothing but what is essential and what the package says it needs."""
    bedarf = rufe("dpkg-deb", "-f", paket, "Depends").stdout
    namen = {re.split(r"[ (|]", teil.strip())[0] for teil in bedarf.split(",")}
    return frisch.baue(ort, frisch.ausgabe(archive), archive, "essential", namen)


def verzeichnis(ort):
    """Every path below with its kind, its rights and, for a file, its size."""
    alles = {}
    for ordner, unterordner, dateien in os.walk(ort):
        for name in unterordner + dateien:
            pfad = os.path.join(ordner, name)
            angaben = os.lstat(pfad)
            groesse = angaben.st_size if stat.S_ISREG(angaben.st_mode) else 0
            alles[os.path.relpath(pfad, ort)] = (stat.filemode(angaben.st_mode), groesse)
    return alles


@contextlib.contextmanager
def bildschirm():
    """An X server without a screen; gives its name."""
    lesen, schreiben = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(schreiben), "-screen", "0", "1440x860x24", "-nolisten", "tcp", "-noreset"],
                              pass_fds=[schreiben], stderr=subprocess.DEVNULL)
    os.close(schreiben)
    try:
        with os.fdopen(lesen) as strom:
            yield ":" + strom.readline().strip()
    finally:
        server.terminate()
        server.wait()


class Bewohner:
    """A user of the installed system, with a home of their own inside it."""

    def __init__(self, ort, frisch):
        self.ort = ort
        self.wechsel = ["unshare", "--mount", "--pid", "--fork", "--kill-child", "--mount-proc", "--root=" + ort] if frisch else []
        self.innen = "" if frisch else ort
        self.heim = os.path.join(ort, "tmp/heim")
        os.makedirs(os.path.join(self.heim, "lauf"), mode=0o700)
        os.makedirs(os.path.join(self.heim, "Bibliothek"))
        self.lege("Bibliothek/Abendrunde.gpx")

    def lege(self, name):
        with open(os.path.join(self.heim, name), "w", encoding="utf-8") as datei:
            datei.write(SPUR + f"<!-- {name} -->\n")  # the same bytes twice would be imported once

    def befehl(self, programm, *worte):
        return [*self.wechsel, f"{self.innen}/usr/bin/{programm}", *worte]

    def pfad(self, name):
        return f"{self.innen}/tmp/heim/{name}"

    def umfeld(self, **weitere):
        heim = f"{self.innen}/tmp/heim"
        return umgebung(HOME=heim, XDG_RUNTIME_DIR=heim + "/lauf", XDG_CONFIG_HOME=heim + "/.config", XDG_DATA_HOME=heim + "/.local",
                        XDG_CACHE_HOME=heim + "/.cache", PATH=f"{self.innen}/usr/bin:/usr/bin:/bin", **weitere)


def lege_leer_an(ort):
    """A folder that dpkg takes for a system without any package."""
    for ordner in ("tmp", "var/lib/dpkg/info", "var/lib/dpkg/triggers", "var/lib/dpkg/updates"):
        os.makedirs(os.path.join(ort, ordner))
    with open(os.path.join(ort, "var/lib/dpkg/status"), "w", encoding="utf-8"):
        pass


def pruefe(bericht, paket, ablage):
    ort = os.path.join(ablage, "wurzel")
    archive = frisch.quellen()
    grund = frisch.warum_nicht(archive, ablage)
    dpkg = ["dpkg", "--root=" + ort, "--log=/dev/null"]
    if grund:
        print(f"No fresh system, for {grund}: an empty folder instead, and nothing proves what the package depends on")
        lege_leer_an(ort)
        dpkg += ["--force-depends", "--force-not-root", "--force-bad-path"]
    elif not bericht.pruefe("a fresh system with what the package needs", *baue_frisch(paket, ort, archive)):
        return
    vorher = verzeichnis(ort)
    if not bericht.laufe("dpkg installs it", *dpkg, "-i", paket):
        return
    bewohner = Bewohner(ort, frisch=not grund)
    pruefe_kommandozeile(bericht, bewohner)
    pruefe_fenster(bericht, bewohner)
    rufe("rm", "-r", "--", bewohner.heim)
    bericht.laufe("dpkg removes it", *dpkg, "-r", "spurkiste")
    nachher = verzeichnis(ort)
    rest = {pfad for pfad in vorher.keys() | nachher.keys() if vorher.get(pfad) != nachher.get(pfad)}
    bericht.gleich("nothing is left behind, nothing is missing", sorted(rest - DPKGS_EIGENES), [])
    bericht.pruefe("dpkg has forgotten it", rufe("dpkg-query", f"--admindir={ort}/var/lib/dpkg", "-W", "spurkiste").returncode != 0)


def pruefe_kommandozeile(bericht, bewohner):
    lauf = rufe(*bewohner.befehl("spurkiste-cli", "liste", bewohner.pfad("Bibliothek"), "--format", "csv", "--ohne-cache"),
                env=bewohner.umfeld())
    bericht.pruefe("spurkiste-cli lists a track and finds its place", lauf.returncode == 0 and "Zürich" in lauf.stdout, lauf.stdout)


def warte_bis(bedingung):
    ende = time.monotonic() + GEDULD
    while not (ergebnis := bedingung()) and time.monotonic() < ende:
        time.sleep(0.1)
    return ergebnis


def pruefe_fenster(bericht, bewohner):
    bewohner.lege("Morgenrunde.gpx")
    ziel = os.path.join(bewohner.heim, "Bibliothek/Morgenrunde.gpx")
    with bildschirm() as schirm:
        aussen = umgebung(DISPLAY=schirm)
        programm = subprocess.Popen(
            bewohner.befehl("spurkiste", "--ordner", bewohner.pfad("Bibliothek"), bewohner.pfad("Morgenrunde.gpx")),
            env=bewohner.umfeld(DISPLAY=schirm, QT_QPA_PLATFORM="xcb"), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT, text=True)
        try:
            suche = ("xdotool", "search", "--onlyvisible", "--name", "Korvo GPX Library")
            nummern = warte_bis(lambda: rufe(*suche, env=aussen).stdout.split() or programm.poll() is not None)
            if bericht.pruefe("spurkiste opens its window", isinstance(nummern, list)):
                pruefe_eigenschaften(bericht, nummern[0], aussen)
                bericht.pruefe("it imports the file it was given", warte_bis(lambda: os.path.exists(ziel)), "it does not")
                rufe("xdotool", "windowfocus", "--sync", nummern[0], "key", "ctrl+w", env=aussen)
                warte_bis(lambda: programm.poll() is not None)
                bericht.gleich("it ends when the window is closed", programm.poll(), 0)
        finally:
            programm.kill()
            bericht.gleich("and had nothing to complain about", programm.communicate()[0], "")


def pruefe_eigenschaften(bericht, nummer, aussen):
    """What the window tells the desktop."""
    klasse = rufe("xprop", "-id", nummer, "-notype", "WM_CLASS", env=aussen).stdout
    bericht.gleich("the window belongs to the desktop entry", klasse.strip(), f'WM_CLASS = "spurkiste", "{FENSTERKLASSE}"')
    zahlen = [int(z) for z in re.findall(r"\d+", rufe("xprop", "-id", nummer, "-notype", "32c", "_NET_WM_ICON", env=aussen).stdout)]
    groessen = []
    while len(zahlen) > 2:
        groessen.append(zahlen[0])
        zahlen = zahlen[2 + zahlen[0] * zahlen[1]:]
    bericht.gleich("the window has the icon in all sizes", tuple(sorted(groessen)), GROESSEN)
