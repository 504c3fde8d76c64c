#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "base/Meldestelle.h"
#include "base/Veroeffentlicht.h"

namespace spurkiste {

TEST(MeldestelleTest, MeldetDerReiheNachBisZumEndeDesAbos) {
    Meldestelle stelle;
    std::string gehoert;
    const Abo a = stelle.beobachte([&] { gehoert += 'a'; });
    {
        Abo b = stelle.beobachte([&] { gehoert += 'b'; });
        Abo c = stelle.beobachte([&] { gehoert += 'c'; });
        stelle.melde();
        b = std::move(c);  // ends b, keeps c
        stelle.melde();
    }
    stelle.melde();
    EXPECT_EQ(gehoert, "abcaca");
}

TEST(MeldestelleTest, BeobachterEndenUndBeginnenWaehrendGemeldetWird) {
    Meldestelle stelle;
    std::string gehoert;
    Abo selbst;
    Abo spaeter;
    Abo neu;
    selbst = stelle.beobachte([&] {
        gehoert += 's';
        selbst.beende();
        spaeter.beende();
        neu = stelle.beobachte([&] { gehoert += 'n'; });
    });
    spaeter = stelle.beobachte([&] { gehoert += '!'; });
    const Abo bleibt = stelle.beobachte([&] { gehoert += 'b'; });
    stelle.melde();
    EXPECT_EQ(gehoert, "sb") << "removed ones hear nothing any more, new ones from the next time on";
    stelle.melde();
    EXPECT_EQ(gehoert, "sbbn");
}

TEST(MeldestelleTest, MeldungenVerschachtelnSich) {
    Meldestelle stelle;
    int tiefe = 0;
    int gehoert = 0;
    const Abo abo = stelle.beobachte([&] {
        ++gehoert;
        if (++tiefe < 3) {
            stelle.melde();
        }
    });
    stelle.melde();
    EXPECT_EQ(gehoert, 3);
}

TEST(MeldestelleTest, AbosUndStelleUeberlebenEinander) {
    auto stelle = std::make_optional<Meldestelle>();
    Abo abo = stelle->beobachte([&] { stelle.reset(); });  // the observer ends the one that tells it
    stelle->melde();
    abo.beende();
    abo.beende();

    // The last owner of one observation is the observer of another.
    Meldestelle andere;
    int gehoert = 0;
    auto innen = std::make_shared<Abo>(andere.beobachte([&] { ++gehoert; }));
    Abo aussen = andere.beobachte([innen] { static_cast<void>(innen); });
    const Abo rest = andere.beobachte([&] { gehoert += 10; });
    innen.reset();
    aussen.beende();
    andere.melde();
    EXPECT_EQ(gehoert, 10);
}

TEST(VeroeffentlichtTest, MeldetEinmalUndVorDerAenderung) {
    Veroeffentlicht<int> wert(1);
    std::string gesehen;
    const Abo abo = wert.beobachte([&] { gesehen += std::to_string(wert.wert()); });
    wert.setze(2);
    wert.setze(2);
    wert.aendere([](int& w) { w += 5; });
    EXPECT_EQ(gesehen, "122");
    EXPECT_EQ(wert.wert(), 7);
}

}  // namespace spurkiste
