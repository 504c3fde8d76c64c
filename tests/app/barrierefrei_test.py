"""Reads the real window as a screen reader does: what everything is, what it is called, what state it is in, and what
is said when something appears.

barrierefrei_test.py PROGRAM RESOURCES.
"""

import buehne
from buehne import spur, warte_bis, xdotool
from ohr import Ohrentest


class Barrierefrei(Ohrentest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        wetter = "<extensions><wetter temp='12.5' feuchte='60' wind='9' windrichtung='NW' lage='Sonne'/></extensions>"
        cls.beginne({"Alpen": spur(47.4, "2023-01-02"), "Tour": spur(47.9, "2024-09-21", "<type>running</type>" + wetter),
                     "kaputt": "<gpx><trk>"})

    # --- What is there ----------------------------------------------------------------------------------------------

    def rolle(self, element):
        """By its number: the names that the accessibility library has for roles differ between its versions."""
        rolle = element.getRole()
        name = next(name for name in dir(self.atspi) if name.startswith("ROLE_") and getattr(self.atspi, name) == rolle)
        return name.removeprefix("ROLE_").replace("_", " ").lower()

    def zustaende(self, element):
        return {self.atspi.stateToString(zustand) for zustand in element.getState().getStates()}

    def erwarte(self, rolle, name, *zustaende):
        """The one visible element of this role and name, once it is in these states."""
        def gefunden():
            alle = [e for e in self.sichtbare() if (self.rolle(e), e.name) == (rolle, name)]
            return len(alle) == 1 and self.zustaende(alle[0]) >= set(zustaende) and alle
        return warte_bis(gefunden, f"there is one {rolle} {name}, {zustaende}")[0]

    def sichtbare(self):
        return list(self.programm.elemente(sichtbar=True))

    def test_1_controls_have_role_name_and_state(self):
        self.erwarte("frame", "Korvo GPX Library", "active")
        knopf = ("focusable", "sensitive")
        for name in ("Importieren", "Ordner", "Neu laden", "Sprache"):
            self.erwarte("push button", name, *knopf)
        for filter_ in ("Start", "Ziel", "Sport", "Ghost", "Art", "Länge"):
            gefunden, = [e for e in self.sichtbare() if self.rolle(e) == "push button" and e.name.startswith(filter_ + ": ")]
            self.assertLessEqual(set(knopf), self.zustaende(gefunden), filter_)
        self.erwarte("text", "Suchen", "editable", *knopf)
        self.erwarte("table", "GPX-Dateien", *knopf)
        self.erwarte("tool bar", "Filter")
        for text in ("3 ROUTEN", "3 Dateien", self.programm.ordner):
            self.erwarte("label", text)

    def test_2_nothing_that_takes_the_keyboard_is_nameless(self):
        self.waehle_zeile("Tour")
        rollen = ("push button", "text", "table", "list", "combo box", "check box", "menu item", "dialog", "frame", "image", "panel")
        namenlos = [self.rolle(e) for e in self.sichtbare() if self.rolle(e) in rollen and not e.name.strip()]
        self.assertEqual(namenlos, [])

    def test_3_cells_say_what_eyes_see(self):
        tabelle = self.programm.tabelle()
        self.assertEqual((tabelle.nRows, tabelle.nColumns), (3, 11))
        self.assertEqual([tabelle.getColumnHeader(spalte).name for spalte in range(11)],
                         ["Name", "Datum", "Sportart", "Länge", "Zeit", "Anstieg", "Punkte", "Ghost", "Art", "Start", "Ziel"])
        self.assertEqual([self.rolle(tabelle.getColumnHeader(spalte)) for spalte in range(11)], ["table column header"] * 11)
        self.assertEqual([tabelle.getColumnHeader(spalte).description for spalte in range(3)], ["", "absteigend sortiert", ""])
        erwartet = {"Tour": ["Tour", "21.09.24", "Sportart Laufen", "58,2 km", "1:00:00", "–", "2",
                             "Zeitstempel vorhanden — Ghost-tauglich", "→ Strecke", "Zürich", "Hüfingen"]}
        self.waehle_zeile("Alpen")
        for reihe in range(3):
            zellen = [self.programm.zelle_bei(reihe, spalte) for spalte in range(11)]
            self.assertEqual([self.rolle(zelle) for zelle in zellen], ["table cell"] * 11)
            name, gelesen = zellen[0].name, [zelle.name for zelle in zellen]
            self.assertTrue(all(gelesen), "a cell that eyes see filled is not silent")
            self.assertEqual(gelesen, erwartet.get(name, gelesen))
            self.assertEqual({"selected" in self.zustaende(zelle) for zelle in zellen}, {name == "Alpen"}, name)
            self.assertEqual("focused" in self.zustaende(zellen[0]), name == "Alpen", name)
        xdotool("key", "ctrl+a")
        self.ohr.warte(lambda: self.programm.tabelle().nSelectedRows == 3, "all rows are selected")

    def test_4_tiles_and_cards_are_groups_with_names(self):
        self.waehle_zeile("Tour")
        for titel, wert in ("DISTANZ", "58,2 km"), ("ZEIT", "1:00:00"), ("PUNKTE", "2"), ("WETTER", None):
            kachel, = [e for e in self.sichtbare() if self.rolle(e) == "panel" and e.name.startswith(titel + ": ")]
            if wert is not None:
                self.assertEqual(kachel.name, f"{titel}: {wert}")
            self.assertEqual([kind.name for kind in kachel][:2], kachel.name.split(": ", 1))
        for karte, zeile in ("EINORDNUNG", "Strecke"), ("ROUTE", None), ("DATEI", "Tour.gpx"):
            texte = [kind.name for kind in self.erwarte("panel", karte)]
            self.assertIn(zeile or texte[0], texte)
        self.assertEqual(self.erwarte("image", "STRECKE").description, "Start grün, Ziel rot")
        for name in ("Sportart Laufen", "Sportart ändern", "IM ORDNER ZEIGEN"):
            self.erwarte("push button", name, "focusable", "sensitive")

    # --- What is said -----------------------------------------------------------------------------------------------

    def scheitere(self, neuer_name):
        """Renames the selected file to a name that is taken."""
        self.ohr.warte_auf_fokus(lambda: xdotool("key", "F2"))
        xdotool("type", "--delay", "20", neuer_name)
        self.ohr.warte_auf_fokus(lambda: xdotool("key", "Return"))

    def test_5_a_notice_is_announced_when_it_appears_and_only_then(self):
        self.waehle_zeile("Tour")
        self.ohr.lausche()
        self.assertEqual(self.ohr.meldungen(), [])
        erste, zweite = ("Es gibt schon eine Datei „%s.gpx“" % name for name in ("Alpen", "kaputt"))
        self.scheitere("Alpen")
        self.ohr.warte(lambda: self.ohr.meldungen() == [erste], "the notice is announced")
        meldung, = [e for e in self.sichtbare() if self.rolle(e) == "notification"]
        self.assertEqual([self.rolle(meldung.parent), *(kind.name for kind in meldung)], ["status bar", erste])
        # Other refreshes of the window are no reason to say it again.
        xdotool("key", "Down", "Up")
        self.ohr.warte(lambda: "Tour.gpx" in self.programm.texte(), "the selection went there and back")
        # Another notice takes its place.
        self.scheitere("kaputt")
        self.ohr.warte(lambda: self.ohr.meldungen() == [erste, zweite], "the other notice is announced")
        self.scheitere("kaputt")
        self.ohr.warte(lambda: self.ohr.meldungen() == [erste, zweite, zweite], "what happens again is said again")

    def test_6_menus_say_what_is_chosen(self):
        self.waehle_zeile("Tour")
        rolle, name = self.ohr.warte_auf_fokus(lambda: xdotool("key", "space"))
        self.assertIn(rolle, (self.atspi.ROLE_MENU_ITEM, self.atspi.ROLE_CHECK_MENU_ITEM))
        self.assertEqual(name, "Laufen")
        self.assertIn("checked", self.zustaende(self.ohr.quelle))
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "Down"))[1], "Motorrad")
        self.ohr.warte_auf_fokus(lambda: xdotool("key", "Escape"))
        # What is only suggested is where the menu begins, but not chosen. Arrow Up opens it, from the panel, too.
        self.waehle_zeile("Alpen")
        self.ohr.gehe_zu(self.atspi.ROLE_PUSH_BUTTON, "Sportart ändern", "shift+Tab")
        self.ohr.gehe_zu(self.atspi.ROLE_PUSH_BUTTON, "Sportart Wandern")
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "Up")), (rolle, "Wandern"))
        self.assertNotIn("checked", self.zustaende(self.ohr.quelle))
        self.erwarte("push button", "Sportart Wandern", "expandable", "expanded")
        self.ohr.warte_auf_fokus(lambda: xdotool("key", "Escape"))
        self.erwarte("push button", "Sportart Wandern", "expandable", "collapsed")
        self.waehle_zeile("Tour")
        self.ohr.gehe_zu(self.atspi.ROLE_PUSH_BUTTON, "Art: ")
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "space")), (self.atspi.ROLE_LIST, "Art"))
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "Down")), (self.atspi.ROLE_LIST_ITEM, "Strecke"))
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "Escape")), (self.atspi.ROLE_PUSH_BUTTON, "Art: alle"))

    def test_7_the_header_says_its_column_and_whether_it_sorts(self):
        self.ohr.gehe_zu(self.atspi.ROLE_TABLE_COLUMN_HEADER)
        self.assertEqual(self.ohr.fokus[-1][1:], ("Name", ""))
        kopf = self.ohr.quelle
        for taste, ansage in ("Right", ("Datum", "absteigend sortiert")), ("Return", ("Datum", "aufsteigend sortiert")), ("Left", ("Name", "")):
            xdotool("key", taste)
            self.ohr.warte(lambda: (kopf.name, kopf.description) == ansage, f"after {taste}: {ansage}")

    def test_8_the_sheet_is_a_dialog_and_an_empty_name_disables_its_button(self):
        self.waehle_zeile("Tour")
        self.assertEqual(self.ohr.warte_auf_fokus(lambda: xdotool("key", "F2")), (self.atspi.ROLE_TEXT, "Dateiname"))
        self.erwarte("dialog", "Datei umbenennen", "modal")
        self.erwarte("text", "Dateiname", "focused", "editable")
        self.erwarte("push button", "Umbenennen", "sensitive", "is default")
        xdotool("key", "Delete")
        self.ohr.warte(lambda: "sensitive" not in self.zustaende(self.erwarte("push button", "Umbenennen")), "the button is disabled")
        xdotool("key", "Escape")
        self.ohr.warte(lambda: not self.programm.alle(self.atspi.ROLE_DIALOG), "the sheet is closed")

    def test_9_says_that_nothing_was_found(self):
        self.ohr.warte_auf_fokus(lambda: xdotool("key", "ctrl+f"))
        xdotool("type", "--delay", "20", "nirgends")
        self.erwarte("label", "Nichts gefunden")
        self.assertEqual(self.programm.reihen(), [])
        xdotool("key", "Escape")
        self.ohr.warte(lambda: len(self.programm.reihen()) == 3, "Escape takes the search back")


if __name__ == "__main__":
    buehne.main()
