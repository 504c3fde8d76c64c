#include "ui/fenster/Tasten.h"

namespace spurkiste {

const std::vector<Tastengruppe>& tasten() {
    static const std::vector<Tastengruppe> alle{
        {QStringLiteral("BIBLIOTHEK"),
         {
             {QStringLiteral("Suchen"), Fenstertat::suchen, {QKeySequence::Find}},
             {QStringLiteral("Suche leeren, verlassen"), Fenstertat::sucheLeeren, {Qt::Key_Escape}},
             {QStringLiteral("GPX-Dateien importieren"), Fenstertat::importieren, {QKeySequence::Open}},
             {QStringLiteral("Kopierte Dateien einfügen"), Fenstertat::einfuegen, {QKeySequence::Paste}},
             {QStringLiteral("Ordner neu einlesen"), Fenstertat::neuLaden, {QKeySequence::Refresh}},
         }},
        {QStringLiteral("FENSTER"),
         {
             {QStringLiteral("Neues Fenster"), Fenstertat::neuesFenster, {QKeySequence::New}},
             {QStringLiteral("Fenster schließen"), Fenstertat::schliessen, {QKeySequence::Close}},
             {QStringLiteral("Programm beenden"), Fenstertat::beenden, {Qt::CTRL | Qt::Key_Q}},
             {QStringLiteral("Diese Liste"), Fenstertat::tastenZeigen, {Qt::Key_F1, Qt::CTRL | Qt::Key_Question}},
         }},
        {QStringLiteral("AUSGEWÄHLTE ROUTEN"),
         {
             {QStringLiteral("Umbenennen"), Fenstertat::umbenennen, {Qt::Key_F2}, {Qt::Key_Return}, Tastenort::panel},
             {QStringLiteral("Sportart ändern"), std::nullopt, {}, {Qt::Key_F4, Qt::Key_Space}},
             {QStringLiteral("In den Papierkorb"), Fenstertat::wegwerfen, {Qt::Key_Delete}, {}, Tastenort::panel},
             {QStringLiteral("Rückgängig"), Fenstertat::rueckgaengig, {Qt::CTRL | Qt::Key_Z}},
             {QStringLiteral("Wiederholen"), Fenstertat::wiederholen, {Qt::CTRL | Qt::SHIFT | Qt::Key_Z}},
             {QStringLiteral("Kopieren"), Fenstertat::kopieren, {QKeySequence::Copy}},
             {QStringLiteral("Alle auswählen"), std::nullopt, {}, {QKeySequence::SelectAll}},
             {QStringLiteral("Menü öffnen"), Fenstertat::zeilenmenue, {Qt::SHIFT | Qt::Key_F10}, {Qt::Key_Menu}},
         }},
    };
    return alle;
}

}  // namespace spurkiste
