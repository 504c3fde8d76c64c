"""Works with files in the real window: drops, names, sports, trash, folder, language; and looks at the disk after each.

aktionen_test.py PROGRAM RESOURCES: like fenster_test.py, whose surroundings it shares.
"""

import os
import subprocess
import sys
import tempfile
import unittest

import fenster_test
from fenster_test import PROGRAMM, RESSOURCEN, spur, warte_bis

HOEHE = 860


class Programm:
    """A running program and its window, as a screen reader sees it."""

    def __init__(self, atspi, ordner, heim, oben):
        self.atspi, self.ordner = atspi, ordner
        self.umgebung = os.environ | {
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "QT_QPA_PLATFORM": "xcb", "LANG": "de_DE.UTF-8", "TZ": "UTC",
            "SPURKISTE_RESSOURCEN": RESSOURCEN, "HOME": heim, "XDG_CONFIG_HOME": heim, "XDG_RUNTIME_DIR": heim, "XDG_DATA_HOME": heim}
        self.prozess = subprocess.Popen([PROGRAMM, "--ordner", ordner], env=self.umgebung)
        warte_bis(self.fenster, "the window appears on the accessibility bus")
        self.nummer = xdotool("search", "--sync", "--all", "--onlyvisible", "--pid", self.prozess.pid, "--name", "Korvo GPX Library").split()[0]
        xdotool("windowmove", "--sync", self.nummer, 0, oben) if oben else None
        warte_bis(lambda: len(self.namen()) == len(self.dateien()), "all files are listed")

    def fenster(self):
        """All windows of the program, dialogs included."""
        for anwendung in self.atspi.Registry.getDesktop(0):
            if anwendung is not None and anwendung.get_process_id() == self.prozess.pid:
                return [f for f in anwendung if f is not None]
        return []

    def alle(self, *rollen, name=None):
        def passt(element):
            return element.getRole() in rollen and (name is None or element.name == name)
        return [e for fenster in self.fenster() for e in self.atspi.findAllDescendants(fenster, passt)]

    def eines(self, *rollen, name):
        return warte_bis(lambda: self.alle(*rollen, name=name), f"there is {name}")[0]

    def druecke(self, name):
        self.eines(self.atspi.ROLE_PUSH_BUTTON, name=name).queryAction().doAction(0)

    def sichtbare(self):
        """The X windows of the program that can be seen, menus included, which no accessible tree lists."""
        lauf = subprocess.run(["xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.prozess.pid), "--name", ""],
                              capture_output=True, text=True, timeout=60)
        return len(lauf.stdout.split())

    def waehle(self, oeffne, *tasten):
        """Opens a menu and takes the item that these keys lead to."""
        vorher = self.sichtbare()
        oeffne()
        warte_bis(lambda: self.sichtbare() > vorher, "the menu opens")
        xdotool("key", *tasten, "Return")
        warte_bis(lambda: self.sichtbare() == vorher, "the menu is closed")

    def tabelle(self):
        return self.alle(self.atspi.ROLE_TABLE)[0].queryTable()

    def namen(self):
        tabelle = self.tabelle()
        return sorted(tabelle.getAccessibleAt(zeile, 0).name for zeile in range(tabelle.nRows))

    def zelle(self, name, spalte=0):
        tabelle = self.tabelle()
        for zeile in range(tabelle.nRows):
            if tabelle.getAccessibleAt(zeile, 0).name == name:
                return tabelle.getAccessibleAt(zeile, spalte)
        raise AssertionError(f"{name} is not listed")

    def mitte(self, element):
        lage = element.queryComponent().getExtents(self.atspi.DESKTOP_COORDS)
        return lage.x + min(lage.width // 2, 60), lage.y + lage.height // 2

    def klicke(self, name, *wie):
        xdotool("windowfocus", "--sync", self.nummer, "mousemove", *self.mitte(self.zelle(name)), "click", *(wie or ["1"]))

    def waehle_zeile(self, name):
        self.klicke(name)
        warte_bis(lambda: name + ".gpx" in self.texte(), f"{name} is selected")

    def texte(self):
        return [e.name for e in self.alle(self.atspi.ROLE_LABEL)]

    def dateien(self):
        return sorted(name for name in os.listdir(self.ordner) if name.lower().endswith(".gpx"))

    def lies(self, name):
        with open(os.path.join(self.ordner, name), encoding="utf-8") as datei:
            return datei.read()

    def beende(self):
        self.prozess.terminate()
        self.prozess.wait(30)


def xdotool(*worte):
    return subprocess.run(["xdotool", *map(str, worte)], capture_output=True, text=True, timeout=60, check=True).stdout


def fuelle(ordner, dateien):
    os.makedirs(ordner)
    for name, text in dateien.items():
        with open(os.path.join(ordner, name + ".gpx"), "w", encoding="utf-8") as datei:
            datei.write(text)


class Aktionen(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        import pyatspi

        cls.ablage = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.ablage.cleanup)
        heim, heim2 = os.path.join(cls.ablage.name, "heim"), os.path.join(cls.ablage.name, "heim2")
        for ort in (heim, heim2):
            os.makedirs(ort, mode=0o700)
        cls.heim, cls.heim2 = heim, heim2
        meine, fremde = os.path.join(cls.ablage.name, "Meine Touren"), os.path.join(cls.ablage.name, "Täler & Höhen")
        fuelle(meine, {"Alpen": spur(47.4, "2023-01-02"), "Tour": spur(47.5, "2024-09-21", "<type>running</type>"),
                       "Zürichberg": spur(47.6, "2022-05-01")})
        fuelle(fremde, {"Neue Spur": spur(47.7, "2024-01-01"), "Zürichberg": spur(47.8, "2024-01-02")})
        cls.mein = Programm(pyatspi, meine, heim, 0)
        cls.addClassCleanup(cls.mein.beende)
        cls.fremd = Programm(pyatspi, fremde, heim2, HOEHE)
        cls.addClassCleanup(cls.fremd.beende)
        cls.atspi = pyatspi

    def erwarte_dateien(self, *namen):
        warte_bis(lambda: self.mein.dateien() == sorted(namen), f"{namen}, but there is {self.mein.dateien()}")
        warte_bis(lambda: self.mein.namen() == sorted(name[:-4] for name in namen), "the table shows them")

    def test_1_takes_files_dropped_from_another_program(self):
        self.fremd.klicke("Neue Spur")
        xdotool("key", "ctrl+a")
        x, y = self.fremd.mitte(self.fremd.zelle("Neue Spur"))
        xdotool("mousemove", x, y, "mousedown", 1)
        for schritt in range(1, 12):
            xdotool("mousemove", x + 20 * schritt, y - (y - 500) * schritt // 11)
        # The veil says that the window takes them; only then are they let go.
        warte_bis(lambda: self.fremd.prozess.poll() is None and self.schleier(), "the window offers to take them")
        xdotool("mouseup", 1)
        self.erwarte_dateien("Alpen.gpx", "Neue Spur.gpx", "Tour.gpx", "Zürichberg 2.gpx", "Zürichberg.gpx")
        self.assertEqual(self.fremd.dateien(), ["Neue Spur.gpx", "Zürichberg.gpx"])
        self.assertEqual(self.mein.lies("Zürichberg 2.gpx"), self.fremd.lies("Zürichberg.gpx"))

    def schleier(self):
        return [e for e in self.mein.alle(self.atspi.ROLE_FILLER, self.atspi.ROLE_PANEL, self.atspi.ROLE_UNKNOWN, self.atspi.ROLE_LABEL,
                                          name="GPX-Dateien ablegen") if e.getState().contains(self.atspi.STATE_SHOWING)]

    def test_2_renames_by_keyboard(self):
        self.mein.waehle_zeile("Tour")
        xdotool("key", "F2")
        self.mein.eines(self.atspi.ROLE_TEXT, name="Dateiname")
        xdotool("type", "--delay", "20", "  Abend/runde.GPX ")
        xdotool("key", "Return")
        self.erwarte_dateien("Abend-runde.gpx", "Alpen.gpx", "Neue Spur.gpx", "Zürichberg 2.gpx", "Zürichberg.gpx")
        warte_bis(lambda: "Abend-runde.gpx" in self.mein.texte(), "the panel shows it under its new name")

    def test_3_never_renames_over_another_file(self):
        vorher = self.mein.lies("Alpen.gpx")
        self.mein.waehle_zeile("Abend-runde")
        xdotool("key", "F2")
        self.mein.eines(self.atspi.ROLE_TEXT, name="Dateiname")
        xdotool("type", "--delay", "20", "Alpen")
        xdotool("key", "Return")
        warte_bis(lambda: "Es gibt schon eine Datei „Alpen.gpx“" in self.mein.texte(), "the notice")
        self.assertEqual(self.mein.lies("Alpen.gpx"), vorher)
        xdotool("key", "F2")
        self.mein.eines(self.atspi.ROLE_TEXT, name="Dateiname")
        xdotool("key", "Escape")
        warte_bis(lambda: not self.mein.alle(self.atspi.ROLE_TEXT, name="Dateiname"), "Escape closes the sheet")

    def test_4_sets_the_sport_from_the_row_the_panel_and_the_header(self):
        self.mein.waehle_zeile("Alpen")
        for oeffne, tasten, sport, rohwert in (
                (lambda: xdotool("key", "space"), ["End"], "Kajak", "kayaking"),
                (lambda: self.mein.druecke("Sportart Kajak"), ["Up"], "Rudern", "rowing"),
                (lambda: self.mein.druecke("Sportart ändern"), ["Home", "Down"], "Laufen", "running")):
            self.mein.waehle(oeffne, *tasten)
            warte_bis(lambda: f"<type>{rohwert}</type>" in self.mein.lies("Alpen.gpx"), f"{rohwert} stands in the file")
            warte_bis(lambda: self.mein.zelle("Alpen", 2).name == "Sportart " + sport, "the table says so")
        self.mein.waehle(lambda: self.mein.druecke("Sport: alle"), "l")  # to the first sport with this letter
        warte_bis(lambda: self.mein.namen() == ["Abend-runde", "Alpen"], "the filter knows the new sport")
        self.mein.druecke("Zurücksetzen")
        warte_bis(lambda: len(self.mein.namen()) == 5, "all are shown again")

    def test_5_throws_away_what_is_selected(self):
        self.mein.waehle_zeile("Neue Spur")
        xdotool("key", "Delete")
        self.erwarte_dateien("Abend-runde.gpx", "Alpen.gpx", "Zürichberg 2.gpx", "Zürichberg.gpx")
        self.assertEqual(os.listdir(os.path.join(self.heim, "Trash/files")), ["Neue Spur.gpx"])
        self.mein.waehle(lambda: self.mein.klicke("Zürichberg 2", "3"), "End")
        self.erwarte_dateien("Abend-runde.gpx", "Alpen.gpx", "Zürichberg.gpx")

    def test_6_a_second_start_hands_its_files_over(self):
        fremde = os.path.join(self.fremd.ordner, "Neue Spur.gpx")
        zweiter = subprocess.run([PROGRAMM, "--ordner", self.mein.ordner, fremde, os.path.join(self.mein.ordner, "Alpen.gpx"), "/"],
                                 env=self.mein.umgebung, timeout=60)
        self.assertEqual(zweiter.returncode, 0)
        self.erwarte_dateien("Abend-runde.gpx", "Alpen.gpx", "Neue Spur.gpx", "Zürichberg.gpx")
        warte_bis(lambda: "Alpen.gpx" in self.mein.texte(), "the file of the library is shown")

    def test_7_speaks_another_language_in_all_windows(self):
        xdotool("windowfocus", "--sync", self.mein.nummer, "key", "ctrl+n")
        warte_bis(lambda: len(self.mein.alle(self.atspi.ROLE_PUSH_BUTTON, name="Neu laden")) == 2, "a second window")
        self.mein.waehle(lambda: self.mein.druecke("Sprache"), "Home", "Down", "Down")  # the system's, German, English
        warte_bis(lambda: len(self.mein.alle(self.atspi.ROLE_PUSH_BUTTON, name="Import")) == 2, "both windows are English")
        with open(os.path.join(self.heim, "spurkiste/einstellungen.conf"), encoding="utf-8") as datei:
            self.assertIn("appLanguage=en", datei.read())

    def test_8_changes_the_folder(self):
        ziel = os.path.join(self.ablage.name, "leer")
        os.mkdir(ziel)
        self.mein.druecke("Folder")
        warte_bis(lambda: [f for f in self.mein.fenster() if f.name == "Bibliotheksordner wählen"], "the chooser opens")
        xdotool("search", "--sync", "--onlyvisible", "--name", "Bibliotheksordner", "windowfocus", "--sync")
        xdotool("type", "--delay", "20", ziel)
        xdotool("key", "Return")
        warte_bis(lambda: not [f for f in self.mein.fenster() if f.name == "Bibliotheksordner wählen"], "the chooser is closed")
        warte_bis(lambda: self.mein.namen() == [], "the new folder is shown")
        with open(os.path.join(self.heim, "spurkiste/einstellungen.conf"), encoding="utf-8") as datei:
            self.assertIn("bibliothekOrdner=" + ziel, datei.read())

    def test_9_starts_again_after_a_crash(self):
        self.fremd.prozess.kill()
        self.fremd.prozess.wait(30)
        wieder = Programm(self.atspi, self.fremd.ordner, self.heim2, HOEHE)  # waits for its window and its rows
        self.addCleanup(wieder.beende)
        self.assertIsNone(wieder.prozess.poll())


if __name__ == "__main__":
    fenster_test.main()
