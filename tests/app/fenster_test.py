"""Uses the real window on a real X server, and reads it as a screen reader does, over the accessibility bus.

fenster_test.py PROGRAM RESOURCES: starts an X server and a session bus of its own for the run.
"""

import os
import subprocess
import sys
import tempfile
import time
import unittest

SPUR = """<?xml version="1.0"?><gpx><trk>{sport}<trkseg>
<trkpt lat="47.3769" lon="8.5417"><ele>400</ele>{erste}</trkpt>
<trkpt lat="{breite}" lon="8.5417"><ele>420</ele>{zweite}</trkpt></trkseg></trk></gpx>"""
BEGINN, ENDE = "<time>{tag}T06:15:00Z</time>", "<time>{tag}T07:15:00Z</time>"


def spur(breite, tag=None, sport=""):
    erste, zweite = (BEGINN.format(tag=tag), ENDE.format(tag=tag)) if tag else ("", "")
    return SPUR.format(breite=breite, erste=erste, zweite=zweite, sport=sport)


def warte_bis(bedingung, worauf):
    """Asks again and again until the answer is true; what is waited for comes from another process."""
    ende = time.monotonic() + 30
    while time.monotonic() < ende:
        antwort = bedingung()
        if antwort:
            return antwort
        time.sleep(0.05)
    raise AssertionError("did not happen: " + worauf)


class Fenster(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        import pyatspi  # only here: it talks to the bus as soon as it is loaded

        cls.atspi = pyatspi
        cls.ablage = tempfile.TemporaryDirectory()
        cls.ordner = os.path.join(cls.ablage.name, "Meine Touren")
        os.mkdir(cls.ordner)
        for name, text in {
            "Tour 2": spur(47.4769, "2024-09-21", "<type>running</type>"),
            "Tour 10": spur(47.9769, "2024-10-03", "<type>cycling</type>"),
            "alpen": spur(47.3869, "2023-01-02"),
            "Alpen": spur(47.3879),
            "Zürichberg": spur(47.5769, "2022-05-01", "<type>paragliding</type>"),
        }.items():
            with open(os.path.join(cls.ordner, name + ".gpx"), "w", encoding="utf-8") as datei:
                datei.write(text)
        with open(os.path.join(cls.ordner, "kaputt.gpx"), "w", encoding="utf-8") as datei:
            datei.write("<gpx><trk>")
        cls.prozess = subprocess.Popen(
            [PROGRAMM, "--ordner", cls.ordner],
            env=os.environ | {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb", "LANG": "de_DE.UTF-8", "TZ": "UTC",
                              "SPURKISTE_RESSOURCEN": RESSOURCEN, "XDG_CONFIG_HOME": cls.ablage.name,
                              "XDG_RUNTIME_DIR": cls.ablage.name})
        cls.fenster = warte_bis(cls.finde_fenster, "the window appears on the accessibility bus")
        nummer = cls.xdotool("search", "--sync", "--onlyvisible", "--name", "Korvo GPX Library").split()[0]
        cls.xdotool("windowfocus", "--sync", nummer)
        warte_bis(lambda: len(cls.namen()) == 6, "all files are listed")

    @classmethod
    def tearDownClass(cls):
        cls.prozess.terminate()
        cls.prozess.wait(30)
        cls.ablage.cleanup()

    @staticmethod
    def xdotool(*worte):
        return subprocess.run(["xdotool", *worte], capture_output=True, text=True, timeout=60, check=True).stdout

    @classmethod
    def finde_fenster(cls):
        for anwendung in cls.atspi.Registry.getDesktop(0):
            if anwendung is not None and anwendung.name == "spurkiste":
                for fenster in anwendung:
                    if fenster.name == "Korvo GPX Library":
                        return fenster
        return None

    @classmethod
    def alle(cls, rolle):
        return cls.atspi.findAllDescendants(cls.fenster, lambda e: e.getRole() == rolle)

    @classmethod
    def knopf(cls, name):
        knoepfe = [k for k in cls.alle(cls.atspi.ROLE_PUSH_BUTTON) if k.name == name]
        return knoepfe[0] if knoepfe else None

    @classmethod
    def tabelle(cls):
        return cls.alle(cls.atspi.ROLE_TABLE)[0].queryTable()

    @classmethod
    def namen(cls):
        tabelle = cls.tabelle()
        return [tabelle.getAccessibleAt(zeile, 0).name for zeile in range(tabelle.nRows)]

    @classmethod
    def texte(cls):
        return [e.name for e in cls.alle(cls.atspi.ROLE_LABEL)]

    def zeile(self, name):
        tabelle = self.tabelle()
        stelle = self.namen().index(name)
        return [tabelle.getAccessibleAt(stelle, spalte).name for spalte in range(tabelle.nColumns)]

    def erwarte_namen(self, *namen):
        warte_bis(lambda: self.namen() == list(namen), f"{namen}, but there is {self.namen()}")

    def klicke_kopf(self, titel):
        kopf = [e for e in self.alle(self.atspi.ROLE_TABLE_COLUMN_HEADER) + self.alle(self.atspi.ROLE_COLUMN_HEADER)
                if e.name == titel][0]
        lage = kopf.queryComponent().getExtents(self.atspi.DESKTOP_COORDS)
        self.xdotool("mousemove", str(lage.x + lage.width // 2), str(lage.y + lage.height // 2), "click", "1")

    def suche(self, text):
        self.xdotool("key", "ctrl+f")
        self.xdotool("key", "ctrl+a", "Delete")
        if text:
            self.xdotool("type", "--delay", "30", text)

    def test_1_shows_every_file_as_the_figures_say(self):
        self.assertEqual(self.zeile("Tour 2"), ["Tour 2", "21.09.24", "Sportart Laufen", "11,1 km", "1:00:00", "–", "2",
                                                "Zeitstempel vorhanden — Ghost-tauglich", "→ Strecke", "Zürich", "Oberglatt"])
        self.assertEqual(self.zeile("Zürichberg")[2], "Sportart paragliding")
        self.assertEqual(self.zeile("alpen")[2], "Sportart Wandern")
        self.assertEqual(self.zeile("kaputt")[3:8], ["0 m", "–", "–", "0", "Keine Zeitstempel"])
        self.assertIn("6 ROUTEN", self.texte())
        self.assertIn("6 Dateien", self.texte())
        self.assertIn(self.ordner, self.texte())

    def test_2_names_every_control(self):
        for name in ("Importieren", "Ordner", "Neu laden", "Sprache", "Start: alle", "Ziel: alle", "Sport: alle",
                     "Ghost: alle", "Art: alle", "Länge: alle"):
            self.assertIsNotNone(self.knopf(name), name)
        felder = self.alle(self.atspi.ROLE_TEXT)
        self.assertEqual([f.name for f in felder], ["Suchen"])

    def test_3_sorts_by_a_click_on_a_title(self):
        self.klicke_kopf("Name")
        self.erwarte_namen("Alpen", "alpen", "kaputt", "Tour 2", "Tour 10", "Zürichberg")
        self.klicke_kopf("Name")
        warte_bis(lambda: self.namen()[0] == "Zürichberg", "the order is reversed")
        self.klicke_kopf("Länge")
        warte_bis(lambda: self.namen()[0] == "kaputt" and self.namen()[-1] == "Tour 10", "sorted by length")

    def test_4_finds_what_is_typed_and_takes_it_back(self):
        self.klicke_kopf("Name")
        self.suche("tour")
        warte_bis(lambda: sorted(self.namen()) == ["Tour 10", "Tour 2"], "the search narrows the table")
        self.assertIn("2 / 6 ROUTEN", self.texte())
        self.suche("tour x")
        warte_bis(lambda: "Nichts gefunden" in self.texte(), "the empty state")
        self.xdotool("key", "Escape")
        warte_bis(lambda: len(self.namen()) == 6, "Escape empties the search")

    def test_5_filters_with_the_keyboard_and_resets(self):
        self.knopf("Art: alle").queryComponent().grabFocus()
        self.xdotool("key", "space")
        self.xdotool("key", "Down", "Return")
        warte_bis(lambda: self.knopf("Art: Strecke"), "the filter is set")
        self.knopf("Zurücksetzen").queryAction().doAction(0)
        warte_bis(lambda: self.knopf("Art: alle"), "the filter is taken back")

    def test_6_reads_the_folder_again(self):
        with open(os.path.join(self.ordner, "Neu.gpx"), "w", encoding="utf-8") as datei:
            datei.write(spur(47.5, "2025-01-01"))
        self.xdotool("key", "F5")
        warte_bis(lambda: "Neu" in self.namen(), "the new file is listed")
        os.remove(os.path.join(self.ordner, "Neu.gpx"))
        self.knopf("Neu laden").queryAction().doAction(0)
        warte_bis(lambda: "Neu" not in self.namen(), "the removed file is gone")


def innen():
    ergebnis = unittest.main(argv=sys.argv[:1], exit=False).result
    sys.exit(0 if ergebnis.wasSuccessful() and ergebnis.testsRun > 0 else 1)


def aussen():
    """Gives the tests a display, with room for two windows, and a bus."""
    lesen, schreiben = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(schreiben), "-screen", "0", "1440x1720x24", "-nolisten", "tcp", "-noreset"],
                              pass_fds=[schreiben], stderr=subprocess.DEVNULL)
    os.close(schreiben)
    with os.fdopen(lesen) as strom:
        anzeige = ":" + strom.readline().strip()
    try:
        umgebung = {k: v for k, v in os.environ.items() if not k.startswith(("QT_", "XDG_", "LC_", "DBUS_"))} | {"DISPLAY": anzeige, "INNEN": "1"}
        sys.exit(subprocess.run(["dbus-run-session", "--", sys.executable, *sys.argv], env=umgebung, timeout=280).returncode)
    finally:
        server.terminate()
        server.wait()


def main():
    (innen if os.environ.get("INNEN") else aussen)()


PROGRAMM, RESSOURCEN = sys.argv[1], sys.argv[2]
if __name__ == "__main__":
    main()
