#include "erzeuge/Orte.h"

namespace spurkiste::erzeuge {

namespace {

// Coordinates of the places: GeoNames (geonames.org), CC BY 4.0, as in resources/orte.tsv. Heights are rounded.
constexpr Ort kStaedte[] = {
    {"Zürich", "Uetliberg", {47.37055, 8.54177}, 408, 90, Ortsart::stadt},
    {"Winterthur", "Eschenberg", {47.49951, 8.72872}, 439, 80, Ortsart::stadt},
    {"Küsnacht", "Pfannenstiel", {47.31805, 8.58401}, 427, 110, Ortsart::stadt},
    {"Adliswil", "Sihlwald", {47.30997, 8.52462}, 451, 120, Ortsart::stadt},
    {"Wädenswil", "Zimmerberg", {47.22683, 8.66870}, 412, 120, Ortsart::stadt},
    {"Zug", "Zugerberg", {47.17242, 8.51745}, 425, 150, Ortsart::stadt},
    {"Luzern", "Sonnenberg", {47.05048, 8.30635}, 436, 180, Ortsart::stadt},
    {"Bern", "Gurten", {46.94809, 7.44744}, 540, 110, Ortsart::stadt},
    {"Thun", "Aareweg", {46.75118, 7.62166}, 560, 200, Ortsart::stadt},
    {"Solothurn", "Weissenstein", {47.20791, 7.53714}, 432, 160, Ortsart::stadt},
    {"Basel", "Blauen", {47.55839, 7.57327}, 260, 90, Ortsart::stadt},
    {"Schaffhausen", "Randen", {47.69732, 8.63493}, 403, 90, Ortsart::stadt},
    {"St. Gallen", "Drei Weieren", {47.42391, 9.37477}, 675, 160, Ortsart::stadt},
    {"Chur", "Fürhörnli", {46.84986, 9.53287}, 593, 350, Ortsart::stadt},
    {"Vaduz", "Fürstensteig", {47.14151, 9.52154}, 460, 300, Ortsart::stadt},
    {"Locarno", "Cimetta", {46.17086, 8.79953}, 205, 300, Ortsart::stadt},
    {"Konstanz", "Seerhein", {47.66033, 9.17582}, 405, 50, Ortsart::stadt},
    {"Überlingen", "Blütenweg", {47.76977, 9.17136}, 403, 80, Ortsart::stadt},
    {"Bregenz", "Pfänder", {47.50311, 9.74710}, 427, 200, Ortsart::stadt},
    {"Innsbruck", "Nordkette", {47.26266, 11.39454}, 574, 350, Ortsart::stadt},
    {"Salzburg", "Gaisberg", {47.79941, 13.04399}, 424, 130, Ortsart::stadt},
    {"Graz", "Schöckl", {47.06733, 15.44197}, 353, 130, Ortsart::stadt},
    {"München", "Isartrails", {48.13743, 11.57549}, 519, 30, Ortsart::stadt},
    {"Rosenheim", "Simssee", {47.85637, 12.12247}, 446, 60, Ortsart::stadt},
    {"Freiburg", "Schauinsland", {47.99590, 7.85222}, 278, 180, Ortsart::stadt},
    {"Tübingen", "Schönbuch", {48.52266, 9.05222}, 341, 90, Ortsart::stadt},
    {"Stuttgart", "Bärenschlössle", {48.78232, 9.17702}, 247, 100, Ortsart::stadt},
    {"Heidelberg", "Königstuhl", {49.40768, 8.69079}, 114, 150, Ortsart::stadt},
    {"Würzburg", "Frankenwarte", {49.79391, 9.95121}, 177, 90, Ortsart::stadt},
    {"Nürnberg", "Reichswald", {49.45421, 11.07752}, 309, 50, Ortsart::stadt},
    {"Passau", "Innradweg", {48.56650, 13.43122}, 312, 100, Ortsart::stadt},
    {"Köln", "Rheinufer", {50.93333, 6.95000}, 53, 25, Ortsart::stadt},
    {"Münster", "Promenade", {51.96236, 7.62571}, 60, 15, Ortsart::stadt},
    {"Göttingen", "Göttinger Wald", {51.53443, 9.93228}, 150, 90, Ortsart::stadt},
    {"Leipzig", "Cospudener See", {51.33962, 12.37129}, 113, 15, Ortsart::stadt},
    {"Dresden", "Elbhänge", {51.05089, 13.73832}, 113, 70, Ortsart::stadt},
    {"Potsdam", "Sacrow", {52.39886, 13.06566}, 35, 15, Ortsart::stadt},
    {"Lübeck", "Wakenitz", {53.86893, 10.68729}, 13, 10, Ortsart::stadt},
    {"Hamburg", "Alster", {53.55073, 9.99302}, 8, 10, Ortsart::stadt},
};

constexpr Ort kBerge[] = {
    {"Appenzell", "Ebenalp", {47.33103, 9.40996}, 780, 450, Ortsart::berg},
    {"Glarus", "Klöntal", {47.04057, 9.06804}, 472, 600, Ortsart::berg},
    {"Schwyz", "Mythen", {47.02076, 8.65414}, 516, 500, Ortsart::berg},
    {"Einsiedeln", "Sihlseeweg", {47.12849, 8.74735}, 882, 350, Ortsart::berg},
    {"Flüelen", "Weg der Schweiz", {46.90478, 8.62396}, 435, 700, Ortsart::berg},
    {"Andermatt", "Gemsstock", {46.63565, 8.59388}, 1437, 650, Ortsart::berg},
    {"Engelberg", "Brunni", {46.82107, 8.40133}, 1000, 700, Ortsart::berg},
    {"Meiringen", "Aareschlucht", {46.72709, 8.18720}, 595, 700, Ortsart::berg},
    {"Grindelwald", "Bachalpsee", {46.62396, 8.03601}, 1034, 750, Ortsart::berg},
    {"Interlaken", "Harder", {46.68387, 7.86638}, 568, 600, Ortsart::berg},
    {"Kandersteg", "Oeschinensee", {46.49467, 7.67326}, 1174, 700, Ortsart::berg},
    {"Zermatt", "Höhbalmen", {46.01998, 7.74863}, 1608, 800, Ortsart::berg},
    {"Pontresina", "Morteratsch", {46.49550, 9.90126}, 1805, 600, Ortsart::berg},
    {"Scuol", "Motta Naluns", {46.79671, 10.29804}, 1250, 600, Ortsart::berg},
    {"Flims", "Caumasee", {46.83705, 9.28458}, 1081, 500, Ortsart::berg},
    {"Bludenz", "Muttersberg", {47.15476, 9.82255}, 588, 550, Ortsart::berg},
    {"Oberstdorf", "Nebelhorn", {47.40724, 10.27939}, 813, 550, Ortsart::berg},
    {"Sonthofen", "Grünten", {47.51821, 10.28262}, 741, 450, Ortsart::berg},
    {"Füssen", "Tegelberg", {47.57143, 10.70171}, 808, 400, Ortsart::berg},
    {"Garmisch-Partenkirchen", "Höllental", {47.49209, 11.09576}, 708, 600, Ortsart::berg},
    {"Mittenwald", "Leutascher Klamm", {47.44220, 11.26187}, 912, 550, Ortsart::berg},
    {"Tegernsee", "Neureuth", {47.71230, 11.75820}, 747, 400, Ortsart::berg},
    {"Kufstein", "Kaisertal", {47.58333, 12.16667}, 499, 500, Ortsart::berg},
    {"Berchtesgaden", "Jenner", {47.63236, 13.00187}, 572, 650, Ortsart::berg},
    {"Hallstatt", "Echerntal", {47.56231, 13.64912}, 511, 600, Ortsart::berg},
    {"Brixen", "Plose", {46.71503, 11.65598}, 560, 550, Ortsart::berg},
    {"Hinterzarten", "Ravennaschlucht", {47.90276, 8.10701}, 885, 220, Ortsart::berg},
    {"Todtnau", "Feldbergsteig", {47.82941, 7.94380}, 659, 300, Ortsart::berg},
    {"Triberg", "Wasserfälle", {48.13175, 8.23317}, 864, 200, Ortsart::berg},
    {"Baiersbronn", "Murgleiter", {48.50318, 8.37699}, 584, 220, Ortsart::berg},
    {"Boppard", "Rheinburgenweg", {50.23085, 7.58992}, 70, 180, Ortsart::berg},
    {"Cochem", "Calmont", {50.14511, 7.16379}, 83, 170, Ortsart::berg},
    {"Winterberg", "Kahler Asten", {51.19248, 8.53468}, 668, 150, Ortsart::berg},
    {"Wernigerode", "Brocken", {51.83652, 10.78216}, 240, 250, Ortsart::berg},
    {"Goslar", "Okertal", {51.90425, 10.42766}, 255, 200, Ortsart::berg},
    {"Eisenach", "Drachenschlucht", {50.98070, 10.31522}, 215, 150, Ortsart::berg},
    {"Bad Schandau", "Schrammsteine", {50.91743, 14.15494}, 125, 160, Ortsart::berg},
};

constexpr Ort kPisten[] = {
    {"Davos", "Jakobshorn", {46.80429, 9.83723}, 1560, 500, Ortsart::piste},
    {"Arosa", "Weisshorn", {46.77793, 9.67621}, 1775, 450, Ortsart::piste},
    {"Zermatt", "Höhbalmen", {46.01998, 7.74863}, 1608, 800, Ortsart::piste},
    {"Andermatt", "Gemsstock", {46.63565, 8.59388}, 1437, 600, Ortsart::piste},
    {"Lech", "Rüfikopf", {47.20797, 10.14184}, 1444, 450, Ortsart::piste},
    {"Ischgl", "Idalp", {47.01257, 10.29179}, 1376, 600, Ortsart::piste},
    {"Saalbach", "Zwölferkogel", {47.39138, 12.63642}, 1003, 450, Ortsart::piste},
    {"Kitzbühel", "Hahnenkamm", {47.44637, 12.39215}, 762, 450, Ortsart::piste},
};

// Open water, some way off the shore.
constexpr Ort kSeen[] = {
    {"Zürichsee", "Halbinsel Au", {47.2960, 8.5800}, 406, 0, Ortsart::see},
    {"Greifensee", "Uster", {47.3520, 8.6780}, 435, 0, Ortsart::see},
    {"Vierwaldstättersee", "Bürgenstock", {47.0120, 8.4000}, 434, 0, Ortsart::see},
    {"Thunersee", "Oberhofen", {46.6930, 7.7100}, 558, 0, Ortsart::see},
    {"Bodensee", "Obersee", {47.6250, 9.3600}, 395, 0, Ortsart::see},
    {"Ammersee", "Herrsching", {48.0000, 11.1200}, 533, 0, Ortsart::see},
    {"Starnberger See", "Tutzing", {47.9000, 11.3100}, 584, 0, Ortsart::see},
    {"Chiemsee", "Fraueninsel", {47.8800, 12.4400}, 518, 0, Ortsart::see},
    {"Müggelsee", "Rübezahl", {52.4370, 13.6480}, 32, 0, Ortsart::see},
};

}  // namespace

std::span<const Ort> orte(Ortsart art) {
    switch (art) {
        case Ortsart::stadt:
            return kStaedte;
        case Ortsart::berg:
            return kBerge;
        case Ortsart::piste:
            return kPisten;
        case Ortsart::see:
            break;
    }
    return kSeen;
}

}  // namespace spurkiste::erzeuge
