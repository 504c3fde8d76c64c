#include "ui/teile/Tippsuche.h"

#include <QApplication>
#include <QDateTime>
#include <algorithm>

namespace spurkiste {

bool Tippsuche::laeuft() const {
    return QDateTime::currentMSecsSinceEpoch() - letzter_ < QApplication::keyboardInputInterval();
}

int Tippsuche::tippe(const QString& text, int anzahl, int hier, const std::function<QString(int)>& name) {
    gesucht_ = laeuft() ? gesucht_ + text : text;
    letzter_ = QDateTime::currentMSecsSinceEpoch();
    // More letters may still mean this item; the first one, and the same once more, mean another.
    const bool derselbe =
        std::all_of(gesucht_.cbegin(), gesucht_.cend(), [this](QChar zeichen) { return zeichen == gesucht_.front(); });
    const auto suche = [&](const QString& anfang, int ab) {
        for (int schritt = 0; schritt < anzahl; ++schritt) {
            const int stelle = (ab + schritt) % anzahl;
            if (name(stelle).startsWith(anfang, Qt::CaseInsensitive)) {
                return stelle;
            }
        }
        return -1;
    };
    const int naechster = std::max(0, hier + 1);
    const int genau = suche(gesucht_, gesucht_.size() > 1 && hier >= 0 ? hier : naechster);
    return genau < 0 && derselbe ? suche(gesucht_.left(1), naechster) : genau;
}

bool Tippsuche::istBuchstabe(const QString& text, Qt::KeyboardModifiers tasten) {
    return !text.isEmpty() && text.front().isPrint() &&
           (tasten & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

}  // namespace spurkiste
