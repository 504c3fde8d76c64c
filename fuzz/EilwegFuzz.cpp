// Any bytes as XML, read the fast way and by expat alone. When the fast way takes a document, both must report the
// same, event by event and line by line; it must take every plain document that expat finds well-formed; and the record
// of a GPX file must be the same either way.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Verlange.h"
#include "XmlMutation.h"
#include "track/GpxLeser.h"
#include "track/XmlEilweg.h"
#include "track/XmlLauf.h"
#include "track/XmlZeichen.h"

namespace {

using spurkiste::GpxLeser;
using spurkiste::verlange;
using spurkiste::XmlAttribut;
using spurkiste::XmlFehler;
using spurkiste::XmlLauf;
using spurkiste::XmlWeg;

/// Writes down all that is reported. Which texts are wanted depends on the names alone.
class Mitschrift final : public spurkiste::XmlEmpfaenger {
  public:
    std::string alles;
    std::size_t tiefste = 0;
    std::size_t meisteAttribute = 0;
    bool nurAsciiNamen = true;
    std::optional<XmlFehler> fehler;

    bool anfang(std::string_view name, const spurkiste::XmlAttribute& attribute) override {
        beginne('<');
        merkeName(name);
        for (const XmlAttribut& attribut : attribute.alle()) {
            merkeName(attribut.name);
            alles.append(1, '\1').append(attribut.wert);
        }
        offen_.push_back(name.size());
        tiefste = std::max(tiefste, offen_.size());
        meisteAttribute = std::max(meisteAttribute, attribute.alle().size());
        return name.size() % 3 != 0;
    }

    void text(std::string_view stueck) override {
        verlange(!stueck.empty() && !offen_.empty());
        if (!imText_) {
            beginne('"');
            imText_ = true;
        }
        alles.append(stueck);
    }

    bool ende() override {
        beginne('>');
        offen_.pop_back();
        return !offen_.empty() && offen_.back() % 5 != 0;
    }

    void schluss(XmlFehler grund) override {
        beginne('.');
        fehler = grund;
    }

  private:
    void merkeName(std::string_view name) {
        alles.append(1, '\2').append(name);
        nurAsciiNamen = nurAsciiNamen && std::all_of(name.begin(), name.end(), [](char z) { return z > 0; });
    }

    void beginne(char art) {
        imText_ = false;
        alles.append(1, '\3').append(std::to_string(zeile())).append(1, art);
    }

    std::vector<std::size_t> offen_;
    bool imText_ = false;
};

/// Returns whether the fast way did it.
bool lies(std::string_view inhalt, XmlWeg weg, std::optional<Mitschrift>& mitschrift) {
    std::string_view rest = inhalt;
    const auto quelle = [&](std::span<char> puffer) {
        const std::size_t anzahl = rest.copy(puffer.data(), puffer.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
    static XmlLauf lauf;
    const auto empfang = [&]() -> spurkiste::XmlEmpfaenger& { return mitschrift.emplace(); };
    return lauf.lies(quelle, inhalt.size(), empfang, XmlLauf::kAmStueck, weg);
}

/// Whether the fast way must take a document that is well-formed.
bool istSchlicht(std::string_view inhalt, const Mitschrift& mitschrift) {
    constexpr std::string_view ueblich = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    constexpr std::string_view marke = "\xEF\xBB\xBF";
    inhalt.remove_prefix(inhalt.starts_with(marke) ? marke.size() : 0);
    inhalt.remove_prefix(std::min(inhalt.find_first_not_of(" \t\r\n"), inhalt.size()));
    if (inhalt.starts_with(marke)) {
        return false;  // expat forgives a mark behind white space, and a second one
    }
    inhalt.remove_prefix(inhalt.starts_with(ueblich) ? ueblich.size() : 0);
    const auto hat = [inhalt](std::string_view was) { return inhalt.find(was) != std::string_view::npos; };
    const bool istUtf8 = !hat(std::string_view("\0", 1)) && !inhalt.starts_with('\xFF') && !inhalt.starts_with('\xFE');
    return istUtf8 && !hat("<!DOCTYPE") && !hat("<?") && mitschrift.nurAsciiNamen && mitschrift.tiefste <= 256 &&
           mitschrift.meisteAttribute <= 32;
}

void vergleicheZeichen(std::string_view inhalt) {
    namespace xz = spurkiste::xmlzeichen;
    const bool erlaubt = xz::einzeln::alleErlaubt(inhalt);
    verlange(xz::alleErlaubt(inhalt) == erlaubt);
    std::string text(inhalt);
    if (!erlaubt) {
        // The searches are only asked about what is allowed, but a null ends them in any case.
        std::replace_if(
            text.begin(), text.end(), [](char z) { return z == '\0'; }, ' ');
    }
    const std::size_t groesse = text.size();
    text.append(spurkiste::XmlEilweg::kPolster, '\0');
    for (const char *stelle = text.data(), *ende = stelle + groesse; stelle < ende; ++stelle) {
        const char* hier = xz::textende(stelle);
        verlange(hier == xz::einzeln::textende(stelle) && hier <= ende);
        verlange(xz::wertende(stelle, '"') == xz::einzeln::wertende(stelle, '"'));
        verlange(xz::wertende(stelle, '\'') == xz::einzeln::wertende(stelle, '\''));
        stelle = hier;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view inhalt(reinterpret_cast<const char*>(daten), groesse);
    vergleicheZeichen(inhalt);
    std::optional<Mitschrift> eilig;
    std::optional<Mitschrift> gruendlich;
    verlange(!lies(inhalt, XmlWeg::nurExpat, gruendlich));
    if (lies(inhalt, XmlWeg::eiligVoran, eilig)) {
        verlange(gruendlich->fehler == XmlFehler::keiner);
    } else {
        verlange(gruendlich->fehler != XmlFehler::keiner || !istSchlicht(inhalt, *gruendlich));
    }
    verlange(eilig->fehler == gruendlich->fehler && eilig->alles == gruendlich->alles);
    verlange(GpxLeser::ausInhalt(inhalt) == GpxLeser::ausInhalt(inhalt, XmlLauf::kAmStueck, XmlWeg::nurExpat));
    return 0;
}

// libFuzzer's own mutation, where it is linked.
extern "C" __attribute__((weak)) std::size_t LLVMFuzzerMutate(std::uint8_t* daten, std::size_t groesse,
                                                              std::size_t hoechstens);

// The name is libFuzzer's.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* daten, std::size_t groesse, std::size_t hoechstens,
                                               unsigned int saat) {
    XmlMutation mutation(saat);
    const std::size_t art = mutation.wuerfle(20);
    if (art == 0 && LLVMFuzzerMutate != nullptr) {
        return LLVMFuzzerMutate(daten, groesse, hoechstens);
    }
    const bool neues = art < 6;
    std::string dokument = neues ? mutation.erfinde() : std::string(reinterpret_cast<const char*>(daten), groesse);
    for (std::size_t i = mutation.wuerfle(3) + (neues ? 0 : 1); i > 0; --i) {
        dokument = mutation.veraendere(std::move(dokument));
    }
    const std::size_t neu = std::min(dokument.size(), hoechstens);
    std::memcpy(daten, dokument.data(), neu);
    return neu;
}
