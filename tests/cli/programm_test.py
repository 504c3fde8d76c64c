"""Runs the command line as its users do: real processes, real folders, a real terminal."""

import csv
import fcntl
import io
import json
import os
import pty
import resource
import struct
import subprocess
import sys
import tempfile
import termios
import unittest

PROGRAMM, RESSOURCEN = sys.argv[1], sys.argv[2]
# Sanitizers reserve more addresses than a machine has memory.
OHNE_SANITIZER = unittest.skipIf(os.environ.get("SANITIZER"), "needs a bounded address space")

SPUR = """<?xml version="1.0"?><gpx><trk><name>{name}</name>{sport}<trkseg>
<trkpt lat="47.3769" lon="8.5417"><ele>400</ele><time>2024-09-21T06:15:00Z</time></trkpt>
<trkpt lat="47.4769" lon="8.5417"><ele>420</ele><time>2024-09-21T07:15:00Z</time></trkpt></trkseg></trk></gpx>"""


def umgebung(**mehr):
    sauber = {k: v for k, v in os.environ.items() if k in ("PATH", "HOME", "LOCPATH")}
    return sauber | {"SPURKISTE_RESSOURCEN": RESSOURCEN, "XDG_CONFIG_HOME": "/nonexistent", "TZ": "UTC", "LANG": "de_DE.UTF-8"} | mehr


def rufe(*argumente, **mehr):
    return subprocess.run([PROGRAMM, *argumente], capture_output=True, text=True, timeout=60, env=umgebung(**mehr))


def im_terminal(*argumente, breite=100, **mehr):
    """Runs the program on a pseudo terminal and returns what it wrote there."""
    herr, knecht = pty.openpty()
    fcntl.ioctl(knecht, termios.TIOCSWINSZ, struct.pack("HHHH", 24, breite, 0, 0))
    prozess = subprocess.Popen([PROGRAMM, *argumente], stdout=knecht, stderr=knecht, stdin=subprocess.DEVNULL,
                               env=umgebung(TERM="xterm", **mehr))
    os.close(knecht)
    teile = []
    while True:
        try:
            teil = os.read(herr, 65536)
        except OSError:  # the other end is closed
            break
        if not teil:
            break
        teile.append(teil)
    os.close(herr)
    prozess.wait(60)
    return b"".join(teile).decode()


class Programm(unittest.TestCase):
    def setUp(self):
        self.ablage = tempfile.TemporaryDirectory()
        self.addCleanup(self.ablage.cleanup)
        self.ordner = os.path.join(self.ablage.name, "Bibliothek")
        os.mkdir(self.ordner)
        self.schreibe("Morgenrunde.gpx", SPUR.format(name="Am Morgen", sport="<type>running</type>"))
        self.schreibe('mit "Zeichen", und\nZeile.gpx', SPUR.format(name="Zwei", sport=""))
        self.schreibe("kaputt.gpx", "kein XML")

    def schreibe(self, name, text):
        with open(os.path.join(self.ordner, name), "w", encoding="utf-8") as datei:
            datei.write(text)

    def json(self, *mehr):
        lauf = rufe("liste", self.ordner, "--format", "json", *mehr)
        self.assertEqual((lauf.returncode, lauf.stderr), (0, ""))
        return json.loads(lauf.stdout)

    def test_json_holds_the_records_of_the_cache_in_path_order(self):
        eintraege = self.json()
        with open(os.path.join(self.ordner, ".spurkiste-cache.json"), encoding="utf-8") as datei:
            cache = json.load(datei)
        self.assertEqual(cache["version"], 3)
        self.assertEqual([e["pfad"] for e in eintraege], sorted(cache["eintraege"]))
        self.assertEqual({e["pfad"]: e for e in eintraege}, cache["eintraege"])
        lauf = next(e for e in eintraege if e["dateiName"] == "Morgenrunde")
        self.assertEqual((lauf["spurName"], lauf["sportRoh"], lauf["dauerSekunden"], lauf["punkte"]),
                         ("Am Morgen", "running", 3600, 2))
        self.assertEqual(lauf["startOrt"], "Zürich")
        self.assertAlmostEqual(lauf["streckeMeter"], 11119.49, places=2)

    def test_second_run_opens_nothing_that_did_not_change(self):
        self.json()
        pfad = os.path.join(self.ordner, "Morgenrunde.gpx")
        davor = os.stat(pfad)
        self.schreibe("Morgenrunde.gpx", SPUR.format(name="Am Abend ", sport="<type>running</type>"))
        os.utime(pfad, ns=(davor.st_atime_ns, davor.st_mtime_ns))
        self.assertIn("Am Morgen", [e.get("spurName") for e in self.json()])
        self.assertIn("Am Abend", [e.get("spurName") for e in self.json("--ohne-cache")])
        self.assertIn("Am Morgen", [e.get("spurName") for e in self.json()])
        os.utime(pfad, ns=(davor.st_atime_ns, davor.st_mtime_ns + 1_000_000_000))
        self.assertIn("Am Abend", [e.get("spurName") for e in self.json()])

    def test_csv_is_read_by_others(self):
        lauf = subprocess.run([PROGRAMM, "liste", self.ordner, "--format=csv", "--roh"], capture_output=True, env=umgebung(), timeout=60)
        text = lauf.stdout.decode()
        self.assertTrue(all(zeile.endswith("\r\n") for zeile in io.StringIO(text, newline="\r\n")))
        zeilen = list(csv.DictReader(io.StringIO(text, newline=""), strict=True))
        self.assertEqual([z["dateiName"] for z in zeilen], ["Morgenrunde", "kaputt", 'mit "Zeichen", und\nZeile'])
        self.assertEqual((zeilen[0]["datum"], zeilen[0]["dauerSekunden"], zeilen[0]["startBreite"], zeilen[0]["hatZeitstempel"]),
                         ("2024-09-21T06:15:00Z", "3600", "47.3769", "true"))
        self.assertEqual((zeilen[1]["datum"], zeilen[1]["startBreite"], zeilen[1]["punkte"]), ("", "", "0"))

    def test_table_speaks_the_language_and_needs_no_terminal(self):
        deutsch = rufe("liste", self.ordner).stdout.splitlines()
        self.assertRegex(deutsch[0], r"^Name +Datum +Sportart +Länge +Zeit +Anstieg +Punkte +Ghost +Art +Start +Ziel$")
        self.assertRegex(deutsch[1], r"^Morgenrunde +21\.09\.24 +Laufen +11,1 km +1:00:00 +– +2 +✓ +→ Strecke +Zürich ")
        self.assertRegex(deutsch[2], r"^kaputt +\d\d\.\d\d\.\d\d +– +0 m +– +– +0 +– +→ Strecke +– +–")
        englisch = rufe("liste", self.ordner, LANG="en_GB.UTF-8").stdout.splitlines()
        self.assertIn("Length", englisch[0])
        self.assertEqual(rufe("liste", self.ordner, LANG="C").stdout, "\n".join(deutsch) + "\n")

    def test_terminal_gets_its_width_colours_and_a_bar(self):
        text = im_terminal("liste", self.ordner, breite=70)
        self.assertIn("/ 3", text)
        self.assertIn("\x1b[1mName\x1b[0m", text)
        ohne = im_terminal("liste", self.ordner, breite=70, NO_COLOR="1")
        self.assertNotIn("\x1b[", ohne)  # everything came from the cache: no bar either
        for zeile in ohne.split("\r\n"):
            self.assertLessEqual(len(zeile), 70)

    def test_tells_what_went_wrong_by_exit_status(self):
        datei = os.path.join(self.ablage.name, "datei")
        open(datei, "w").close()
        lauf = rufe("liste", os.path.join(datei, "darin"), "--format=json")
        self.assertEqual((lauf.returncode, lauf.stdout), (1, ""))
        self.assertEqual(lauf.stderr, f"Ordner nicht erreichbar: {datei}/darin\n")
        for falsch in ([], ["zeige"], ["liste"], ["liste", "a", "b"], ["liste", "a", "--foo"]):
            lauf = rufe(*falsch)
            self.assertEqual((lauf.returncode, lauf.stdout, lauf.stderr.count("\n")), (2, "", 1), falsch)
        self.assertEqual(rufe("--help").returncode, 0)
        self.assertRegex(rufe("--version").stdout, r"^spurkiste-cli \d+\.\d+\.\d+\n$")

    def test_sport_goes_on_behind_a_failure_and_says_so_by_exit_status(self):
        gut, schlecht = os.path.join(self.ordner, "Morgenrunde.gpx"), os.path.join(self.ordner, "kaputt.gpx")
        lauf = rufe("sport", "hiking", schlecht, gut)
        self.assertEqual((lauf.returncode, lauf.stdout), (1, f"{gut}: 1 elements\n"))
        self.assertEqual(lauf.stderr, f"{schlecht}: Die GPX-Datei ist kein lesbares XML.\n")
        self.assertEqual((rufe("sport", "hiking", gut).returncode, rufe("sport", "hiking", gut + "x").returncode), (0, 1))

    def eng(self, was, menge, *argumente):
        def begrenze():
            resource.setrlimit(was, (menge, menge))
        return subprocess.run([PROGRAMM, *argumente], capture_output=True, text=True, timeout=120, env=umgebung(),
                              preexec_fn=begrenze)

    def test_what_could_not_be_read_is_named_and_read_the_next_time(self):
        wahr = self.json("--ohne-cache")
        for nummern in range(4, 14):  # with fewer not even its libraries are found
            lauf = self.eng(resource.RLIMIT_NOFILE, nummern, "liste", self.ordner, "--format", "json")
            if lauf.returncode == 0:
                self.assertEqual(json.loads(lauf.stdout), wahr)
                break
            self.assertEqual(lauf.returncode, 1)
            self.assertNotEqual(lauf.stderr, "")
        self.assertEqual(lauf.returncode, 0)
        self.assertEqual(self.json(), wahr)

    @OHNE_SANITIZER
    def test_memory_that_runs_out_ends_with_a_sentence(self):
        self.schreibe("gross.gpx", "<gpx><trk><trkseg>" + "<trkpt lat='1' lon='2'/>" * 200_000 + "</trkseg></trk></gpx>")
        wahr = self.json("--ohne-cache")
        for mebi in (*range(40, 160, 12), 4096):
            lauf = self.eng(resource.RLIMIT_AS, mebi << 20, "liste", self.ordner, "--format", "json")
            self.assertIn(lauf.returncode, (0, 1, 127), (mebi, lauf.stderr))  # 127: not even its libraries
            self.assertEqual(lauf.returncode == 0, lauf.stderr == "", (mebi, lauf.stderr))
        self.assertEqual((lauf.returncode, json.loads(lauf.stdout)), (0, wahr))
        self.assertEqual(self.json(), wahr)

    @OHNE_SANITIZER
    def test_memory_does_not_grow_with_the_file_whose_sport_is_set(self):
        pfad = os.path.join(self.ordner, "gross.gpx")
        with open(pfad, "w", encoding="utf-8") as datei:
            datei.write("<gpx><trk>")
            for _ in range(400):
                datei.write(" " * (1 << 20))
            datei.write("</trk></gpx>")
        lauf = self.eng(resource.RLIMIT_AS, 300 << 20, "sport", "hiking", pfad)
        self.assertEqual((lauf.returncode, lauf.stderr), (0, ""))
        with open(pfad, "rb") as datei:
            datei.seek(-50, os.SEEK_END)
            self.assertTrue(datei.read().endswith(b"   <type>hiking</type></trk></gpx>"))
        self.assertEqual(os.path.getsize(pfad), 10 + (400 << 20) + 19 + 12)
        with open(pfad, "r+b") as datei:
            datei.truncate(6 << 30)
        lauf = self.eng(resource.RLIMIT_AS, 300 << 20, "sport", "running", pfad)
        self.assertEqual((lauf.returncode, lauf.stderr), (1, f"{pfad}: Die GPX-Datei ist kein lesbares XML.\n"))

    def test_no_name_gives_orders_to_a_terminal(self):
        boese = os.path.join(self.ordner, "=1+1\x1b[31mrot\nzwei.gpx")
        os.rename(os.path.join(self.ordner, "Morgenrunde.gpx"), boese)
        for n in ("x", "y"):
            os.link(boese, os.path.join(self.ordner, f"\x1b{n}.gpx"))
        for aufruf in (["sport", "hiking", boese, self.ordner + "/\x07fehlt.gpx"], ["doppelte", self.ordner],
                       ["doppelte", self.ordner + "\x1b"], ["pruefe", self.ordner], ["liste", self.ordner],
                       ["liste", self.ordner, "--format=csv"], ["liste", boese + "/\x1bdarin"], ["\x1bzeige"]):
            lauf = rufe(*aufruf)
            self.assertNotRegex(lauf.stdout + lauf.stderr, "[\x00-\x09\x0b\x0c\x0e-\x1f]", aufruf)
        self.assertIn("'=1+1 [31mrot zwei", rufe("liste", self.ordner, "--format=csv").stdout)
        self.assertIn(boese + ": 1 elements\n", rufe("sport", "hiking", "--roh", boese).stdout)
        self.assertIn(",=1+1", rufe("liste", self.ordner, "--format=csv", "--roh").stdout.replace('"', ""))
        steuernd = os.path.join(self.ordner, "\x7f\u009b\u202e\u2066.gpx")
        os.rename(boese, steuernd)
        for aufruf, feld in ((["liste", self.ordner, "--format=json"], "pfad"), (["pruefe", self.ordner, "--json"], "datei")):
            lauf = rufe(*aufruf)
            self.assertNotRegex(lauf.stdout, "[\x7f-\x9f\u200e\u200f\u2028-\u202e\u2066-\u2069]", aufruf)
            self.assertIn(steuernd, [eines[feld] for eines in json.loads(lauf.stdout)])
        for falsch in (["liste", self.ordner, "--roh"], ["pruefe", self.ordner, "--json", "--roh"]):
            self.assertEqual(rufe(*falsch).returncode, 2, falsch)

    def test_checks_whatever_the_names_and_fails_only_on_what_cannot_be_read(self):
        spur = "<gpx><trk><trkseg>\n<trkpt lat='1' lon='2'><ele>x</ele></trkpt>\n"
        with open(os.fsencode(self.ordner) + b'/a"\\\n\x01\xff.gpx', "w", encoding="utf-8") as datei:
            datei.write(spur)
        lauf = rufe("pruefe", self.ordner, "--json")
        self.assertEqual((lauf.returncode, lauf.stderr), (0, ""))
        befunde = {os.path.relpath(d["datei"], self.ordner): (d["lesbar"], d["befunde"]) for d in json.loads(lauf.stdout)}
        ende = {"art": "abgebrochen", "anzahl": 1, "zeile": 3, "grund": "das Ende fehlt"}
        self.assertEqual(befunde['a"\\\n\x01\ufffd.gpx'], (True, [ende, {"art": "hoeheUnlesbar", "anzahl": 1, "zeile": 2}]))
        self.assertEqual(befunde["Morgenrunde.gpx"], (True, []))
        os.mkfifo(os.path.join(self.ordner, "rohr.gpx"))
        lauf = rufe("pruefe", self.ordner, "--json")
        self.assertEqual((lauf.returncode, lauf.stderr), (1, f"{self.ordner}/rohr.gpx: nicht lesbar: keine gewöhnliche Datei\n"))
        self.assertIn({"datei": f"{self.ordner}/rohr.gpx", "lesbar": False, "befunde": []}, json.loads(lauf.stdout))
        lauf = rufe("pruefe", os.path.join(self.ordner, "fehlt"), os.path.join(self.ordner, "kaputt.gpx"))
        self.assertEqual(lauf.returncode, 1)
        self.assertIn("1 Datei geprüft, 1 mit Befund, 1 nicht lesbar\n", lauf.stdout)
        leer = os.path.join(self.ablage.name, "leer")
        os.mkdir(leer)
        lauf = rufe("pruefe", leer, "--json")
        self.assertEqual((lauf.returncode, lauf.stdout), (0, "[\n]\n"))

    def test_says_that_it_could_not_write_its_output(self):
        zweimal = os.path.join(self.ablage.name, "zweimal")
        os.mkdir(zweimal)
        for name in ("a.gpx", "b.gpx"):
            with open(os.path.join(zweimal, name), "w", encoding="utf-8") as datei:
                datei.write('<gpx><trk><trkseg><trkpt lat="1" lon="2"/></trkseg></trk></gpx>')
        for worte in (["liste", zweimal], ["doppelte", zweimal], ["pruefe", zweimal, "--json"],
                      ["sport", "cycling", os.path.join(zweimal, "a.gpx")], ["--help"], ["--version"]):
            with open("/dev/full", "w") as voll:
                lauf = subprocess.run([PROGRAMM, *worte], stdout=voll, stderr=subprocess.PIPE, env=umgebung(), timeout=60)
            self.assertEqual((lauf.returncode, lauf.stderr.count(b"\n")), (1, 1), worte)

    def test_finds_resources_where_it_is_told(self):
        leer = os.path.join(self.ablage.name, "leer")
        os.mkdir(leer)
        with open(os.path.join(leer, "orte.tsv"), "w", encoding="utf-8") as datei:
            datei.write("Nirgendheim\t47.3769\t8.5417\n")
        lauf = rufe("liste", self.ordner, "--format=json", "--ohne-cache", "--ressourcen", leer)
        self.assertIn("Nirgendheim", lauf.stdout)
        lauf = rufe("liste", self.ordner, "--format=json", "--ohne-cache", SPURKISTE_RESSOURCEN=leer)
        self.assertIn("Nirgendheim", lauf.stdout)

    def test_name_that_is_not_utf8_is_shown_with_a_replacement_and_read_each_time(self):
        with open(os.path.join(os.fsencode(self.ordner), b"h\xf6he.gpx"), "w") as datei:
            datei.write(SPUR.format(name="Alt", sport=""))
        lauf = rufe("liste", self.ordner, "--format=json")
        self.assertEqual((lauf.returncode, len(json.loads(lauf.stdout)), lauf.stderr), (0, 4, ""))
        tabelle = subprocess.run([PROGRAMM, "liste", self.ordner], capture_output=True, env=umgebung(), timeout=60).stdout
        self.assertIn("h\ufffdhe", tabelle.decode())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
