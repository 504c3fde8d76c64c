#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Zeitpunkt.h"
#include "track/GpxBefund.h"
#include "track/GpxMetadaten.h"
#include "track/GpxStatistik.h"
#include "track/XmlLauf.h"

namespace spurkiste {

/// Points of one kind with the times of the first and the last that has one.
struct GpxPunktliste {
    std::vector<GpxPunkt> punkte;
    std::optional<Zeitpunkt> ersteZeit;
    std::optional<Zeitpunkt> letzteZeit;

    void haengeAn(const GpxPunkt& punkt, std::optional<Zeitpunkt> zeit) {
        punkte.push_back(punkt);
        if (zeit) {
            if (!ersteZeit) {
                ersteZeit = zeit;
            }
            letzteZeit = zeit;
        }
    }

    void leere() {
        constexpr std::size_t behalten = std::size_t{1} << 18U;  // 8 MB: the room of one huge file is not kept
        if (punkte.capacity() > behalten) {
            punkte = {};
        }
        punkte.clear();
        ersteZeit.reset();
        letzteZeit.reset();
    }
};

/// Counts what is passed over, by kind.
class GpxStrichliste {
  public:
    void streiche(GpxBefund::Art art, std::size_t zeile) {
        GpxBefund& befund = befunde_[static_cast<std::size_t>(art)];
        if (befund.anzahl++ == 0) {
            befund.zeile = zeile;
        }
    }

    void streiche(GpxBefund::Art art, std::size_t zeile, XmlFehler fehler) {
        streiche(art, zeile);
        befunde_[static_cast<std::size_t>(art)].fehler = fehler;
    }

    /// What was counted, in the order of the kinds.
    [[nodiscard]] std::vector<GpxBefund> ergebnis() const {
        std::vector<GpxBefund> gefunden;
        for (std::size_t art = 0; art < befunde_.size(); ++art) {
            if (befunde_[art].anzahl > 0) {
                gefunden.push_back(befunde_[art]);
                gefunden.back().art = static_cast<GpxBefund::Art>(art);
            }
        }
        return gefunden;
    }

  private:
    static constexpr GpxBefund kNichts{GpxBefund::Art::keinPunkt, 0, 1, XmlFehler::keiner};
    std::array<GpxBefund, 6> befunde_{kNichts, kNichts, kNichts, kNichts, kNichts, kNichts};
};

/// Collects what a record needs while an XmlLauf passes through a GPX file. Bound to one thread.
class GpxSammler final : public XmlEmpfaenger {
  public:
    /// The points go into `spur` and `route`. `maengel`, when there is one, hears of what is passed over.
    GpxSammler(GpxPunktliste& spur, GpxPunktliste& route, GpxStrichliste* maengel)
        : spur_(spur), route_(route), maengel_(maengel) {}

    bool anfang(std::string_view name, const XmlAttribute& attribute) override;
    void text(std::string_view stueck) override;
    bool ende() override;
    void schluss(XmlFehler fehler) override;

    /// The record's fields that come from the content.
    [[nodiscard]] GpxMetadaten ergebnis() const;

    /// The points that the record is about: those of the tracks, without any those of the routes.
    [[nodiscard]] const GpxPunktliste& punkte() const { return spur_.punkte.empty() ? route_ : spur_; }

    /// A point's time: see GpxLeser::datumAus().
    [[nodiscard]] static std::optional<Zeitpunkt> datumAus(std::string_view text);

  private:
    /// The elements that mean something somewhere.
    enum class Element : std::uint8_t {
        anderes,
        trk,
        trkseg,
        trkpt,
        rte,
        rtept,
        metadata,
        ele,
        time,
        name,
        type,
        wetter
    };

    static Element elementMitNamen(std::string_view name);
    static bool istPunkt(Element element);
    static bool brauchtText(Element element, Element eltern);
    void beginne(Element element, const XmlAttribute& attribute);
    void beende(Element element, Element eltern);
    [[nodiscard]] std::string_view gelesenerText() const;
    void merkeErsten(std::optional<std::string>& ziel) const;
    void haengePunktAn(GpxPunktliste& liste, std::int64_t segment) const;
    void vermisse(bool gefunden, GpxBefund::Art art) const;

    GpxPunktliste& spur_;
    GpxPunktliste& route_;
    GpxStrichliste* maengel_;
    std::size_t punktZeile_ = 1;  // only kept for maengel_
    std::optional<std::string> spurName_;
    std::optional<std::string> metaName_;
    std::optional<std::string> sportRoh_;
    WetterBilanz wetter_;
    std::vector<Element> stapel_;  // the open elements by full name
    std::size_t textTiefe_ = 0;    // depth of the outermost open element whose text is wanted; 0 for none
    std::string text_;             // since the last element start, whatever ended meanwhile
    std::int64_t spurSegment_ = -1;
    std::int64_t routenSegment_ = -1;
    std::optional<double> breite_;
    std::optional<double> laenge_;
    std::optional<double> hoehe_;
    std::optional<Zeitpunkt> zeit_;
};

}  // namespace spurkiste
