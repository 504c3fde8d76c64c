"""Counts what held and what did not, and runs other programs."""

import os
import subprocess

HAUS = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
GEDULD = 120  # seconds for one program


def umgebung(**weitere):
    """The environment without what would lead the programs past what is installed, and with texts in plain English."""
    sauber = {k: v for k, v in os.environ.items()
              if not k.startswith(("QT_", "XDG_", "LC_", "SPURKISTE_")) and k not in ("DISPLAY", "WAYLAND_DISPLAY", "LANGUAGE")}
    return sauber | {"LANG": "C.UTF-8"} | weitere


def rufe(*befehl, **wie):
    """Runs a program to its end and keeps what it says on both streams together, whatever its status."""
    return subprocess.run(befehl, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          **{"timeout": GEDULD, "env": umgebung()} | wie)


class Bericht:
    def __init__(self):
        self.gut = 0
        self.schlecht = 0

    def pruefe(self, was, gut, sonst=""):
        """Counts one check. `sonst` says what was found when it does not hold."""
        if gut:
            self.gut += 1
            print("  ok  ", was, flush=True)
        else:
            self.schlecht += 1
            print("  FAIL", was, *([f"\n{sonst}"] if str(sonst) else []), flush=True)
        return bool(gut)

    def laufe(self, was, *befehl, stumm=False, **wie):
        """Counts a program as a check: its status must be 0, and with `stumm` it must have nothing to say."""
        lauf = rufe(*befehl, **wie)
        self.pruefe(was, lauf.returncode == 0 and not (stumm and lauf.stdout.strip()), lauf.stdout)
        return lauf.stdout

    def gleich(self, was, ist, soll):
        return self.pruefe(was, ist == soll, f"is      {ist!r}\nshould  {soll!r}")
