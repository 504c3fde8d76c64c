#pragma once

#include <QTranslator>
#include <string_view>

namespace spurkiste {

/// The toolkit's own words, in the chooser of files before all, in the language of the application: as far as the
/// system has the toolkit's translations (Debian: qt6-translations-l10n), else English. GUI thread; needs the toolkit's
/// application object.
class Baukastensprache {
  public:
    Baukastensprache() = default;
    Baukastensprache(const Baukastensprache&) = delete;
    Baukastensprache& operator=(const Baukastensprache&) = delete;
    ~Baukastensprache();

    /// Speaks the language of this code (Sprachtabelle::code()) from now on. A language that has no translation of its
    /// own stays English: neither the other Norwegian nor the Portuguese of Brazil stand in.
    void sprich(std::string_view code);

  private:
    QTranslator worte_;
};

}  // namespace spurkiste
