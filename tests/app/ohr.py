"""What a screen reader hears of the program on the accessibility bus, as it happens."""

from gi.repository import GLib

from buehne import Fenstertest, warte_bis, xdotool


class Ohr:
    """Listens from now on, which is before the program starts: that asks once whether anybody does. Events arrive while
    somebody waits."""

    def __init__(self, atspi):
        self.atspi = atspi
        self.programm = None
        self.fokus = []    # (role, name, description) of what got the keyboard
        self.quelle = None  # and itself, the last one
        self.gezeigt = []  # (role, texts) of what appeared
        atspi.Registry.registerEventListener(self.hoere, "object:state-changed:focused", "object:state-changed:showing")

    def hoere(self, ereignis):
        if not ereignis.detail1:
            return
        try:
            quelle = ereignis.source
            if ereignis.type.startswith("object:state-changed:focused"):
                self.fokus.append((quelle.getRole(), quelle.name, quelle.description))
                self.quelle = quelle
            else:
                self.gezeigt.append((quelle.getRole(), [kind.name for kind in quelle]))
        except GLib.Error:  # it has gone already
            pass

    def lausche(self):
        """Hears all that was said until now: what answers a question comes behind what was said before it."""
        self.programm.fenster()
        while GLib.MainContext.default().iteration(False):
            pass

    def warte(self, bedingung, worauf):
        def gehoert():
            self.lausche()
            return bedingung()
        return warte_bis(gehoert, worauf)

    def warte_auf_fokus(self, tue):
        """Does something that moves the keyboard, and returns the role and the name of what has it then."""
        self.lausche()
        self.fokus.clear()
        tue()
        # It may pass through several hands, and be told of after it went on.
        self.warte(lambda: self.fokus and self.quelle.getState().contains(self.atspi.STATE_FOCUSED), "something gets the keyboard")
        return self.fokus[-1][:2]

    def gehe_zu(self, rolle, name="", taste="Tab"):
        """Presses a key until a control of this role, whose name begins so, has the keyboard."""
        besucht = []
        while len(besucht) < 40:
            hier = self.warte_auf_fokus(lambda: xdotool("key", taste))
            if hier[0] == rolle and hier[1].startswith(name):
                return
            besucht.append(hier[1])
        raise AssertionError(f"{taste} does not lead to {name or rolle}, only to {besucht}")

    def meldungen(self):
        """The notices that appeared."""
        return [texte[0] for rolle, texte in self.gezeigt if rolle == self.atspi.ROLE_NOTIFICATION]


class Ohrentest(Fenstertest):
    """Tests of one program that is used by keys alone and listened to."""

    @classmethod
    def beginne(cls, dateien):
        cls.ohr = Ohr(cls.atspi)
        cls.heim = cls.fuelle("heim", {})
        cls.ohr.programm = cls.programm = cls.starte(cls.fuelle("Meine Touren", dateien), cls.heim)
        cls.programm.hole_nach_vorn()

    def maengel(self):
        """What somebody who listens would stumble over, whatever state the window is in: a control without a name or with
        a role that says nothing, no control or several with the keyboard, choices that seem open, and pieces that are read
        before others that are seen before them."""
        atspi, maengel, mit_tastatur = self.atspi, [], []
        rollen = (atspi.ROLE_PUSH_BUTTON, atspi.ROLE_TEXT, atspi.ROLE_TABLE, atspi.ROLE_LABEL)

        def lies(element):
            """Whether there is something to be read."""
            zustand, name, rolle = element.getState(), element.name.strip(), element.getRole()
            if zustand.contains(atspi.STATE_FOCUSED):
                mit_tastatur.append(name)
            if zustand.contains(atspi.STATE_FOCUSABLE) and (not name or rolle not in rollen):
                maengel.append(f"{element.getRoleName()} {name!r} takes the keyboard")
            if zustand.contains(atspi.STATE_EXPANDABLE) == (zustand.contains(atspi.STATE_EXPANDED) or not zustand.contains(atspi.STATE_COLLAPSED)):
                maengel.append(f"{name} is not closed")
            davor = None
            kinder = [] if rolle == atspi.ROLE_TABLE else [k for k in element if k is not None and k.getState().contains(atspi.STATE_SHOWING)]
            for kind in kinder:
                if not lies(kind):
                    continue
                hier = kind.queryComponent().getExtents(atspi.DESKTOP_COORDS)
                if davor and (hier.y + hier.height <= davor.y or
                              hier.y < davor.y + davor.height and hier.x + hier.width <= davor.x):
                    maengel.append(f"{kind.getRoleName()} {kind.name!r} is read too late")
                davor, name = hier, name or "some"
            return bool(name)

        self.ohr.lausche()
        for fenster in self.programm.fenster():
            lies(fenster)
        kopf = self.ohr.quelle  # the table's header is among its cells, which nobody goes through here
        if kopf is not None and kopf.getRole() == atspi.ROLE_TABLE_COLUMN_HEADER and kopf.getState().contains(atspi.STATE_FOCUSED):
            mit_tastatur.append(kopf.name)
        return maengel + [f"the keyboard is with {mit_tastatur}"] * (len(mit_tastatur) != 1)

    def erwarte_lesbares(self):
        warte_bis(lambda: not self.maengel(), lambda: f"all can be read, but {self.maengel()}")

    def waehle_zeile(self, name):
        if self.ohr.warte_auf_fokus(lambda: xdotool("key", "ctrl+f"))[0] != self.atspi.ROLE_TEXT:
            self.fail("Ctrl+F does not lead to the search")
        self.ohr.gehe_zu(self.atspi.ROLE_TABLE)
        xdotool("key", "Home", *["Down"] * self.programm.reihen().index(name))
        self.ohr.warte(lambda: name + ".gpx" in self.programm.texte(), f"{name} is selected")
