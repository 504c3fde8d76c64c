#include "ui/teile/Baukastensprache.h"

#include <QCoreApplication>
#include <QLibraryInfo>

#include "ui/teile/Textzeile.h"

namespace spurkiste {

Baukastensprache::~Baukastensprache() {
    QCoreApplication::removeTranslator(&worte_);
}

void Baukastensprache::sprich(std::string_view code) {
    QCoreApplication::removeTranslator(&worte_);
    // The toolkit names Chinese by countries.
    const QString sprache = code == "zh-Hans"   ? QStringLiteral("zh_CN")
                            : code == "zh-Hant" ? QStringLiteral("zh_TW")
                                                : alsText(code);
    if (worte_.load(QStringLiteral("qtbase_") + sprache, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(&worte_);
    }
}

}  // namespace spurkiste
