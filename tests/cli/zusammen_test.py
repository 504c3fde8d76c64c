"""Several programs at work in one folder at once: no file and no correction is lost, and the cache is never torn.

zusammen_test.py PROGRAM RESOURCES.
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest

PROGRAMM, RESSOURCEN = sys.argv[1], sys.argv[2]
RUNDEN, ANZAHL = 10, 30
SPUR = '<gpx><trk><trkseg><trkpt lat="47.{0:02}" lon="8.1"/><trkpt lat="47.{0:02}" lon="8.2"/></trkseg></trk></gpx>'
SPORTE = ("hiking", "running", "kayaking", "gravel_cycling", "mountain_biking")  # all of different length


def rufe(*worte):
    umgebung = os.environ | {"SPURKISTE_RESSOURCEN": RESSOURCEN}
    return subprocess.Popen([PROGRAMM, *worte], env=umgebung, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)


class Zusammen(unittest.TestCase):
    def liste(self, *weitere):
        lauf = rufe("liste", self.ordner, "--format", "json", *weitere)
        text, fehler = lauf.communicate(timeout=120)
        self.assertEqual((lauf.returncode, fehler), (0, ""))
        return json.loads(text)

    def test_readers_and_writers_of_one_folder_lose_nothing(self):
        with tempfile.TemporaryDirectory() as ablage:
            self.ordner = ablage
            pfade = [os.path.join(ablage, f"{nummer}.gpx") for nummer in range(ANZAHL)]
            for nummer, pfad in enumerate(pfade):
                with open(pfad, "w", encoding="utf-8") as datei:
                    datei.write(SPUR.format(nummer))
            for runde in range(RUNDEN):
                sport = {pfad: SPORTE[(runde + nummer) % len(SPORTE)] for nummer, pfad in enumerate(pfade)}
                laeufe = [rufe("liste", ablage, "--format", "json") for _ in range(2)]
                laeufe += [rufe("sport", wert, *[p for p in pfade if sport[p] == wert]) for wert in SPORTE]
                for lauf in laeufe:
                    fehler = lauf.communicate(timeout=120)[1]
                    self.assertEqual((lauf.returncode, fehler), (0, ""))
                with open(os.path.join(ablage, ".spurkiste-cache.json"), encoding="utf-8") as datei:
                    self.assertLessEqual(set(json.load(datei)["eintraege"]), set(pfade))
                mit = self.liste()
                self.assertEqual({e["pfad"]: e["sportRoh"] for e in mit}, sport)
                self.assertEqual(mit, self.liste("--ohne-cache"))
            self.assertEqual(sorted(os.listdir(ablage)), sorted([".spurkiste-cache.json", *map(os.path.basename, pfade)]))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
