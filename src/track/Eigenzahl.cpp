#include "track/Eigenzahl.h"

namespace spurkiste::eigenzahl::intern {

bool liesSeltene(const char*& stelle, double& zahl) {
    constexpr int laengste = 30;  // no double takes more characters in its shortest form
    const char* p = stelle + (*stelle == '-' ? 1 : 0);
    const auto ueberspringe = [&p, grenze = stelle + laengste] {
        const char* const anfang = p;
        while (p < grenze && istZiffer(*p)) {
            ++p;
        }
        return p - anfang;
    };
    const char* const ganz = p;
    const auto ganze = ueberspringe();
    bool bruch = false;
    if (ganze == 0 || (ganze > 1 && *ganz == '0')) {
        return false;
    }
    if (*p == '.') {
        ++p;
        if (ueberspringe() == 0 || p[-1] == '0') {
            return false;
        }
        bruch = true;
    }
    if (*p == 'e') {
        ++p;
        p += *p == '-' || *p == '+' ? 1 : 0;
        if (ueberspringe() == 0) {
            return false;
        }
        bruch = true;
    }
    if ((!bruch && ganze > 18) || istZiffer(*p)) {
        return false;
    }
    double ergebnis = 0.0;
    const auto [ende, fehler] = std::from_chars(stelle, p, ergebnis);
    if (fehler != std::errc() || ende != p) {
        return false;
    }
    zahl = ergebnis;
    stelle = p;
    return true;
}

}  // namespace spurkiste::eigenzahl::intern
