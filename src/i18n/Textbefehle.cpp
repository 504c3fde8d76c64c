#include "i18n/Textbefehle.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace spurkiste {

namespace {

struct Sprachzeile {
    std::string_view code;
    std::array<std::string_view, 7> worte;  // in the order of Textbefehl
};

// English first: it stands for every language that is not listed.
constexpr std::array kZeilen{
    Sprachzeile{"en", {"Undo", "Redo", "Cut", "Copy", "Paste", "Delete", "Select All"}},
    Sprachzeile{"de",
                {"Rückgängig", "Wiederholen", "Ausschneiden", "Kopieren", "Einfügen", "Löschen", "Alles auswählen"}},
    Sprachzeile{"fr", {"Annuler", "Rétablir", "Couper", "Copier", "Coller", "Supprimer", "Tout sélectionner"}},
    Sprachzeile{"es", {"Deshacer", "Rehacer", "Cortar", "Copiar", "Pegar", "Eliminar", "Seleccionar todo"}},
    Sprachzeile{"it", {"Annulla", "Ripeti", "Taglia", "Copia", "Incolla", "Elimina", "Seleziona tutto"}},
    Sprachzeile{"nl",
                {"Ongedaan maken", "Opnieuw", "Knippen", "Kopiëren", "Plakken", "Verwijderen", "Alles selecteren"}},
    Sprachzeile{"pt", {"Anular", "Refazer", "Cortar", "Copiar", "Colar", "Eliminar", "Selecionar tudo"}},
    Sprachzeile{"pl", {"Cofnij", "Ponów", "Wytnij", "Kopiuj", "Wklej", "Usuń", "Zaznacz wszystko"}},
    Sprachzeile{"cs", {"Zpět", "Znovu", "Vyjmout", "Kopírovat", "Vložit", "Smazat", "Vybrat vše"}},
    Sprachzeile{"da", {"Fortryd", "Gentag", "Klip", "Kopiér", "Indsæt", "Slet", "Markér alt"}},
    Sprachzeile{"sv", {"Ångra", "Gör om", "Klipp ut", "Kopiera", "Klistra in", "Ta bort", "Markera allt"}},
    Sprachzeile{"nb", {"Angre", "Gjør om", "Klipp ut", "Kopier", "Lim inn", "Slett", "Merk alt"}},
    Sprachzeile{"fi", {"Kumoa", "Tee uudelleen", "Leikkaa", "Kopioi", "Liitä", "Poista", "Valitse kaikki"}},
    Sprachzeile{"tr", {"Geri Al", "Yinele", "Kes", "Kopyala", "Yapıştır", "Sil", "Tümünü Seç"}},
    Sprachzeile{"uk", {"Скасувати", "Повторити", "Вирізати", "Копіювати", "Вставити", "Видалити", "Вибрати все"}},
    Sprachzeile{"ja", {"元に戻す", "やり直す", "切り取り", "コピー", "貼り付け", "削除", "すべて選択"}},
    Sprachzeile{"ko", {"실행 취소", "다시 실행", "잘라내기", "복사", "붙여넣기", "삭제", "모두 선택"}},
    Sprachzeile{"zh-Hans", {"撤销", "重做", "剪切", "复制", "粘贴", "删除", "全选"}},
    Sprachzeile{"zh-Hant", {"復原", "重做", "剪下", "複製", "貼上", "刪除", "全選"}},
};

}  // namespace

std::string_view textbefehl(Textbefehl befehl, std::string_view code) {
    const auto* gefunden =
        std::find_if(kZeilen.begin(), kZeilen.end(), [&](const Sprachzeile& zeile) { return zeile.code == code; });
    const Sprachzeile& zeile = gefunden == kZeilen.end() ? kZeilen.front() : *gefunden;
    return zeile.worte.at(static_cast<std::size_t>(befehl));
}

}  // namespace spurkiste
