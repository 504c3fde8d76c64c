#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/Selten.h"
#include "base/Zeitpunkt.h"
#include "geo/Koordinate.h"
#include "track/GpxSportart.h"
#include "track/Skizze.h"

namespace spurkiste {

/// The weather of one file, summed up from the samples in its extensions. Every figure may be absent.
struct GpxWetter {
    std::optional<double> temperaturCelsius;   ///< mean air temperature, degrees Celsius
    std::optional<double> luftfeuchteProzent;  ///< mean relative humidity, percent
    std::optional<double> windKmh;             ///< mean wind speed, kilometres per hour
    std::optional<std::string> windrichtung;   ///< most frequent direction text of the file
    std::optional<std::string> lage;           ///< most frequent condition text of the file
    std::int64_t messpunkte = 0;               ///< number of samples, at least 1

    friend bool operator==(const GpxWetter&, const GpxWetter&) = default;
};

/// Everything the application keeps of one GPX file. Immutable once built and then shared between threads, rows and
/// the cache; its identity is `pfad`. Equal when all stored fields are. All numbers are finite.
struct GpxMetadaten {
    std::string pfad;                     ///< absolute path, the system's own bytes
    std::string dateiName;                ///< last path component without its extension
    std::optional<std::string> spurName;  ///< name given inside the file: of a track, else of the metadata
    std::optional<Zeitpunkt> datum;       ///< first timestamp of the points, in point order
    Zeitpunkt dateiDatum;                 ///< time of the content's last change when the file was read
    std::int64_t dateiGroesse = 0;        ///< bytes when the file was read
    double streckeMeter = 0.0;            ///< length in metres
    double dauerSekunden = 0.0;           ///< from the first to the last timestamp; 0 when the last is not later
    double anstiegMeter = 0.0;            ///< ascent in metres after smoothing
    std::int64_t punkte = 0;              ///< number of points that the figures were computed from
    std::optional<Koordinate> start;      ///< first of those points
    std::optional<Koordinate> ende;       ///< last of those points
    bool rundkurs = false;                ///< a loop: at least 1000 m long and its ends less than 200 m apart
    bool hatZeitstempel = false;          ///< dauerSekunden > 0: can be replayed against time
    std::optional<std::string> sportRoh;  ///< sport text of the file, trimmed, case kept
    std::optional<std::string> startOrt;  ///< place label of `start`
    std::optional<std::string> zielOrt;   ///< place label of `ende`
    Skizze skizze;                        ///< thinned polylines; empty without points
    Selten<GpxWetter> wetter;             ///< absent without weather samples

    friend bool operator==(const GpxMetadaten&, const GpxMetadaten&) = default;

    /// The record's identity, its path.
    [[nodiscard]] const std::string& id() const { return pfad; }
    /// The date to show and to sort by: the first timestamp, else the file's date.
    [[nodiscard]] Zeitpunkt anzeigeDatum() const { return datum.value_or(dateiDatum); }
    /// 1 when hatZeitstempel, else 0: a form to sort by.
    [[nodiscard]] int ghostWert() const { return hatZeitstempel ? 1 : 0; }
    /// 1 when rundkurs, else 0: a form to sort by.
    [[nodiscard]] int artWert() const { return rundkurs ? 1 : 0; }

    /// Whether the file names a sport itself, recognised or not.
    [[nodiscard]] bool nenntSport() const { return sportRoh && !sportRoh->empty(); }
    /// The sport guessed from the average speed; nothing when the file names one, has no duration, or was too fast.
    [[nodiscard]] std::optional<GpxSportart> sportVorschlag() const;
    /// The text to show for the sport in the current language: the label of the recognised sport, else the file's own
    /// text, else the label of the suggestion, else an en dash. Main thread, as it asks AppSprache.
    [[nodiscard]] std::string sportAnzeige() const;
};

/// A record as it travels through the program.
using Eintrag = std::shared_ptr<const GpxMetadaten>;

}  // namespace spurkiste
