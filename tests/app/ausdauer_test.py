"""The real window over a long day: files come and go, get names and sports from elsewhere, and at last the folder vanishes.
It neither grows nor keeps files open.

ausdauer_test.py PROGRAM RESOURCES [ROUNDS].
"""

import os
import re
import shutil
import sys

import buehne
from buehne import spur, warte_bis, xdotool

RUNDEN = int(sys.argv[3]) if len(sys.argv) > 3 else 6
MIB = 1 << 20


class Ausdauer(buehne.Fenstertest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        ordner = cls.fuelle("Meine Touren", {f"Tour {i}": spur(47.4 + i / 100, "2024-09-21") for i in range(20)})
        cls.programm = cls.starte(ordner, cls.fuelle("heim", {}))

    def verbrauch(self):
        """Memory that is the program's alone, in bytes, and what it has open. Clean pages do not count: those of libraries become
        its own when another program that has them ends."""
        ort = f"/proc/{self.programm.prozess.pid}"
        with open(ort + "/smaps_rollup", encoding="ascii") as datei:
            text = datei.read()
        eigenes = sum(int(zahl) for zahl in re.findall(r"^(?:Private_Dirty|Swap):\s+(\d+)", text, re.M)) * 1024
        return eigenes, len(os.listdir(ort + "/fd"))

    def runde(self, nummer):
        """Files come, one is gone, one is new and one has another name; then the window reads the folder again."""
        def ort(name):
            return os.path.join(self.programm.ordner, name + ".gpx")

        for i in range(30):
            with open(ort(f"Neu {i}"), "w", encoding="utf-8") as datei:
                datei.write(spur(47.1 + nummer / 1000 + i / 100, "2023-01-02"))
        with open(ort("Tour 1"), "w", encoding="utf-8") as datei:
            datei.write(spur(48 + nummer / 1000, "2022-03-04", "<type>running</type>"))
        for erwartet, tue in ((50, lambda: None), (50, lambda: os.rename(ort("Neu 3"), ort(f"Anders {nummer}"))),
                              (20, lambda: [os.remove(os.path.join(self.programm.ordner, name)) for name in self.programm.dateien()
                                            if not name.startswith("Tour")])):
            tue()
            xdotool("key", "F5")
            warte_bis(lambda: sorted(f"{name}.gpx" for name in self.programm.reihen()) == self.programm.dateien() and
                      self.programm.tabelle().nRows == erwartet, "the table shows what is in the folder")

    def test_1_files_come_and_go_and_nothing_grows(self):
        self.programm.hole_nach_vorn()
        messungen = []
        for nummer in range(RUNDEN):
            self.runde(nummer)
            messungen.append(self.verbrauch())
        mitte, ende = messungen[len(messungen) // 2], messungen[-1]
        print("MiB and open files:", [(eigenes // MIB, offene) for eigenes, offene in messungen])
        self.assertLessEqual(ende[1], mitte[1], "files stay open")
        # Half of all rounds may leave what one allocation of an arena takes, and no more.
        self.assertLess(ende[0] - mitte[0], 4 * MIB + RUNDEN * MIB // 16, "memory grows")

    def test_2_the_folder_vanishes_and_comes_back(self):
        ordner = self.programm.ordner
        self.programm.waehle_zeile("Tour 5")
        vorher, weg = self.programm.texte(), ordner + " weg"
        os.rename(ordner, weg)
        xdotool("key", "Delete")
        warte_bis(lambda: any("Papierkorb" in text or "Tour 5" in text and text not in vorher for text in self.programm.texte()),
                  "a notice says that it is gone")
        xdotool("key", "F5")
        warte_bis(lambda: self.programm.tabelle().nRows == 0, "nothing is listed")
        self.assertEqual(len([name for name in os.listdir(weg) if name.endswith(".gpx")]), 20, "a file is gone")
        shutil.rmtree(ordner)  # made anew, as at the first start
        os.rename(weg, ordner)
        xdotool("key", "F5")
        warte_bis(lambda: self.programm.tabelle().nRows == 20, "all are listed again")
        shutil.rmtree(ordner)
        with open(ordner, "w", encoding="utf-8") as datei:  # a file in its place
            datei.write("kein Ordner")
        xdotool("key", "F5")
        warte_bis(lambda: any(text.startswith("Ordner nicht erreichbar") for text in self.programm.texte()),
                  lambda: f"a notice says that the folder is gone, but there is {self.programm.texte()}")
        self.assertEqual((self.programm.tabelle().nRows, os.path.getsize(ordner)), (0, 11), "what lies in the folder's place was touched")


if __name__ == "__main__":
    buehne.main()
