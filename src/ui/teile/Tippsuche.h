#pragma once

#include <QString>
#include <functional>

namespace spurkiste {

/// Finds an item of a list by the letters that somebody types: those in quick succession belong to one beginning, the
/// first one and one that is repeated lead from item to item. GUI thread.
class Tippsuche {
  public:
    /// Whether the next letter would go on with what is being typed; a blank is then one of its letters.
    [[nodiscard]] bool laeuft() const;

    /// Takes what was typed and answers which of `anzahl` items, called by `name`, is meant, seen from the item `hier`
    /// (-1: none): the next one that begins so, from the last to the first again, however letters are capitalised; -1
    /// when none does.
    [[nodiscard]] int tippe(const QString& text, int anzahl, int hier, const std::function<QString(int)>& name);

    /// Whether a key, with its text and its modifiers, is one of those that are typed.
    [[nodiscard]] static bool istBuchstabe(const QString& text, Qt::KeyboardModifiers tasten);

  private:
    QString gesucht_;
    qint64 letzter_ = 0;  // when the last letter came
};

}  // namespace spurkiste
