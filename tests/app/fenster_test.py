"""What the mouse and the disk do to the real window.

fenster_test.py PROGRAM RESOURCES.
"""

import os

import buehne
from buehne import spur, warte_bis, xdotool


class Fenster(buehne.Fenstertest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        ordner = cls.fuelle("Meine Touren", {"Tour 2": spur(47.4), "Tour 10": spur(47.9), "alpen": spur(47.3), "kaputt": "<gpx><trk>"})
        cls.programm = cls.starte(ordner, cls.fuelle("heim", {}))

    def klicke_titel(self, spalte, mal):
        titel = self.programm.tabelle().getColumnHeader(spalte)
        xdotool("mousemove", *self.programm.mitte(titel), *["click", 1] * mal)

    def test_1_every_one_of_quick_clicks_on_a_title_sorts(self):
        self.klicke_titel(0, 1)
        self.programm.erwarte_reihen("alpen", "kaputt", "Tour 2", "Tour 10")
        self.klicke_titel(0, 3)
        self.programm.erwarte_reihen("Tour 10", "Tour 2", "kaputt", "alpen")
        self.klicke_titel(3, 2)
        warte_bis(lambda: self.programm.reihen()[-1] == "kaputt", "the longest is first")

    def test_2_reads_the_folder_again(self):
        neu = os.path.join(self.programm.ordner, "Neu.gpx")
        with open(neu, "w", encoding="utf-8") as datei:
            datei.write(spur(47.5, "2025-01-01"))
        self.programm.hole_nach_vorn()
        xdotool("key", "F5")
        warte_bis(lambda: "Neu" in self.programm.reihen(), "the new file is listed")
        os.remove(neu)
        self.programm.druecke("Neu laden")
        warte_bis(lambda: "Neu" not in self.programm.reihen(), "the removed file is gone")


if __name__ == "__main__":
    buehne.main()
