"""The stage for the tests of the real window: a display and a bus of their own, the program on them, and what a screen
reader sees of it.

Each test beside this file is started as TEST.py PROGRAM RESOURCES.
"""

import os
import subprocess
import sys
import tempfile
import time
import unittest

from gi.repository import GLib

SPUR = """<?xml version="1.0"?><gpx><trk>{sport}<trkseg>
<trkpt lat="47.3769" lon="8.5417"><ele>400</ele>{erste}</trkpt>
<trkpt lat="{breite}" lon="8.5417"><ele>420</ele>{zweite}</trkpt></trkseg></trk></gpx>"""
BEGINN, ENDE = "<time>{tag}T06:15:00Z</time>", "<time>{tag}T07:15:00Z</time>"


def spur(breite, tag=None, sport=""):
    erste, zweite = (BEGINN.format(tag=tag), ENDE.format(tag=tag)) if tag else ("", "")
    return SPUR.format(breite=breite, erste=erste, zweite=zweite, sport=sport)


def xdotool(*worte):
    return subprocess.run(["xdotool", *map(str, worte)], capture_output=True, text=True, timeout=60, check=True).stdout


class Fluechtig(Exception):
    """What was asked about vanished under the question."""


def warte_bis(bedingung, worauf):
    """Asks again and again until the answer is true; what is waited for comes from another process, and may change
    while it is read. What is waited for is a text, or a function that gives it once all waiting was in vain."""
    ende, fehler = time.monotonic() + 60, None
    while time.monotonic() < ende:
        try:
            antwort, fehler = bedingung(), None
            if antwort:
                return antwort
        except (GLib.Error, Fluechtig) as verpasst:
            fehler = verpasst
        time.sleep(0.05)
    raise AssertionError("did not happen: " + (worauf if isinstance(worauf, str) else worauf())) from fehler


class Programm:
    """A running program and its window, as a screen reader sees it."""

    def __init__(self, atspi, ordner, heim, oben=0, umgebung=None):
        self.atspi, self.ordner = atspi, ordner
        self.umgebung = os.environ | {
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb", "LANG": "de_DE.UTF-8", "TZ": "UTC",
            "SPURKISTE_RESSOURCEN": RESSOURCEN, "HOME": heim, "XDG_CONFIG_HOME": heim, "XDG_RUNTIME_DIR": heim, "XDG_DATA_HOME": heim} | (umgebung or {})
        self.prozess = subprocess.Popen([PROGRAMM, "--ordner", ordner], env=self.umgebung)
        try:
            warte_bis(self.fenster, "the window appears on the accessibility bus")
            self.nummer, = self.nummern()
            if oben:
                xdotool("windowmove", "--sync", self.nummer, 0, oben)
            warte_bis(lambda: len(self.reihen()) == len(self.dateien()), "all files are listed")
        except BaseException:
            self.beende()
            raise

    def nummern(self):
        """What the display calls the windows."""
        return xdotool("search", "--sync", "--all", "--onlyvisible", "--pid", self.prozess.pid, "--name", "Korvo GPX Library").split()

    def hole_nach_vorn(self):
        """What a window manager would do: without one, no window gets the keyboard by itself."""
        xdotool("windowfocus", "--sync", self.nummer)
        warte_bis(lambda: any(f.getState().contains(self.atspi.STATE_ACTIVE) for f in self.fenster()), "the window has the keyboard")

    def fenster(self):
        """All windows of the program, dialogs included."""
        for anwendung in self.atspi.Registry.getDesktop(0):
            try:
                if anwendung is not None and anwendung.get_process_id() == self.prozess.pid:
                    return [f for f in anwendung if f is not None]
            except GLib.Error:  # another program that is ending
                pass
        return []

    def elemente(self, sichtbar=False):
        """All there is, the insides of the table left out: they are many. On request only what can be seen."""
        offen = self.fenster()
        while offen:
            element = offen.pop()
            if element is None or sichtbar and not element.getState().contains(self.atspi.STATE_SHOWING):
                continue
            yield element
            offen += list(element) if element.getRole() != self.atspi.ROLE_TABLE else []

    def alle(self, *rollen, name=None):
        return [e for e in self.elemente() if e.getRole() in rollen and (name is None or e.name == name)]

    def eines(self, *rollen, name):
        return warte_bis(lambda: self.alle(*rollen, name=name), f"there is {name}")[0]

    def texte(self):
        return [e.name for e in self.alle(self.atspi.ROLE_LABEL)]

    def druecke(self, name):
        self.eines(self.atspi.ROLE_PUSH_BUTTON, name=name).queryAction().doAction(0)

    def flaechen(self):
        """The X windows of the program that can be seen, menus included, which no accessible tree lists."""
        lauf = subprocess.run(["xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.prozess.pid), "--name", ""],
                              capture_output=True, text=True, timeout=60)
        return set(lauf.stdout.split())

    def waehle(self, oeffne, *tasten):
        """Opens a menu and takes the item that these keys lead to."""
        vorher = self.flaechen()
        oeffne()
        menue = warte_bis(lambda: self.flaechen() - vorher, "the menu opens")
        xdotool("key", *tasten, "Return")
        warte_bis(lambda: not self.flaechen() & menue, "the menu is closed")

    # --- The table --------------------------------------------------------------------------------------------------

    def tabelle(self):
        tabellen = self.alle(self.atspi.ROLE_TABLE)
        if not tabellen:
            raise Fluechtig("no table")
        return tabellen[0].queryTable()

    def zelle_bei(self, reihe, spalte, tabelle=None):
        zelle = (tabelle or self.tabelle()).getAccessibleAt(reihe, spalte)
        if zelle is None:
            raise Fluechtig(f"no cell at {reihe}, {spalte}")
        return zelle

    def reihen(self):
        """The names, from top to bottom."""
        tabelle = self.tabelle()
        return [self.zelle_bei(reihe, 0, tabelle).name for reihe in range(tabelle.nRows)]

    def zelle(self, name, spalte=0):
        reihen = self.reihen()
        if name not in reihen:
            raise Fluechtig(f"{name} is not listed")
        return self.zelle_bei(reihen.index(name), spalte)

    def mitte(self, element):
        lage = element.queryComponent().getExtents(self.atspi.DESKTOP_COORDS)
        return lage.x + min(lage.width // 2, 60), lage.y + lage.height // 2

    def klicke(self, name, knopf=1):
        ort = warte_bis(lambda: self.mitte(self.zelle(name)), f"{name} is listed")
        xdotool("windowfocus", "--sync", self.nummer, "mousemove", *ort, "click", knopf)

    def waehle_zeile(self, name):
        self.klicke(name)
        warte_bis(lambda: name + ".gpx" in self.texte(), f"{name} is selected")

    def erwarte_reihen(self, *namen):
        warte_bis(lambda: self.reihen() == list(namen), lambda: f"{namen} are listed, but {self.reihen()}")

    # --- The disk ---------------------------------------------------------------------------------------------------

    def dateien(self):
        return sorted(name for name in os.listdir(self.ordner) if name.lower().endswith(".gpx"))

    def lies(self, name):
        with open(os.path.join(self.ordner, name), encoding="utf-8") as datei:
            return datei.read()

    def erwarte_dateien(self, *namen):
        """In the folder and in the table, in whatever order."""
        warte_bis(lambda: self.dateien() == sorted(name + ".gpx" for name in namen), lambda: f"{namen} are there, but {self.dateien()}")
        warte_bis(lambda: sorted(self.reihen()) == sorted(namen), lambda: f"{namen} are listed, but {self.reihen()}")

    def beende(self):
        self.prozess.terminate()
        self.prozess.wait(30)


class Fenstertest(unittest.TestCase):
    """Tests of the window, each of which stands on those before it. Made for them: a place for their files."""

    @classmethod
    def setUpClass(cls):
        import pyatspi  # only here: it talks to the bus as soon as it is loaded

        cls.atspi = pyatspi
        ablage = tempfile.TemporaryDirectory()
        cls.addClassCleanup(ablage.cleanup)
        cls.ablage = ablage.name

    @classmethod
    def fuelle(cls, ordner, dateien):
        """Makes a folder of such files, without their ending, and returns its path."""
        pfad = os.path.join(cls.ablage, ordner)
        os.makedirs(pfad, mode=0o700)
        for name, text in dateien.items():
            with open(os.path.join(pfad, name + ".gpx"), "w", encoding="utf-8") as datei:
                datei.write(text)
        return pfad

    @classmethod
    def starte(cls, ordner, heim, oben=0, umgebung=None):
        programm = Programm(cls.atspi, ordner, heim, oben, umgebung)
        cls.addClassCleanup(programm.beende)
        return programm

    def run(self, result=None):
        result.failfast = True
        return super().run(result)


def innen():
    ergebnis = unittest.main(argv=sys.argv[:1], exit=False).result
    sys.exit(0 if ergebnis.wasSuccessful() and ergebnis.testsRun > 0 else 1)


def aussen():
    """Gives the tests a display, with room for two windows, and a bus, and nothing of the desktop that they run on.

    Keys do not repeat: on a busy machine one can seem held down that was only pressed.
    """
    lesen, schreiben = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(schreiben), "-screen", "0", "1440x1720x24", "-nolisten", "tcp", "-noreset", "-r"],
                              pass_fds=[schreiben], stderr=subprocess.DEVNULL)
    os.close(schreiben)
    with os.fdopen(lesen) as strom:
        anzeige = ":" + strom.readline().strip()
    try:
        fremd = ("QT_", "XDG_", "LC_", "LANG", "DBUS_", "AT_SPI_", "KDE_", "GNOME_", "GTK_", "DESKTOP_", "WAYLAND_", "XAUTHORITY")
        umgebung = {k: v for k, v in os.environ.items() if not k.startswith(fremd)} | {"DISPLAY": anzeige, "INNEN": "1"}
        sys.exit(subprocess.run(["dbus-run-session", "--", sys.executable, *sys.argv], env=umgebung, timeout=280).returncode)
    finally:
        server.terminate()
        server.wait()


def main():
    (innen if os.environ.get("INNEN") else aussen)()


PROGRAMM, RESSOURCEN = sys.argv[1], sys.argv[2]
