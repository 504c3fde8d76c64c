#!/usr/bin/python3
"""Measures the memory of the real window on a large library, and what reading an unchanged one costs.

  bench/speicher.py [--ordner FOLDER] [--anzahl 100000] [--punkte 60] [--laeufe 5] [--programme build/bin]

Makes the library up, unless FOLDER holds one, and fills its cache. Then, as often as asked, the window is started on an
X server of its own and left alone until it has been idle for a while: by then every row is there, the list has settled,
and what was due is written. Prints medians, and all single figures behind them. Needs xvfb.
"""

import argparse
import os
import signal
import statistics
import subprocess
import tempfile
import time

HAUS = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))
RUHE = 2.0  # seconds without processor time: the window waits for its user


def zahl(nummer, datei, name):
    """A figure of /proc/NUMBER/FILE."""
    with open(f"/proc/{nummer}/{datei}") as zeilen:
        return next(int(z.split()[1]) for z in zeilen if z.startswith(name + ":"))


def prozessorzeit(nummer):
    with open(f"/proc/{nummer}/stat") as datei:
        felder = datei.read().rpartition(")")[2].split()
    return (int(felder[11]) + int(felder[12])) / os.sysconf("SC_CLK_TCK")


def warte_auf_ruhe(nummer):
    """Returns the processor time that the process took, and when it took the last of it."""
    verbraucht, zuletzt = 0.0, time.monotonic()
    while time.monotonic() - zuletzt < RUHE:
        time.sleep(0.02)
        jetzt = prozessorzeit(nummer)
        if jetzt != verbraucht:
            verbraucht, zuletzt = jetzt, time.monotonic()
    return verbraucht, zuletzt


def fenster(programme, ordner, umgebung):
    """One start of the window: peak memory in MB, seconds until it rests, processor seconds, bytes written."""
    beginn = time.monotonic()
    with tempfile.TemporaryDirectory() as eigenes:
        eigene = {name: eigenes for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR")}
        prozess = subprocess.Popen([os.path.join(programme, "spurkiste"), "--ordner", ordner], env=umgebung | eigene)
        try:
            verbraucht, ende = warte_auf_ruhe(prozess.pid)
            spitze = zahl(prozess.pid, "status", "VmHWM") / 1024
            geschrieben = zahl(prozess.pid, "io", "write_bytes")
        finally:
            prozess.send_signal(signal.SIGTERM)
            prozess.wait()
    return spitze, ende - beginn, verbraucht, geschrieben


def liste(programme, ordner):
    """One run of `liste`: peak memory in MB, seconds, processor seconds, bytes written."""
    beginn = time.monotonic()
    prozess = subprocess.Popen([os.path.join(programme, "spurkiste-cli"), "liste", ordner, "--format", "csv"],
                               stdout=subprocess.DEVNULL)
    _, _, kosten = os.wait4(prozess.pid, 0)
    return kosten.ru_maxrss / 1024, time.monotonic() - beginn, kosten.ru_utime + kosten.ru_stime, kosten.ru_oublock * 512


def berichte(was, laeufe):
    for name, einheit, werte in zip(("peak memory", "time", "processor time", "written"), ("MB", "s", "s", "bytes"),
                                    zip(*laeufe)):
        einzelne = " ".join(f"{w:.2f}" for w in werte)
        print(f"{was}, {name}: {statistics.median(werte):.2f} {einheit}   ({einzelne})", flush=True)


def main():
    lesen = argparse.ArgumentParser()
    lesen.add_argument("--ordner")
    lesen.add_argument("--anzahl", default="100000")
    lesen.add_argument("--punkte", default="60")
    lesen.add_argument("--laeufe", type=int, default=5)
    lesen.add_argument("--programme", default=os.path.join(HAUS, "build/bin"))
    wahl = lesen.parse_args()
    with tempfile.TemporaryDirectory() as ablage:
        ordner = wahl.ordner or os.path.join(ablage, "bibliothek")
        if not os.path.isdir(ordner):
            subprocess.run([os.path.join(wahl.programme, "spurkiste-erzeuge"), ordner, "--anzahl", wahl.anzahl,
                            "--punkte", wahl.punkte], check=True)
        liste(wahl.programme, ordner)  # fills the cache
        berichte("liste", [liste(wahl.programme, ordner) for _ in range(wahl.laeufe)])
        lesend, schreibend = os.pipe()
        schirm = subprocess.Popen(["Xvfb", "-displayfd", str(schreibend), "-nolisten", "tcp", "-screen", "0",
                                   "1600x1000x24"], pass_fds=[schreibend], stderr=subprocess.DEVNULL)
        try:
            with os.fdopen(lesend) as strom:
                umgebung = os.environ | {"DISPLAY": ":" + strom.readline().strip(), "QT_QPA_PLATFORM": "xcb"}
            berichte("window", [fenster(wahl.programme, ordner, umgebung) for _ in range(wahl.laeufe)])
        finally:
            schirm.terminate()
            schirm.wait()


if __name__ == "__main__":
    main()
