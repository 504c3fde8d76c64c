#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QPersistentModelIndex>
#include <QUrl>
#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/tabelle/TabellenModell.h"
#include "ui/tabelle/Zeilenbau.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::uint32_t> gezeigte(const TabellenModell& modell) {
    std::vector<std::uint32_t> kennungen;
    for (int reihe = 0; reihe < modell.rowCount(); ++reihe) {
        kennungen.push_back(modell.zeile(reihe).kennung());
    }
    return kennungen;
}

/// Hears what the model says, as a view would, and keeps its own list by nothing but that.
class Zuhoerer {
  public:
    explicit Zuhoerer(const TabellenModell& modell) : liste(gezeigte(modell)) {
        QObject::connect(&modell, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int von, int bis) {
            liste.erase(liste.begin() + von, liste.begin() + bis + 1);
            signale.push_back("weg " + std::to_string(von) + "-" + std::to_string(bis));
        });
        QObject::connect(&modell, &QAbstractItemModel::rowsInserted,
                         [this, &modell](const QModelIndex&, int von, int bis) {
                             const auto jetzt = gezeigte(modell);
                             liste.insert(liste.begin() + von, jetzt.begin() + von, jetzt.begin() + bis + 1);
                             signale.push_back("dazu " + std::to_string(von) + "-" + std::to_string(bis));
                         });
        QObject::connect(&modell, &QAbstractItemModel::layoutChanged, [this, &modell] {
            liste = gezeigte(modell);
            signale.emplace_back("ordnung");
        });
        QObject::connect(&modell, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex& von, const QModelIndex& bis) {
                             EXPECT_EQ(bis.column(), 10);
                             signale.push_back("neu " + std::to_string(von.row()) + "-" + std::to_string(bis.row()));
                         });
        QObject::connect(&modell, &QAbstractItemModel::modelReset, [this] { signale.emplace_back("reset"); });
    }

    std::vector<std::uint32_t> liste;
    std::vector<std::string> signale;
};

TEST(TabellenModellTest, saysFewSignalsForEachChange) {
    struct Fall {
        const char* was;
        Zeilen vorher;
        Zeilen nachher;
        std::vector<std::string> signale;
    };
    const Zeilen zehn = zeilen(zahlen(0, 10));
    Zeilen anders = zehn;
    for (const std::uint32_t geaendert : {2U, 3U, 7U}) {
        anders[geaendert] = zeileMit(geaendert, "anders " + std::to_string(geaendert));
    }
    Zeilen jede = zehn;
    jede.clear();
    const Zeilen hundert = zeilen(zahlen(0, 100));
    std::copy_if(hundert.begin(), hundert.end(), std::back_inserter(jede),
                 [](const auto& zeile) { return zeile->kennung() % 2 == 0; });
    const Zeilen rueckwaerts(zehn.rbegin(), zehn.rend());
    Zeilen gemischt(rueckwaerts.begin() + 2, rueckwaerts.end());
    gemischt.push_back(zeileMit(20, "20"));

    const std::vector<Fall> faelle{
        {"the same rows", zehn, zehn, {}},
        {"the first rows", {}, zehn, {"dazu 0-9"}},
        {"no rows any more", zehn, {}, {"weg 0-9"}},
        {"a filter that leaves a block", zehn, {zehn.begin() + 3, zehn.begin() + 6}, {"weg 6-9", "weg 0-2"}},
        {"a filter taken back", {zehn.begin() + 3, zehn.begin() + 6}, zehn, {"dazu 0-2", "dazu 6-9"}},
        {"files read anew", zehn, anders, {"neu 2-3", "neu 7-7"}},
        {"another order", zehn, rueckwaerts, {"ordnung"}},
        {"another order, rows gone and a new one", zehn, gemischt, {"dazu 10-10", "ordnung", "weg 9-10"}},
        {"scattered rows that go", hundert, jede, {"ordnung", "weg 50-99"}},
        {"scattered rows that come", jede, hundert, {"dazu 50-99", "ordnung"}},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.was);
        TabellenModell modell;
        modell.setzeZeilen(fall.vorher);
        const Zuhoerer zuhoerer(modell);
        modell.setzeZeilen(fall.nachher);
        EXPECT_EQ(zuhoerer.signale, fall.signale);
        EXPECT_EQ(zuhoerer.liste, gezeigte(modell));
        for (int reihe = 0; reihe < modell.rowCount(); ++reihe) {
            EXPECT_EQ(&modell.zeile(reihe), fall.nachher[static_cast<std::size_t>(reihe)].get());
        }
    }
}

/// Whatever rows come in whatever order: what a view remembers of a file stays with the file.
TEST(TabellenModellTest, keepsIndexesWithTheirFilesThroughRandomLists) {
    TabellenModell modell;
    const QAbstractItemModelTester pruefer(&modell, QAbstractItemModelTester::FailureReportingMode::Fatal);
    Zuhoerer zuhoerer(modell);
    std::mt19937 zufall(7);
    const auto einerVon = [&](unsigned n) { return zufall() % n == 0; };
    Zeilen alle = zeilen(zahlen(0, 60));
    for (int runde = 0; runde < 400; ++runde) {
        SCOPED_TRACE(runde);
        if (einerVon(3)) {
            std::shuffle(alle.begin(), alle.end(), zufall);
        }
        for (auto& zeile : alle) {
            if (einerVon(20)) {
                zeile = zeileMit(zeile->kennung(), "Runde " + std::to_string(runde));
            }
        }
        Zeilen naechste;
        const auto dichte = static_cast<unsigned>(1 + zufall() % 12);
        const bool bloecke = einerVon(2);
        bool drin = true;
        for (const auto& zeile : alle) {
            drin = bloecke ? (einerVon(8) ? !drin : drin) : einerVon(dichte);
            if (drin) {
                naechste.push_back(zeile);
            }
        }

        std::vector<std::pair<QPersistentModelIndex, std::uint32_t>> gemerkt;
        for (int reihe = 0; reihe < modell.rowCount(); ++reihe) {
            gemerkt.emplace_back(modell.index(reihe, reihe % 11), modell.zeile(reihe).kennung());
        }
        modell.setzeZeilen(naechste);

        ASSERT_EQ(zuhoerer.liste, gezeigte(modell));
        ASSERT_EQ(modell.rowCount(), static_cast<int>(naechste.size()));
        for (int reihe = 0; reihe < modell.rowCount(); ++reihe) {
            ASSERT_EQ(&modell.zeile(reihe), naechste[static_cast<std::size_t>(reihe)].get());
        }
        for (const auto& [index, kennung] : gemerkt) {
            const int stelle = modell.liste().stelleVon(kennung);
            ASSERT_EQ(index.isValid(), stelle != Zeilenliste::kKeine);
            ASSERT_TRUE(!index.isValid() || index.row() == stelle);
        }
    }
    EXPECT_THAT(zuhoerer.signale, testing::Not(testing::Contains("reset")));
}

/// A name may hold any bytes but a slash and a zero.
TEST(TabellenModellTest, dragsFilesWithOddNames) {
    const std::vector<std::string> namen{"schlicht",    "mit Leer#zeichen?", "50 % +&",
                                         "Zürich 日本", "latin1 \xfc\xff",   "a\nb"};
    TabellenModell modell;
    Zeilen gezeigt;
    QModelIndexList indexe;
    for (const std::string& name : namen) {
        gezeigt.push_back(zeileMit(static_cast<std::uint32_t>(gezeigt.size()), name));
    }
    modell.setzeZeilen(gezeigt);
    for (int reihe = modell.rowCount() - 1; reihe >= 0; --reihe) {
        indexe << modell.index(reihe, 0) << modell.index(reihe, 5);
        EXPECT_TRUE(modell.flags(indexe.back()).testFlag(Qt::ItemIsDragEnabled));
    }
    EXPECT_EQ(modell.supportedDragActions(), Qt::CopyAction);

    const std::unique_ptr<QMimeData> daten(modell.mimeData(indexe));
    const QList<QByteArray> adressen = daten->data(QStringLiteral("text/uri-list")).split('\n');
    std::vector<std::string> pfade;
    for (const QByteArray& zeile : adressen) {
        const QByteArray adresse = zeile.trimmed();
        if (!adresse.isEmpty()) {
            ASSERT_TRUE(adresse.startsWith("file:///")) << adresse.constData();
            pfade.push_back(QByteArray::fromPercentEncoding(adresse.mid(7)).toStdString());
        }
    }
    std::vector<std::string> erwartet;
    for (const std::string& name : namen) {
        erwartet.push_back("/bibliothek/" + name + ".gpx");
    }
    EXPECT_EQ(pfade, erwartet);
    EXPECT_THAT(modell.mimeTypes(), ElementsAre("text/uri-list"));
    EXPECT_EQ(modell.mimeData({}), nullptr);
}

}  // namespace
}  // namespace spurkiste
