"""Kills a program that writes sport types, again and again at random moments, and looks at what it left behind.

abbruch_test.py PROGRAM RESOURCES [KILLS]: every file must be one of the whole ones that could have been written, and
after the next reading of the folder no foreign file may lie in it but what an exchange kept aside.
"""

import json
import os
import random
import signal
import subprocess
import sys
import tempfile
import time

SPORTARTEN = ["cycling", "running", "kayaking", "mountain_biking"]
DATEIEN = 12


def spur(nummer, sport=None):
    punkte = "".join(f'<trkpt lat="47.{i:04d}" lon="8.{nummer:04d}"/>\n' for i in range(300 + 400 * nummer))
    typ = f"<type>{sport}</type>" if sport else ""
    return f'<?xml version="1.0"?>\r\n<gpx><trk><name>Tour {nummer}</name>\n{typ}<trkseg>{punkte}</trkseg></trk></gpx>'.encode()


def main(programm, ressourcen, abbrueche):
    zufall = random.Random(1)
    umgebung = os.environ | {"SPURKISTE_RESSOURCEN": ressourcen}
    with tempfile.TemporaryDirectory() as ordner:
        pfade = [os.path.join(ordner, f"{i}.gpx") for i in range(DATEIEN)]
        erlaubt = []
        for nummer, pfad in enumerate(pfade):
            erlaubt.append({spur(nummer, sport) for sport in [None, *SPORTARTEN]})
            with open(pfad, "wb") as datei:
                datei.write(spur(nummer))
        # How long the program takes for all files once, on this machine and with this build: the kills fall into it.
        beginn = time.monotonic()
        subprocess.run([programm, "sport", SPORTARTEN[-1], *pfade], env=umgebung, stdout=subprocess.DEVNULL, check=True)
        dauer = time.monotonic() - beginn
        mitten = reste = geschrieben = 0
        for runde in range(abbrueche):
            vorher = [open(pfad, "rb").read() for pfad in pfade]
            prozess = subprocess.Popen([programm, "sport", SPORTARTEN[runde % len(SPORTARTEN)], *pfade * 20], env=umgebung,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            try:
                prozess.wait(zufall.uniform(0.02, 1.5) * dauer)
            except subprocess.TimeoutExpired:
                mitten += 1
                prozess.send_signal(signal.SIGKILL)
                prozess.wait()
            for nummer, pfad in enumerate(pfade):
                with open(pfad, "rb") as datei:
                    inhalt = datei.read()
                if inhalt not in erlaubt[nummer]:
                    print(f"{pfad} is neither old nor new after kill {runde}: {len(inhalt)} bytes")
                    return 1
                geschrieben += inhalt != vorher[nummer]
            reste += sum(name.endswith(".tmp") for name in os.listdir(ordner))
            gelesen = subprocess.run([programm, "liste", ordner, "--format", "json"], env=umgebung, check=True, capture_output=True)
            if {eintrag["punkte"] for eintrag in json.loads(gelesen.stdout)} != {300 + 400 * i for i in range(DATEIEN)}:
                print("not every track is whole")
                return 1
            # Killed between the exchange and the look at what was swapped out: that stays, whole, for the user to find.
            for sicherung in (os.path.join(ordner, name) for name in os.listdir(ordner) if name.endswith(".sicherung")):
                with open(sicherung, "rb") as datei:
                    inhalt = datei.read()
                    if not any(inhalt in moeglich for moeglich in erlaubt):
                        print(f"{sicherung} is neither old nor new after kill {runde}")
                        return 1
                os.remove(sicherung)
            fremde = set(os.listdir(ordner)) - {os.path.basename(pfad) for pfad in pfade} - {".spurkiste-cache.json"}
            if fremde:
                print(f"foreign files after kill {runde}: {sorted(fremde)}")
                return 1
        print(f"{abbrueche} runs, {mitten} killed while writing, {geschrieben} files changed, {reste} temporary files left "
              f"and cleaned away by the next reading; all {DATEIEN} tracks old or new and whole after each")
        # Without kills in the middle and changed files the test would have shown nothing.
        return 0 if mitten > abbrueche // 2 and geschrieben > abbrueche // 2 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], int(sys.argv[3]) if len(sys.argv) > 3 else 300))
