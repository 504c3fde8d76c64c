"""What the tests share that disturb, starve and kill the programs. Each is started as
TEST.py PROGRAM RESOURCES HELPERS [AMOUNT], HELPERS being where Bibliothekslauf and stoerung.so lie."""

import json
import os
import subprocess
import sys
import tempfile
import threading

PROGRAMM, RESSOURCEN, HELFER = sys.argv[1:4]
MENGE = int(sys.argv[4]) if len(sys.argv) > 4 else 20
CACHE = ".spurkiste-cache.json"
LAUF, STOERUNG = (os.path.join(HELFER, name) for name in ("Bibliothekslauf", "stoerung.so"))
UMGEBUNG = {"PATH": os.environ["PATH"], "HOME": "/nonexistent", "SPURKISTE_RESSOURCEN": RESSOURCEN, "TZ": "UTC", "LC_ALL": "C.UTF-8"}
ZEIT = 1_700_000_000
SPEICHERPLATTE = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None  # flushing costs nothing there


def spur(nummer, sport=None, punkte=30):
    orte = "".join(f'<trkpt lat="47.{i:04d}" lon="8.{nummer:04d}"><ele>{400 + i}</ele></trkpt>\n' for i in range(punkte))
    typ = f"<type>{sport}</type>" if sport else ""
    return f'<?xml version="1.0"?>\r\n<gpx><trk><name>Tour {nummer}</name>\n{typ}<trkseg>{orte}</trkseg></trk></gpx>'.encode()


def schreibe(pfad, inhalt, zeit=ZEIT, rechte=0o640):
    with open(pfad, "wb") as datei:
        datei.write(inhalt)
    os.chmod(pfad, rechte)
    os.utime(pfad, (zeit, zeit))
    return pfad


def lies(pfad):
    """The bytes of a file; nothing where there is none."""
    try:
        with open(pfad, "rb") as datei:
            return datei.read()
    except FileNotFoundError:
        return None


class Ergebnis:
    """How a process ended (negative: by which signal), what it wrote, and what it took of memory (bytes) and of the processor
    (seconds)."""

    def __init__(self, ende, aus, fehler, verbrauch):
        self.ende, self.aus, self.fehler = ende, aus.decode(errors="replace"), fehler.decode(errors="replace")
        self.speicher, self.rechenzeit = verbrauch.ru_maxrss * 1024, verbrauch.ru_utime + verbrauch.ru_stime

    def __str__(self):
        return f"ended with {self.ende}, saying {self.fehler.strip() or self.aus[-200:].strip()!r}"


def rufe(*befehl, eingabe="", frist=120, grenze="", **umgebung):
    """Runs a command to its end. `grenze` is an option of prlimit. Whatever takes longer than `frist` seconds hangs, and is
    killed."""
    with tempfile.TemporaryFile() as ein, tempfile.TemporaryFile() as aus, tempfile.TemporaryFile() as fehler:
        ein.write(eingabe.encode())
        ein.seek(0)
        prozess = subprocess.Popen(["prlimit", grenze, "--", *befehl] if grenze else befehl, stdin=ein, stdout=aus, stderr=fehler,
                                   env=UMGEBUNG | umgebung)
        wecker = threading.Timer(frist, prozess.kill)
        wecker.start()
        _, zustand, verbrauch = os.wait4(prozess.pid, 0)
        wecker.cancel()
        prozess.returncode = os.waitstatus_to_exitcode(zustand)
        aus.seek(0)
        fehler.seek(0)
        return Ergebnis(prozess.returncode, aus.read(), fehler.read(), verbrauch)


def liste(ordner, *mehr, **wie):
    return rufe(PROGRAMM, "liste", ordner, "--format", "json", *mehr, **wie)


def befehle(*zeilen):
    """What Bibliothekslauf reads."""
    return "".join("\t".join(zeile) + "\n" for zeile in zeilen)


def inhalt(ordner):
    """Everything in a folder but the cache, by name."""
    return {name: lies(os.path.join(ordner, name)) for name in os.listdir(ordner) if name != CACHE}


def vorlaeufige(namen):
    return {name for name in namen if name.startswith(".spurkiste-") and name.endswith(".tmp")}


def erwarte(bedingung, was):
    if not bedingung:
        raise AssertionError(was)


def erwarte_richtig(ordner, was, bekannte=None):
    """An undisturbed reading, with the cache and without one, finds the same, and says so without a word; nothing foreign is
    left. Returns the records. What reading without a cache found in the same files before may be remembered in `bekannte`."""
    mit, bekannte = liste(ordner), {} if bekannte is None else bekannte
    dateien = frozenset((name, text, os.stat(os.path.join(ordner, name)).st_mtime_ns) for name, text in inhalt(ordner).items())
    ohne = bekannte[dateien] = bekannte.get(dateien) or liste(ordner, "--ohne-cache")
    erwarte((mit.ende, mit.fehler, ohne.ende) == (0, "", 0), f"{was}: the next run {mit}")
    erwarte(mit.aus == ohne.aus, f"{was}: the cache is wrong: {mit.aus[:300]} instead of {ohne.aus[:300]}")
    reste = vorlaeufige(os.listdir(ordner))
    erwarte(not reste, f"{was}: left behind {reste}")
    return json.loads(ohne.aus)


def beende(fehler, gezaehlt):
    """Says what was found, and ends."""
    for satz in fehler[:60]:
        print(satz)
    print(f"{gezaehlt}; {len(fehler)} wrong")
    sys.exit(1 if fehler else 0)
