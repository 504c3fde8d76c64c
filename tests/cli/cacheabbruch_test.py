"""Kills a program that writes the cache, again and again at random moments, and looks at what it left behind.

cacheabbruch_test.py PROGRAM RESOURCES [KILLS]: the cache must be the one from before or the new one, whole, and after the
next reading of the folder no foreign file may lie in it.
"""

import json
import os
import random
import signal
import subprocess
import sys
import tempfile
import time

DATEIEN = 400
CACHE = ".spurkiste-cache.json"


def spur(nummer, runde):
    punkte = "".join(f'<trkpt lat="47.{i:04d}" lon="8.{nummer:04d}"/>\n' for i in range(40))
    return f"<gpx><trk><name>Tour {nummer} in {runde}</name><trkseg>{punkte}</trkseg></trk></gpx>"


def main(programm, ressourcen, abbrueche):
    zufall = random.Random(1)
    umgebung = os.environ | {"SPURKISTE_RESSOURCEN": ressourcen}
    with tempfile.TemporaryDirectory() as ordner:
        def schreibe(runde):
            for nummer in range(DATEIEN):
                with open(os.path.join(ordner, f"{nummer}.gpx"), "w") as datei:
                    datei.write(spur(nummer, runde))

        def liste(**mehr):
            return subprocess.Popen([programm, "liste", ordner], env=umgebung, stdout=subprocess.DEVNULL, **mehr)

        def gemerkte():
            with open(os.path.join(ordner, CACHE)) as datei:
                return {eintrag["spurName"].split()[-1] for eintrag in json.load(datei)["eintraege"].values()}

        schreibe("zuerst")
        beginn = time.monotonic()
        if liste().wait() != 0:
            return 1
        marke = time.monotonic() - beginn  # about when the cache is written, however busy the machine becomes
        davor, alte, neue, reste = "zuerst", 0, 0, 0
        for runde in range(abbrueche):
            jetzt = f"runde{runde:04d}" + "x" * runde  # so that size alone tells a file from the one before
            schreibe(jetzt)
            prozess = liste(stderr=subprocess.DEVNULL)
            try:
                prozess.wait(zufall.uniform(0.8, 1.2) * marke)
            except subprocess.TimeoutExpired:
                prozess.send_signal(signal.SIGKILL)
                prozess.wait()
            gefunden = gemerkte()
            if gefunden not in ({davor}, {jetzt}):
                print(f"after kill {runde} the cache is neither old nor new: {sorted(gefunden)}")
                return 1
            alte += gefunden == {davor}
            neue += gefunden == {jetzt}
            marke *= 0.9 if gefunden == {jetzt} else 1.1
            davor = gefunden.pop()
            reste += sum(name.endswith(".tmp") for name in os.listdir(ordner))
            if runde % 10 == 9:
                if liste().wait() != 0 or gemerkte() != {jetzt}:
                    print(f"not read anew after kill {runde}")
                    return 1
                davor = jetzt
                fremde = [name for name in os.listdir(ordner) if not name.endswith(".gpx") and name != CACHE]
                if fremde:
                    print(f"foreign files after kill {runde}: {fremde}")
                    return 1
        print(f"{abbrueche} runs: {alte} left the old cache, {neue} the new one, {reste} temporary files seen; all whole")
        # Kills that were all too early or all too late would have shown nothing.
        return 0 if min(alte, neue) >= abbrueche // 20 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], int(sys.argv[3]) if len(sys.argv) > 3 else 300))
