#include "erzeuge/Gpx.h"

#include "erzeuge/Zeittext.h"

namespace spurkiste::erzeuge {

namespace {

constexpr Stil kStile[] = {
    {.ersteller = "Fahrtenschreiber 5.1", .gewicht = 6},
    {.ersteller = "Pulsuhr Export", .gewicht = 6, .stellen = 12, .hoehenStellen = 9, .millisekunden = true},
    {.ersteller = "Sportbuch", .gewicht = 5, .einzug = " ", .stellen = 7},
    {.ersteller = "Wegweiser Web", .gewicht = 3, .einzug = "", .zeilenende = "", .stellen = 5},
    {.ersteller = "Handempfaenger GH-7",
     .gewicht = 3,
     .einzug = "\t",
     .zeilenende = "\r\n",
     .stellen = 9,
     .hoehenStellen = 2,
     .marke = true},
    {.ersteller = "Routenplaner 98",
     .gewicht = 2,
     .einzug = " ",
     .zeilenende = "\r\n",
     .stellen = 8,
     .hoehenStellen = 6,
     .latin1 = true},
    {.ersteller = "logger2gpx",
     .gewicht = 2,
     .einzug = "",
     .hoehenStellen = 0,
     .gpx10 = true,
     .punktAufEinerZeile = true,
     .einfacheStriche = true},
    {.ersteller = "Bergkarte unterwegs", .gewicht = 2, .stellen = 7, .punktAufEinerZeile = true, .leerraumVorab = true},
    {.ersteller = "Tachoskript", .gewicht = 1, .einzug = "    ", .hoehenStellen = 3, .gpx10 = true, .ohneZone = true},
};

/// Writes one file; the text grows from start to end.
class Schreiber {
  public:
    Schreiber(const Fahrt& fahrt, const Stil& stil) : fahrt_(fahrt), stil_(stil) {}

    std::string schreibe() {
        text_.reserve(2048 + fahrt_.weg.punkte.size() * 256);
        schreibeKopf();
        const std::string_view spur = fahrt_.route ? "rte" : "trk";
        oeffne(spur);
        if (fahrt_.spurName) {
            schreibeElement("name", *fahrt_.spurName);
        }
        if (fahrt_.typ) {
            schreibeElement("type", *fahrt_.typ);
        }
        if (!fahrt_.wetterAmPunkt && hatWetter()) {
            oeffne("extensions");
            for (const Wetterprobe& probe : fahrt_.wetter) {
                schreibeWetter(probe);
            }
            schliesse("extensions");
        }
        schreibePunkte();
        schliesse(spur);
        schliesse("gpx");
        return std::move(text_);
    }

  private:
    void attribut(std::string_view name, std::string_view wert) {
        text_ += ' ';
        text_ += name;
        text_ += '=';
        text_ += strich();
        maskiere(wert);
        text_ += strich();
    }

    [[nodiscard]] char strich() const { return stil_.einfacheStriche ? '\'' : '"'; }
    [[nodiscard]] bool hatWetter() const { return !fahrt_.wetter.empty() && !stil_.gpx10; }
    [[nodiscard]] bool hatPuls() const { return fahrt_.puls && !stil_.gpx10; }

    void schreibeKopf() {
        if (stil_.marke) {
            text_ += "\xEF\xBB\xBF";
        }
        if (stil_.leerraumVorab) {
            text_ += '\n';
        }
        text_ += "<?xml";
        attribut("version", "1.0");
        attribut("encoding", stil_.latin1 ? "ISO-8859-1" : "UTF-8");
        text_ += "?>";
        neueZeile();
        text_ += "<gpx";
        attribut("version", stil_.gpx10 ? "1.0" : "1.1");
        attribut("creator", stil_.ersteller);
        attribut("xmlns", stil_.gpx10 ? "http://www.topografix.com/GPX/1/0" : "http://www.topografix.com/GPX/1/1");
        if (hatPuls()) {
            attribut("xmlns:gpxtpx", "http://www.garmin.com/xmlschemas/TrackPointExtension/v1");
        }
        if (hatWetter()) {
            attribut("xmlns:wx", "urn:spurkiste:wetter");
        }
        text_ += '>';
        ++tiefe_;
        neueZeile();
        if (!stil_.gpx10 && (fahrt_.metadatenName || fahrt_.zeiten)) {
            oeffne("metadata");
            if (fahrt_.metadatenName) {
                schreibeElement("name", *fahrt_.metadatenName);
            }
            if (fahrt_.zeiten) {
                schreibeZeit(fahrt_.vorhaben.beginn);
                neueZeile();
            }
            schliesse("metadata");
        }
    }

    void schreibePunkte() {
        const Weg& weg = fahrt_.weg;
        std::size_t segment = 0;
        for (std::size_t i = 0; i < weg.punkte.size(); ++i) {
            if (!fahrt_.route && segment < weg.segmente.size() && weg.segmente[segment] == i) {
                if (segment++ > 0) {
                    schliesse("trkseg");
                }
                oeffne("trkseg");
            }
            schreibePunkt(i);
        }
        if (segment > 0) {
            schliesse("trkseg");
        }
    }

    void schreibePunkt(std::size_t nummer) {
        const Wegpunkt& punkt = fahrt_.weg.punkte[nummer];
        const std::string_view name = fahrt_.route ? "rtept" : "trkpt";
        ruecke();
        text_ += '<';
        text_ += name;
        text_ += " lat=";
        text_ += strich();
        haengeFest(text_, punkt.ort.breite, stil_.stellen);
        text_ += strich();
        text_ += " lon=";
        text_ += strich();
        haengeFest(text_, punkt.ort.laenge, stil_.stellen);
        text_ += strich();
        const Wetterprobe* probe = probeAm(nummer);
        if (!fahrt_.hoehen && !fahrt_.zeiten && !hatPuls() && probe == nullptr) {
            text_ += "/>";
            neueZeile();
            return;
        }
        text_ += '>';
        einzeilig_ = stil_.punktAufEinerZeile;
        ++tiefe_;
        neueZeile();
        if (fahrt_.hoehen) {
            ruecke();
            text_ += "<ele>";
            haengeFest(text_, punkt.hoehe, stil_.hoehenStellen);
            text_ += "</ele>";
            neueZeile();
        }
        if (fahrt_.zeiten) {
            schreibeZeit(punkt.zeit);
            neueZeile();
        }
        if (hatPuls() || probe != nullptr) {
            oeffne("extensions");
            if (hatPuls()) {
                oeffne("gpxtpx:TrackPointExtension");
                ruecke();
                text_ += "<gpxtpx:hr>";
                haengeGanz(text_, punkt.puls);
                text_ += "</gpxtpx:hr>";
                neueZeile();
                schliesse("gpxtpx:TrackPointExtension");
            }
            if (probe != nullptr) {
                schreibeWetter(*probe);
            }
            schliesse("extensions");
        }
        --tiefe_;
        ruecke();
        einzeilig_ = false;
        text_ += "</";
        text_ += name;
        text_ += '>';
        neueZeile();
    }

    // The samples of points lie evenly along the track, the first at its start.
    [[nodiscard]] const Wetterprobe* probeAm(std::size_t nummer) const {
        if (!fahrt_.wetterAmPunkt || !hatWetter()) {
            return nullptr;
        }
        const std::size_t abstand = fahrt_.weg.punkte.size() / fahrt_.wetter.size();
        const bool hier = nummer % abstand == 0 && nummer / abstand < fahrt_.wetter.size();
        return hier ? &fahrt_.wetter[nummer / abstand] : nullptr;
    }

    void schreibeWetter(const Wetterprobe& probe) {
        ruecke();
        text_ += "<wx:wetter";
        attributZahl("temp", probe.temperatur);
        attributZahl("feuchte", probe.feuchte);
        attributZahl("wind", probe.wind);
        attribut("windrichtung", probe.windrichtung);
        attribut("lage", probe.lage);
        text_ += "/>";
        neueZeile();
    }

    void attributZahl(std::string_view name, double wert) {
        std::string zahl;
        haengeFest(zahl, wert, 1);
        attribut(name, zahl);
    }

    void schreibeZeit(std::int64_t zeit) {
        ruecke();
        text_ += "<time>";
        haengeZeit(text_, zeit, "Y-m-dTH:M:S");
        if (stil_.millisekunden) {
            text_ += ".000";
        }
        if (!stil_.ohneZone) {
            text_ += 'Z';
        }
        text_ += "</time>";
    }

    void schreibeElement(std::string_view name, std::string_view inhalt) {
        ruecke();
        text_ += '<';
        text_ += name;
        text_ += '>';
        maskiere(inhalt);
        text_ += "</";
        text_ += name;
        text_ += '>';
        neueZeile();
    }

    void oeffne(std::string_view name) {
        ruecke();
        text_ += '<';
        text_ += name;
        text_ += '>';
        ++tiefe_;
        neueZeile();
    }

    void schliesse(std::string_view name) {
        --tiefe_;
        ruecke();
        text_ += "</";
        text_ += name;
        text_ += '>';
        neueZeile();
    }

    void ruecke() {
        if (!einzeilig_) {
            for (int i = 0; i < tiefe_; ++i) {
                text_ += stil_.einzug;
            }
        }
    }

    void neueZeile() {
        if (!einzeilig_) {
            text_ += stil_.zeilenende;
        }
    }

    // Text as content or attribute value, in the file's encoding.
    void maskiere(std::string_view inhalt) {
        for (std::size_t i = 0; i < inhalt.size(); ++i) {
            const auto byte = static_cast<unsigned char>(inhalt[i]);
            if (byte == '&') {
                text_ += "&amp;";
            } else if (byte == '<') {
                text_ += "&lt;";
            } else if (byte == '"') {
                text_ += "&quot;";
            } else if (byte == '\'') {
                text_ += "&apos;";
            } else if (byte < 0x80 || !stil_.latin1) {
                text_ += inhalt[i];
            } else {
                const int folge = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
                std::uint32_t zeichen = byte & (0x3FU >> folge);
                for (int k = 0; k < folge; ++k) {
                    zeichen = zeichen << 6 | (static_cast<unsigned char>(inhalt[++i]) & 0x3FU);
                }
                if (zeichen <= 0xFF) {
                    text_ += static_cast<char>(zeichen);
                } else {
                    text_ += "&#";
                    haengeGanz(text_, zeichen);
                    text_ += ';';
                }
            }
        }
    }

    const Fahrt& fahrt_;
    const Stil& stil_;
    std::string text_;
    int tiefe_ = 0;
    bool einzeilig_ = false;
};

}  // namespace

std::span<const Stil> stile() {
    return kStile;
}

std::string alsGpx(const Fahrt& fahrt, const Stil& stil) {
    return Schreiber(fahrt, stil).schreibe();
}

}  // namespace spurkiste::erzeuge
