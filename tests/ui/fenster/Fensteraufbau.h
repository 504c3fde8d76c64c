#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "base/Meldestelle.h"
#include "i18n/AppSprache.h"
#include "library/Bibliotheksaufbau.h"
#include "platform/Dateimanager.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/UmbenennenDialog.h"
#include "ui/fenster/Werkzeuge.h"
#include "ui/tabelle/TabellenAnsicht.h"

namespace spurkiste {

/// A file manager that only remembers what it was asked for.
class MerkenderDateimanager final : public Dateimanager {
  public:
    std::vector<std::string> gezeigte;

    bool da = true;

    void zeige(const std::string& pfad, std::function<void()> vergeblich) override {
        gezeigte.push_back(pfad);
        if (!da) {
            vergeblich();
        }
    }
};

/// A window on a library of which the test drives every thread by hand.
class Fensteraufbau : public Bibliotheksaufbau {
  protected:
    MerkenderDateimanager dateimanager;
    Meldestelle sprachwechsel;
    Zeilenbau::Werkstatt werkstatt;  ///< of the windows that oeffne() makes
    std::unique_ptr<Bibliothek> bibliothek;
    std::unique_ptr<InhaltsAnsicht> fenster;

    Fensteraufbau() { AppSprache::richteEin(&einstellungen, &umgebung); }
    ~Fensteraufbau() override { AppSprache::richteEin(nullptr, nullptr); }

    void oeffne(const Namen& dateien) {
        einstellungen.schreibe("appLanguage", "de");
        for (const std::string& name : dateien) {
            ordner.schreibe(name, gpx(47.0, 8.0, name.starts_with("A") ? "running" : "cycling"));
        }
        bibliothek = mach();
        fenster = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel, werkstatt);
        fenster->show();
        fenster->activateWindow();
        bis([&] { return wartende() > 0 || bibliothek->laedt().wert(); });
        setzeDurch();
    }

    /// Lets the window's event loop turn until something is so.
    static void bis(const std::function<bool()>& soweit) {
        constexpr int kHoechstensMs = 60'000;  // what never comes fails instead of hanging
        ASSERT_TRUE(QTest::qWaitFor(soweit, kHoechstensMs));
    }

    /// Lets all work be done and the window show it.
    void setzeDurch() {
        arbeiteAb();
        bis([&] { return tabelle().modell().rowCount() == static_cast<int>(bibliothek->eintraege().wert().size()); });
    }

    [[nodiscard]] TabellenAnsicht& tabelle() const { return *fenster->findChild<TabellenAnsicht*>(); }
    [[nodiscard]] QLineEdit& suchfeld() const { return fenster->findChild<Werkzeuge*>()->suchfeld(); }
    [[nodiscard]] UmbenennenDialog* blatt() const { return fenster->findChild<UmbenennenDialog*>(); }

    [[nodiscard]] Namen gezeigte() const {
        Namen ergebnis;
        for (int reihe = 0; reihe < tabelle().modell().rowCount(); ++reihe) {
            ergebnis.push_back(tabelle().modell().zeile(reihe).eintrag()->dateiName);
        }
        return ergebnis;
    }

    void waehle(const Namen& dateien) {
        TabellenAnsicht::Auswahl auswahl;
        for (const std::string& name : dateien) {
            auswahl.insert(ordner.in(name));
        }
        tabelle().setzeAuswahl(auswahl);
        Q_EMIT tabelle().auswahlGeaendert(auswahl);
        if (!dateien.empty()) {
            tabelle().rolleZu(ordner.in(dateien.front()));
        }
    }

    [[nodiscard]] bool sagt(const QString& text) const {
        const auto schilder = fenster->findChildren<QLabel*>();
        return std::any_of(schilder.begin(), schilder.end(),
                           [&](const QLabel* schild) { return schild->isVisible() && schild->text() == text; });
    }

    /// The menu of the selected rows: its texts, a dash for a line between them; closed again.
    [[nodiscard]] QStringList kontextmenue() const {
        Q_EMIT tabelle().kontextmenueGewuenscht(QPoint(10, 10));
        QStringList texte;
        if (auto* menue = fenster->findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
            for (const QAction* wahl : menue->actions()) {
                texte << (wahl->isSeparator() ? QStringLiteral("-") : wahl->text());
            }
            delete menue;
        }
        return texte;
    }

    void waehleAusMenue(const QString& text) const {
        Q_EMIT tabelle().kontextmenueGewuenscht(QPoint(10, 10));
        auto* menue = fenster->findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_NE(menue, nullptr);
        for (QAction* wahl : menue->actions()) {
            if (wahl->text() == text) {
                wahl->trigger();
            }
        }
        delete menue;
    }
};

}  // namespace spurkiste
