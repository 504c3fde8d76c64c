"""Does the whole job with keys alone: no mouse, and the accessibility bus is only read. Looks after each step at the
disk, and at names, roles, states and reading order of all that can be seen.

tastatur_test.py PROGRAM RESOURCES.
"""

import os
import subprocess

import buehne
from buehne import spur, xdotool
from ohr import Ohrentest


class Tastatur(Ohrentest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.stick = cls.fuelle("Stick & Karte", {"Neue Spur": spur(47.7, "2024-01-01"), "Alpen": spur(47.8, "2024-01-02")})
        cls.beginne({"Alpen": spur(47.4, "2023-01-02"), "Tour": spur(47.9, "2024-09-21", "<type>running</type>"),
                     "Zürichberg": spur(47.6, "2022-05-01")})

    def tearDown(self):
        if self.programm.prozess.poll() is None:
            self.erwarte_lesbares()

    # --- Pressing keys and looking at what came of it ---------------------------------------------------------------

    def gehe_zum_knopf(self, name):
        self.ohr.gehe_zu(self.atspi.ROLE_PUSH_BUTTON, name)

    def waehle(self, oeffne, *tasten):
        self.programm.waehle(lambda: xdotool("key", oeffne), *tasten)

    def im_waehler(self, oeffne, titel, *eingaben):
        """Opens a chooser of files by a key and types into it."""
        def offen():
            return [f for f in self.programm.fenster() if f.name == titel]
        self.ohr.warte_auf_fokus(lambda: xdotool("key", oeffne))
        self.ohr.warte(offen, "the chooser opens")
        xdotool("search", "--sync", "--onlyvisible", "--name", titel.split()[0], "windowfocus", "--sync")
        for eingabe in eingaben:
            xdotool("type", "--delay", "20", eingabe)
            xdotool("key", "Return")
        self.ohr.warte(lambda: not offen(), "the chooser is closed")
        self.programm.hole_nach_vorn()

    def einstellungen(self):
        with open(os.path.join(self.heim, "spurkiste/einstellungen.conf"), encoding="utf-8") as datei:
            return datei.read()

    # --- The job ----------------------------------------------------------------------------------------------------

    def test_01_imports(self):
        namen = " ".join(f'"{self.stick}/{name}.gpx"' for name in ("Neue Spur", "Alpen"))
        self.im_waehler("ctrl+o", "GPX-Dateien in die Bibliothek kopieren", namen)
        self.programm.erwarte_dateien("Alpen", "Alpen 2", "Neue Spur", "Tour", "Zürichberg")
        self.assertEqual(self.programm.lies("Alpen 2.gpx"), spur(47.8, "2024-01-02"))
        self.assertEqual(sorted(os.listdir(self.stick)), ["Alpen.gpx", "Neue Spur.gpx"])

    def test_02_searches_and_takes_it_back(self):
        xdotool("key", "ctrl+f")
        xdotool("type", "--delay", "20", "neue sp")
        self.ohr.warte(lambda: "1 / 5 ROUTEN" in self.programm.texte(), "the search narrows the table")
        self.programm.erwarte_reihen("Neue Spur")
        xdotool("key", "Escape")
        self.ohr.warte(lambda: len(self.programm.reihen()) == 5, "Escape takes the search back")

    def test_03_filters_and_resets(self):
        self.gehe_zum_knopf("Sport: ")
        self.waehle("space", "Down")
        self.ohr.warte(lambda: 0 < len(self.programm.reihen()) < 5, "the filter hides rows")
        self.assertEqual(self.programm.alle(self.atspi.ROLE_PUSH_BUTTON, name="Sport: alle"), [], "the button says the choice")
        self.gehe_zum_knopf("Zurücksetzen")
        xdotool("key", "space")
        self.ohr.warte(lambda: len(self.programm.reihen()) == 5, "all rows are back")

    def test_04_sorts(self):
        self.ohr.gehe_zu(self.atspi.ROLE_TABLE_COLUMN_HEADER)
        xdotool("key", "Home", "Return")
        self.programm.erwarte_reihen("Alpen", "Alpen 2", "Neue Spur", "Tour", "Zürichberg")
        xdotool("key", "Return")
        self.programm.erwarte_reihen("Zürichberg", "Tour", "Neue Spur", "Alpen 2", "Alpen")
        xdotool("key", "Right", "Right", "Right", "Return")
        self.programm.erwarte_reihen("Alpen", "Zürichberg", "Neue Spur", "Alpen 2", "Tour")
        xdotool("key", "Home", "space")
        self.programm.erwarte_reihen("Alpen", "Alpen 2", "Neue Spur", "Tour", "Zürichberg")

    def test_05_sets_the_sport_from_the_row_and_from_the_header(self):
        self.waehle_zeile("Alpen")
        self.waehle("space", "End")
        self.ohr.warte(lambda: "<type>kayaking</type>" in self.programm.lies("Alpen.gpx"), "the sport stands in the file")
        self.gehe_zum_knopf("Sportart ändern")
        self.waehle("Return", "Home", "Down")
        self.ohr.warte(lambda: "<type>running</type>" in self.programm.lies("Alpen.gpx"), "the other sport stands in the file")
        self.ohr.warte(lambda: self.programm.zelle("Alpen", 2).name == "Sportart Laufen", "the table says so")

    def test_06_renames(self):
        self.waehle_zeile("Tour")
        def vom_panel():
            self.gehe_zum_knopf("IM ORDNER ZEIGEN")
            xdotool("key", "F2")
        for oeffne, name in ((lambda: xdotool("key", "F2"), "Abendrunde"), (lambda: xdotool("key", "Return"), "Nachtrunde"),
                             (vom_panel, "Abend")):
            self.assertEqual(self.ohr.warte_auf_fokus(oeffne), (self.atspi.ROLE_TEXT, "Dateiname"))
            xdotool("type", "--delay", "20", name)
            self.gehe_zum_knopf("Umbenennen")
            xdotool("key", "space")
            self.programm.erwarte_dateien("Alpen", "Alpen 2", "Neue Spur", name, "Zürichberg")
            self.ohr.warte(lambda: name + ".gpx" in self.programm.texte(), "it is still selected")

    def test_07_changes_its_mind_in_the_menu_and_in_the_sheet(self):
        self.waehle_zeile("Abend")
        self.programm.waehle(lambda: xdotool("key", "Menu"), "Home")
        self.ohr.warte(lambda: self.programm.alle(self.atspi.ROLE_TEXT, name="Dateiname"), "the sheet is open")
        xdotool("type", "--delay", "20", "Falsch")
        xdotool("key", "Escape")
        self.ohr.warte(lambda: not self.programm.alle(self.atspi.ROLE_TEXT, name="Dateiname"), "the sheet is closed")
        self.programm.erwarte_dateien("Abend", "Alpen", "Alpen 2", "Neue Spur", "Zürichberg")

    def test_08_throws_away_one_and_several(self):
        self.waehle_zeile("Alpen")
        xdotool("key", "shift+Down")
        self.ohr.warte(lambda: self.programm.tabelle().nSelectedRows == 2, "two rows are selected")
        xdotool("key", "Delete")
        self.programm.erwarte_dateien("Abend", "Neue Spur", "Zürichberg")
        papierkorb = os.path.join(self.heim, "Trash/files")
        self.assertEqual(sorted(os.listdir(papierkorb)), ["Alpen 2.gpx", "Alpen.gpx"])
        self.waehle_zeile("Neue Spur")
        self.programm.waehle(lambda: xdotool("key", "shift+F10"), "End")
        self.programm.erwarte_dateien("Abend", "Zürichberg")
        self.assertIn("Neue Spur.gpx", os.listdir(papierkorb))

    def test_08b_takes_back_and_does_again_and_hears_each_time_of_it(self):
        gesagt = "„Neue Spur“ aus dem Papierkorb zurückgeholt"
        for mal in (1, 2):
            xdotool("key", "ctrl+z")
            self.programm.erwarte_dateien("Abend", "Neue Spur", "Zürichberg")
            self.ohr.warte(lambda: self.ohr.meldungen() == [gesagt] * mal, "it is announced")
            self.ohr.warte(lambda: "Neue Spur.gpx" in self.programm.texte(), "it is selected")
            xdotool("key", "ctrl+shift+z")
            self.programm.erwarte_dateien("Abend", "Zürichberg")
            self.ohr.gezeigt = [(rolle, texte) for rolle, texte in self.ohr.gezeigt if texte == [gesagt]]

    def test_09_every_control_is_reached_and_the_way_back_is_the_same(self):
        self.waehle_zeile("Abend")
        erreichbar = {(e.getRole(), e.name) for e in self.programm.alle(self.atspi.ROLE_PUSH_BUTTON, self.atspi.ROLE_TEXT, self.atspi.ROLE_TABLE)
                      if e.getState().contains(self.atspi.STATE_FOCUSABLE) and e.getState().contains(self.atspi.STATE_SHOWING)}
        self.assertGreater(len(erreichbar), 12)
        hin = self.rundgang("Tab", len(erreichbar))
        self.assertLessEqual(erreichbar, set(hin))
        self.assertIn(self.atspi.ROLE_TABLE_COLUMN_HEADER, [rolle for rolle, _ in hin])
        self.assertEqual(self.rundgang("shift+Tab", len(erreichbar)), list(reversed(hin)))

    def rundgang(self, taste, mindestens):
        """Where a key leads to, from the table to the table; the table, being one more stop, stands last, or first."""
        stellen = []
        while not stellen or stellen[-1][0] != self.atspi.ROLE_TABLE:
            self.assertLess(len(stellen), 2 * mindestens, f"the table is never reached again: {stellen}")
            stellen.append(self.ohr.warte_auf_fokus(lambda: xdotool("key", taste)))
        return stellen if taste == "Tab" else stellen[-1:] + stellen[:-1]

    def test_10_opens_and_closes_another_window(self):
        def fenster():
            return len(self.programm.alle(self.atspi.ROLE_TABLE))
        xdotool("key", "ctrl+n")
        self.ohr.warte(lambda: fenster() == 2, "another window opens")
        neues, = set(self.programm.nummern()) - {self.programm.nummer}
        xdotool("windowfocus", "--sync", neues, "key", "ctrl+w")
        self.ohr.warte(lambda: fenster() == 1, "it is closed")
        self.programm.hole_nach_vorn()

    def test_11_reads_what_keys_there_are_and_what_the_program_is(self):
        def blatt(name):
            return self.programm.alle(self.atspi.ROLE_DIALOG, name=name)
        self.waehle_zeile("Abend")
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "F1")), (self.atspi.ROLE_PUSH_BUTTON, "Schließen"))
        texte = self.programm.texte()
        self.assertTrue(blatt("Tastenkürzel"))
        self.assertIn("Programm beenden", texte)
        self.assertTrue([text for text in texte if text.endswith("+Q")], texte)
        self.gehe_zum_knopf("Über Spurkiste")
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "space")), (self.atspi.ROLE_PUSH_BUTTON, "Schließen"))
        self.assertTrue(blatt("Über Spurkiste"))
        version = subprocess.run([buehne.PROGRAMM, "--version"], capture_output=True, text=True, check=True).stdout.split()[1]
        self.assertIn("Spurkiste " + version, self.programm.texte())
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "Escape"))[0], self.atspi.ROLE_TABLE)

    def test_12_speaks_another_language(self):
        self.gehe_zum_knopf("Sprache")
        self.waehle("space", "Home", "Down", "Down")  # the system's, German, English
        self.ohr.warte(lambda: self.programm.alle(self.atspi.ROLE_PUSH_BUTTON, name="Import"), "the window is English")
        self.assertIn("appLanguage=en", self.einstellungen())

    def test_13_changes_the_folder(self):
        self.gehe_zum_knopf("Folder")
        self.im_waehler("space", "Bibliotheksordner wählen", self.stick)
        self.ohr.warte(lambda: sorted(self.programm.reihen()) == ["Alpen", "Neue Spur"], "the other folder is shown")
        self.assertIn("bibliothekOrdner=" + self.stick, self.einstellungen())

    def test_14_quits_with_all_windows(self):
        xdotool("key", "ctrl+n")
        self.ohr.warte(lambda: len(self.programm.nummern()) == 2, "another window opens")
        xdotool("windowfocus", "--sync", self.programm.nummer, "key", "ctrl+q")
        self.assertEqual(self.programm.prozess.wait(60), 0)


if __name__ == "__main__":
    buehne.main()
