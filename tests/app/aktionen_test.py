"""Works with files in the real window: drops, names, sports, trash, second starts; and looks at the disk after each.

aktionen_test.py PROGRAM RESOURCES.
"""

import os
import signal
import subprocess

import buehne
from buehne import PROGRAMM, spur, warte_bis, xdotool

HOEHE = 860


class Aktionen(buehne.Fenstertest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        meine = cls.fuelle("Meine Touren", {"Alpen": spur(47.4, "2023-01-02"), "Tour": spur(47.5, "2024-09-21", "<type>running</type>"),
                                            "Zürichberg": spur(47.6, "2022-05-01")})
        fremde = cls.fuelle("Täler & Höhen", {"Neue Spur": spur(47.7, "2024-01-01"), "Zürichberg": spur(47.8, "2024-01-02")})
        cls.heim, cls.heim2 = cls.fuelle("heim", {}), cls.fuelle("heim2", {})
        cls.mein, cls.fremd = cls.starte(meine, cls.heim), cls.starte(fremde, cls.heim2, HOEHE)

    def uebergib(self, programm, *dateien, ordner=None, hier=None, ende=0):
        """Starts the program again with files, which it hands over to the one that runs, and ends."""
        zweiter = subprocess.run([PROGRAMM, "--ordner", ordner or programm.ordner, *dateien], env=programm.umgebung, cwd=hier,
                                 stderr=subprocess.PIPE, text=True, timeout=60)
        self.assertEqual(zweiter.returncode, ende)
        return zweiter.stderr

    def test_1_takes_files_dropped_from_another_program(self):
        self.fremd.klicke("Neue Spur")
        xdotool("key", "ctrl+a")
        warte_bis(lambda: self.fremd.tabelle().nSelectedRows == 2, "both rows are selected")
        x, y = self.fremd.mitte(self.fremd.zelle("Zürichberg"))  # elsewhere, for no press to be a double click
        xdotool("mousemove", x, y, "mousedown", 1)
        for schritt in range(1, 12):
            xdotool("mousemove", x + 20 * schritt, y - (y - 500) * schritt // 11)
        # The veil says that the window takes them; only then are they let go.
        warte_bis(self.schleier, "the window offers to take them")
        xdotool("mouseup", 1)
        self.mein.erwarte_dateien("Alpen", "Neue Spur", "Tour", "Zürichberg 2", "Zürichberg")
        self.assertEqual(self.fremd.dateien(), ["Neue Spur.gpx", "Zürichberg.gpx"])
        warte_bis(lambda: self.mein.tabelle().nSelectedRows == 2, "what came is selected")
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
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Neue Spur", "Zürichberg 2", "Zürichberg")
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
        warte_bis(lambda: sorted(self.mein.reihen()) == ["Abend-runde", "Alpen"], "the filter knows the new sport")
        self.mein.waehle_zeile("Alpen")
        self.mein.waehle(lambda: xdotool("key", "space"), "End")
        self.mein.erwarte_reihen("Abend-runde")
        warte_bis(lambda: "Abend-runde.gpx" in self.mein.texte(), "the keyboard has gone on, and it is seen where")
        xdotool("key", "ctrl+z")
        warte_bis(lambda: sorted(self.mein.reihen()) == ["Abend-runde", "Alpen"], "the row is back")
        warte_bis(lambda: "Alpen.gpx" in self.mein.texte(), "and is what is meant")
        self.mein.druecke("Zurücksetzen")
        warte_bis(lambda: len(self.mein.reihen()) == 5, "all are shown again")

    def test_5_throws_away_what_is_selected(self):
        self.mein.waehle_zeile("Neue Spur")
        xdotool("key", "Delete")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Zürichberg 2", "Zürichberg")
        self.assertEqual(os.listdir(os.path.join(self.heim, "Trash/files")), ["Neue Spur.gpx"])
        self.mein.waehle(lambda: self.mein.klicke("Zürichberg 2", knopf=3), "End")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Zürichberg")

    def test_5a_takes_back_and_does_again(self):
        kopie, alpen = "„Zürichberg 2“ aus dem Papierkorb zurückgeholt", self.mein.lies("Alpen.gpx")
        xdotool("key", "ctrl+z")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Zürichberg 2", "Zürichberg")
        warte_bis(lambda: {kopie, "Zürichberg 2.gpx"} <= set(self.mein.texte()), "it is said and shown")
        xdotool("key", "ctrl+z", "ctrl+z")  # the other file, and the last of three sports
        warte_bis(lambda: "<type>rowing</type>" in self.mein.lies("Alpen.gpx"), "the sport of before")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Neue Spur", "Zürichberg 2", "Zürichberg")
        self.assertEqual(os.listdir(os.path.join(self.heim, "Trash/info")), [])
        xdotool("key", "ctrl+shift+z", "ctrl+shift+z", "ctrl+shift+z")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Zürichberg")
        self.assertEqual(self.mein.lies("Alpen.gpx"), alpen)

    def test_6_a_second_start_hands_its_files_over_whatever_way_leads_to_the_folder(self):
        """Opened three times, a file is copied once; what cannot be opened is told to both."""
        verweis = os.path.join(self.ablage, "Verweis")
        os.symlink("Meine Touren", verweis)
        self.uebergib(self.mein, "Neue Spur.gpx", os.path.join(self.mein.ordner, "Alpen.gpx"), hier=self.fremd.ordner)
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Neue Spur", "Zürichberg")
        self.uebergib(self.mein, os.path.join(self.fremd.ordner, "Neue Spur.gpx"), "/", ordner=verweis)
        self.uebergib(self.mein, "Neue Spur.gpx", ordner=os.path.relpath(self.mein.ordner, self.fremd.ordner), hier=self.fremd.ordner)
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Neue Spur", "Zürichberg")
        warte_bis(lambda: "Neue Spur.gpx" in self.mein.texte(), "the last one is shown")
        fehler = self.uebergib(self.mein, "fehlt.gpx", hier=self.ablage, ende=1)
        self.assertEqual(fehler, "spurkiste: fehlt.gpx: gibt es nicht\n")
        warte_bis(lambda: "Nicht geöffnet: fehlt.gpx: gibt es nicht" in self.mein.texte(), "the window says so, too")
        os.rename(os.path.join(self.mein.ordner, "Neue Spur.gpx"), os.path.join(self.mein.ordner, "Gespeichert.gpx"))
        self.uebergib(self.mein, os.path.join(self.mein.ordner, "Gespeichert.gpx"))
        warte_bis(lambda: "Gespeichert.gpx" in self.mein.texte(), "what was saved there since the load is read and shown")
        self.mein.hole_nach_vorn()
        xdotool("key", "F5")
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Gespeichert", "Zürichberg")

    def test_7_a_stopped_program_keeps_its_folder(self):
        self.mein.prozess.send_signal(signal.SIGSTOP)
        try:
            fehler = self.uebergib(self.mein, os.path.join(self.fremd.ordner, "Zürichberg.gpx"), ende=1)
        finally:
            self.mein.prozess.send_signal(signal.SIGCONT)
        self.assertIn("nicht antwortet", fehler)
        self.mein.erwarte_dateien("Abend-runde", "Alpen", "Gespeichert", "Zürichberg", "Zürichberg 2")

    def test_8_a_folder_that_is_open_elsewhere_is_raised_there_and_one_that_is_free_is_followed(self):
        self.fremd.beende()
        fremd = self.starte(self.fremd.ordner, self.heim, HOEHE)  # of the same user now
        self.wechsle(self.mein, fremd.ordner)
        warte_bis(lambda: "Meine Touren" in self.mein.texte(), "the folder stays")
        frei = self.fuelle("Frei", {"Frisch": spur(47.1)})
        alter = self.mein.ordner
        self.wechsle(self.mein, frei)
        self.mein.ordner = frei
        self.mein.erwarte_dateien("Frisch")
        self.uebergib(self.mein, os.path.join(alter, "Alpen.gpx"))
        self.mein.erwarte_dateien("Alpen", "Frisch")
        wieder = self.starte(alter, self.heim)  # the old folder is free
        self.assertEqual(len(wieder.reihen()), 5)
        wieder.beende()
        fremd.beende()

    def wechsle(self, programm, ordner):
        vorher = programm.flaechen()
        programm.druecke("Ordner")
        dialog = warte_bis(lambda: programm.flaechen() - vorher, "the chooser opens")
        xdotool("windowfocus", "--sync", *dialog)
        xdotool("type", "--delay", "20", ordner)
        programm.druecke("Wählen")  # whether completions are open or not
        warte_bis(lambda: not programm.flaechen() & dialog, "the chooser is closed")

    def test_9_shows_the_folder_or_says_that_nothing_can(self):
        ort = self.fuelle("werkzeuge", {})
        ordner = self.fuelle("Zu zeigen", {"Ziel": spur(47.1)})
        gezeigt = os.path.join(ort, "gezeigt")
        def lege(name, *zeilen):
            with open(os.path.join(ort, name), "w", encoding="utf-8") as skript:
                skript.write("\n".join(["#!/bin/sh", *zeilen]) + "\n")
            os.chmod(skript.name, 0o700)
        lege("xdg-open", f'echo "$1" > {gezeigt}')
        lege("xdg-mime", f"test -e {ort}/keiner || echo ordner.desktop")
        programm = self.starte(ordner, self.fuelle("heim3", {}), umgebung={"PATH": ort + ":" + os.environ["PATH"]})
        programm.waehle_zeile("Ziel")
        programm.druecke("IM ORDNER ZEIGEN")
        warte_bis(lambda: os.path.exists(gezeigt) and os.path.getsize(gezeigt), "the folder is opened")
        with open(gezeigt, encoding="utf-8") as datei:
            self.assertIn("Zu%20zeigen", datei.read().replace(" ", "%20"))
        with open(os.path.join(ort, "keiner"), "w", encoding="utf-8"):
            pass
        programm.druecke("IM ORDNER ZEIGEN")
        warte_bis(lambda: "Kein Dateimanager gefunden, der „Ziel.gpx“ zeigt" in programm.texte(), "the window says so")
        programm.beende()

    def test_a_starts_again_after_a_crash_and_is_found_by_the_next_start(self):
        self.mein.prozess.kill()
        self.mein.prozess.wait(30)
        wieder = self.starte(self.mein.ordner, self.heim)
        self.uebergib(wieder, os.path.join(self.fremd.ordner, "Zürichberg.gpx"))
        wieder.erwarte_dateien("Alpen", "Frisch", "Zürichberg")
        wieder.beende()

    def test_b_writes_all_sports_that_were_asked_for_before_it_ends(self):
        punkte = '<trkpt lat="47.1" lon="8.1"><ele>400</ele></trkpt>\n' * 400_000
        ordner = self.fuelle("Gross", {"Gross": f"<gpx><trk><trkseg>{punkte}</trkseg></trk></gpx>"})
        programm = self.starte(ordner, self.fuelle("heim4", {}))
        programm.waehle_zeile("Gross")
        for tasten in (["Home"], ["End"], ["Home"], ["End", "Up"], ["End"]):
            programm.waehle(lambda: xdotool("key", "F4"), *tasten)
        programm.beende()
        self.assertIn("<type>kayaking</type>", programm.lies("Gross.gpx")[-100:] + programm.lies("Gross.gpx")[:200])

    def test_c_says_that_there_is_no_display(self):
        for anzeige in ({}, {"DISPLAY": ":9999"}):
            umgebung = {k: v for k, v in self.mein.umgebung.items() if k not in ("DISPLAY", "QT_QPA_PLATFORM")} | anzeige
            lauf = subprocess.run([PROGRAMM], env=umgebung, stderr=subprocess.PIPE, text=True, timeout=60)
            self.assertEqual(lauf.returncode, 1)
            self.assertEqual(lauf.stderr, "spurkiste: Kein Bildschirm erreichbar. Ohne Fenster: spurkiste-cli --help\n")


if __name__ == "__main__":
    buehne.main()
