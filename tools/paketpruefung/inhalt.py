"""What is in the package: each file by the tool of those who will read it, and all of them against the programs."""

import configparser
import glob
import gzip
import json
import os
import platform
import re
import struct
import xml.etree.ElementTree as baum

from .bericht import HAUS, rufe, umgebung

KENNUNG = "org.spurkiste.Spurkiste"
FENSTERKLASSE = "spurkiste"
GROESSEN = (16, 24, 32, 48, 64, 128, 256)
PROGRAMME = ("spurkiste", "spurkiste-cli")
GEBIETE = {"zh-Hans": "zh_CN", "zh-Hant": "zh_TW"}  # languages whose script is told by a territory


def lies(*pfad):
    with open(os.path.join(*pfad), encoding="utf-8") as datei:
        return datei.read()


def pruefe(bericht, paket, ordner):
    bericht.laufe("the package can be unpacked", "dpkg-deb", "-x", paket, ordner)
    bericht.laufe("lintian: no errors, no warnings", "lintian", "--allow-root", "--tag-display-limit=0",
                  "--fail-on=error,warning", paket)
    anteil = os.path.join(ordner, "usr/share")
    pruefe_fassung(bericht, paket, ordner)
    pruefe_eintrag(bericht, anteil)
    pruefe_symbole(bericht, anteil)
    for programm in PROGRAMME:
        pruefe_hilfen(bericht, ordner, programm)
    pruefe_bash(bericht, ordner)
    pruefe_zuordnung(bericht, ordner)


def pruefe_fassung(bericht, paket, ordner):
    paketfassung = rufe("dpkg-deb", "-f", paket, "Version").stdout.strip()
    fassung, _, ausgabe = paketfassung.partition("~")
    system = platform.freedesktop_os_release()
    bericht.gleich("the package names its release", ausgabe, system["ID"].replace("debian", "deb") + system.get("VERSION_ID", ""))
    bericht.gleich("and so does its file", os.path.basename(paket).split("_")[1], paketfassung)
    for programm in PROGRAMME:
        sagt = rufe(os.path.join(ordner, "usr/bin", programm), "--version").stdout.strip()
        bericht.gleich(f"{programm} --version is the package's, without the release", sagt, f"{programm} {fassung}")
    with gzip.open(os.path.join(ordner, "usr/share/doc/spurkiste/changelog.gz"), "rt", encoding="utf-8") as datei:
        bericht.gleich("the changelog begins with this version", datei.readline().split()[1], f"({fassung})")
    metadaten = baum.parse(os.path.join(ordner, f"usr/share/metainfo/{KENNUNG}.metainfo.xml"))
    bericht.gleich("AppStream knows this version", metadaten.find("releases/release").get("version"), fassung)


def pruefe_eintrag(bericht, anteil):
    """Desktop entry and AppStream data: valid, about the same program, in all languages of the window."""
    datei = os.path.join(anteil, f"applications/{KENNUNG}.desktop")
    metadatei = os.path.join(anteil, f"metainfo/{KENNUNG}.metainfo.xml")
    bericht.laufe("desktop-file-validate", "desktop-file-validate", datei, stumm=True)
    bericht.laufe("appstreamcli validate", "appstreamcli", "validate", "--no-net", metadatei)
    bericht.laufe("appstreamcli validate-tree", "appstreamcli", "validate-tree", "--no-net", os.path.dirname(os.path.dirname(anteil)))

    leser = configparser.RawConfigParser(delimiters="=", interpolation=None)
    leser.optionxform = str
    leser.read(datei, encoding="utf-8")
    eintrag = dict(leser["Desktop Entry"])
    bericht.gleich("the entry opens GPX files", (eintrag["Exec"], eintrag["MimeType"]), ("spurkiste %F", "application/gpx+xml;"))
    bericht.gleich("the entry's icon and windows are the program's", (eintrag["Icon"], eintrag["StartupWMClass"]),
                   (KENNUNG, FENSTERKLASSE))
    metadaten = baum.parse(metadatei)
    bericht.gleich("AppStream launches the entry", (metadaten.findtext("id"), metadaten.findtext("launchable")),
                   (KENNUNG, KENNUNG + ".desktop"))

    sprachen = json.loads(lies(HAUS, "resources/translations.json"))["languages"]
    gebiete = {GEBIETE.get(sprache, sprache) for sprache in sprachen} - {"en"}
    for feld in ("GenericName", "Comment", "Keywords"):
        uebersetzt = {name[len(feld) + 1:-1] for name in eintrag if name.startswith(feld + "[")}
        bericht.gleich(f"{feld} in all {len(sprachen)} languages", uebersetzt, gebiete)
    sprachattribut = "{http://www.w3.org/XML/1998/namespace}lang"
    bericht.gleich("AppStream's summary in all of them", {e.get(sprachattribut, "en") for e in metadaten.findall("summary")},
                   gebiete | {"en"})


def pruefe_symbole(bericht, anteil):
    hicolor = os.path.join(anteil, "icons/hicolor")
    gefunden = {}
    for datei in glob.glob(os.path.join(hicolor, "*/apps", KENNUNG + ".png")):
        with open(datei, "rb") as strom:
            gefunden[datei.split(os.sep)[-3]] = struct.unpack(">II", strom.read(24)[16:])
    bericht.gleich("an icon in each size, of that size", gefunden, {f"{g}x{g}": (g, g) for g in GROESSEN})
    bericht.pruefe("the icon's drawing", os.path.isfile(os.path.join(hicolor, "scalable/apps", KENNUNG + ".svg")), "missing")
    bericht.laufe("the PNG icons are what the drawings give", os.path.join(HAUS, "tools/zeichne_symbol"), "--pruefe")


def worte_der_hilfe(ordner, programm):
    """What a user can type: options, commands and sports, as the program itself tells them."""
    hilfe = rufe(os.path.join(ordner, "usr/bin", programm), "--help").stdout
    optionen = set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", hilfe))
    befehle = set(re.findall(r"^  spurkiste-cli ([a-z]+)", hilfe, re.M))
    sportarten = set(re.findall(r"[a-z_]+", hilfe.partition("WERT ist einer von:")[2].partition("\n\n")[0]))
    return optionen, befehle, sportarten


def pruefe_hilfen(bericht, ordner, programm):
    """Manual and completions: readable for their tools, and complete."""
    anteil = os.path.join(ordner, "usr/share")
    handbuch = os.path.join(anteil, f"man/man1/{programm}.1.gz")
    bericht.laufe(f"{programm}.1: man has no warnings", "man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", handbuch, stumm=True,
                  env=umgebung(MANROFFOPT="-z"))
    optionen, befehle, sportarten = worte_der_hilfe(ordner, programm)
    worte = optionen | befehle | sportarten
    texte = {"manual": rufe("man", "--nh", "--nj", "-l", handbuch, env=umgebung(MANWIDTH="2000", MAN_KEEP_FORMATTING="")).stdout,
             "bash": lies(anteil, f"bash-completion/completions/{programm}"),
             "zsh": lies(anteil, "zsh/vendor-completions/_spurkiste"),
             "fish": lies(anteil, f"fish/vendor_completions.d/{programm}.fish").replace("-l ", "--")}
    for name, text in texte.items():
        fehlend = sorted(wort for wort in worte if not re.search(rf"(?<![\w-]){re.escape(wort)}(?![\w-])", text))
        bericht.pruefe(f"{programm}, {name}: all {len(worte)} words of --help", worte and not fehlend, f"missing: {fehlend}")


def pruefe_bash(bericht, ordner):
    """Asks bash what it would offer."""
    anteil = os.path.join(ordner, "usr/share")
    optionen, befehle, sportarten = worte_der_hilfe(ordner, "spurkiste-cli")
    faelle = [
        ("spurkiste-cli ", befehle),
        ("spurkiste-cli sport ", sportarten),
        ("spurkiste-cli liste --format ", {"tabelle", "json", "csv"}),
        ("spurkiste-cli liste --format=c", {"csv"}),
        ("spurkiste-cli liste --format json -", {"--format", "--ohne-cache", "--ressourcen", "--roh"}),
        ("spurkiste-cli pruefe --", {"--json", "--roh"}),
        ("spurkiste-cli pruefe usr/share/", set()),
        ("spurkiste-cli liste u", {"usr"}),
        ("spurkiste --", worte_der_hilfe(ordner, "spurkiste")[0]),
        ("spurkiste A", {"Abend runde.GPX"}),
        ("spurkiste --ordner u", {"usr"}),
    ]
    for name in ("Abend runde.GPX", "Andere.txt"):
        with open(os.path.join(ordner, name), "w", encoding="utf-8") as datei:
            datei.write('<?xml version="1.0"?><gpx version="1.1"/>')
    skript = '''
        . /usr/share/bash-completion/bash_completion && . "$1" || exit 1
        COMP_LINE=$2 COMP_POINT=${#2} COMP_TYPE=9 COMP_KEY=9
        zeile=${2//=/ = }
        read -ra COMP_WORDS <<<"$zeile"; [[ $zeile != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        funktion=$(complete -p "$3") && funktion=${funktion##*-F } && "${funktion% *}" "$3"
        printf '%s\\n' "${COMPREPLY[@]}"
    '''
    for zeile, soll in faelle:
        programm = zeile.split()[0]
        lauf = rufe("bash", "--norc", "-c", skript, "bash", os.path.join(anteil, "bash-completion/completions", programm), zeile, programm, cwd=ordner)
        ist = set(lauf.stdout.splitlines()) - {""}
        if "pruefe usr" in zeile:
            soll = {"usr/share/" + name for name in os.listdir(anteil)}
        bericht.gleich(f"bash completes “{zeile}”", ist, soll)


def pruefe_zuordnung(bericht, ordner):
    """The desktop takes the program for one that opens GPX files."""
    anteil = os.path.join(ordner, "usr/share")
    bericht.laufe("update-desktop-database", "update-desktop-database", os.path.join(anteil, "applications"))
    umfeld = umgebung(XDG_DATA_DIRS=anteil + ":/usr/share", XDG_DATA_HOME=os.path.join(ordner, "daten"),
                      XDG_CONFIG_HOME=os.path.join(ordner, "konfiguration"), PATH=os.path.join(ordner, "usr/bin") + ":" + os.environ["PATH"])
    art = rufe("gio", "info", "-a", "standard::content-type", os.path.join(ordner, "Abend runde.GPX"), env=umfeld).stdout
    bericht.pruefe("a .gpx file is an application/gpx+xml", "application/gpx+xml" in art, art)
    oeffner = rufe("gio", "mime", "application/gpx+xml", env=umfeld).stdout
    bericht.pruefe("and is opened by the program", KENNUNG + ".desktop" in oeffner, oeffner)
