#include "ui/fenster/Vorleserollen.h"

#include <QAccessibleWidget>
#include <algorithm>
#include <array>

#include "ui/detail/DetailKarte.h"
#include "ui/detail/Kachel.h"
#include "ui/detail/SkizzenAnsicht.h"
#include "ui/fenster/Blatt.h"
#include "ui/fenster/Filterleiste.h"
#include "ui/fenster/Hinweiszeile.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/Leisezeile.h"
#include "ui/fenster/Statusleiste.h"
#include "ui/fenster/Werkzeuge.h"
#include "ui/tabelle/Tabellenkopf.h"
#include "ui/teile/Absatz.h"
#include "ui/teile/Drueckbar.h"
#include "ui/teile/Ladering.h"

namespace spurkiste::vorleserollen {

namespace {

struct Rolle {
    const QMetaObject* klasse;
    QAccessible::Role rolle;
};

const std::array kRollen{
    Rolle{&InhaltsAnsicht::staticMetaObject, QAccessible::Window},
    Rolle{&Werkzeuge::staticMetaObject, QAccessible::ToolBar},
    Rolle{&Filterleiste::staticMetaObject, QAccessible::ToolBar},
    Rolle{&Tabellenkopf::staticMetaObject, QAccessible::ColumnHeader},
    Rolle{&Statusleiste::staticMetaObject, QAccessible::StatusBar},
    Rolle{&Hinweiszeile::staticMetaObject, QAccessible::Notification},
    Rolle{&Leisezeile::staticMetaObject, QAccessible::Notification},
    Rolle{&Ladering::staticMetaObject, QAccessible::Animation},
    Rolle{&SkizzenAnsicht::staticMetaObject, QAccessible::Graphic},
    Rolle{&Kachel::staticMetaObject, QAccessible::Grouping},
    Rolle{&DetailKarte::staticMetaObject, QAccessible::Grouping},
};

/// A paragraph is read like a label: its text is its name, unless it has one. That it is built as a text field is its
/// own affair.
class VorgelesenerAbsatz final : public QAccessibleWidget {
  public:
    explicit VorgelesenerAbsatz(Absatz* absatz) : QAccessibleWidget(absatz, QAccessible::StaticText) {}

    [[nodiscard]] QString text(QAccessible::Text was) const override {
        const bool ohneName = was == QAccessible::Name && widget()->accessibleName().isEmpty();
        return ohneName ? static_cast<Absatz*>(widget())->toPlainText() : QAccessibleWidget::text(was);
    }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State zustand = QAccessibleWidget::state();
        zustand.focusable = false;
        return zustand;
    }
};

/// A button that says what the toolkit's own cannot: that it opens something, whether that is open, and that it is the
/// default of its sheet.
class VorgelesenerKnopf final : public QAccessibleWidget {
  public:
    explicit VorgelesenerKnopf(Drueckbar* knopf) : QAccessibleWidget(knopf, QAccessible::Button), knopf_(*knopf) {}

    [[nodiscard]] QString text(QAccessible::Text was) const override {
        const QString eigener = QAccessibleWidget::text(was);
        return was == QAccessible::Name && eigener.isEmpty() ? knopf_.text() : eigener;
    }
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State zustand = QAccessibleWidget::state();
        zustand.pressed = knopf_.isDown();
        zustand.defaultButton = knopf_.istVorgabe();
        zustand.hasPopup = knopf_.klapptAuf();
        zustand.expandable = knopf_.klapptAuf();
        zustand.expanded = knopf_.istOffen();
        zustand.collapsed = knopf_.klapptAuf() && !knopf_.istOffen();
        return zustand;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return knopf_.isEnabled() ? QStringList{pressAction(), setFocusAction()} : QStringList{};
    }
    void doAction(const QString& tat) override {
        if (tat == pressAction()) {
            knopf_.click();
        } else {
            QAccessibleWidget::doAction(tat);
        }
    }

  private:
    Drueckbar& knopf_;
};

/// A sheet keeps everything else of its window from being used, as a dialog does in a window of its own.
class VorgelesenesBlatt final : public QAccessibleWidget {
  public:
    explicit VorgelesenesBlatt(Blatt* blatt) : QAccessibleWidget(blatt, QAccessible::Dialog) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State zustand = QAccessibleWidget::state();
        zustand.modal = true;
        return zustand;
    }
};

/// The toolkit asks for each widget that somebody looks at, first by the name of its class, then by those of its bases.
QAccessibleInterface* beschreibe(const QString& /*klasse*/, QObject* objekt) {
    if (auto* absatz = qobject_cast<Absatz*>(objekt)) {
        return new VorgelesenerAbsatz(absatz);
    }
    if (auto* knopf = qobject_cast<Drueckbar*>(objekt)) {
        return new VorgelesenerKnopf(knopf);
    }
    if (auto* blatt = qobject_cast<Blatt*>(objekt)) {
        return new VorgelesenesBlatt(blatt);
    }
    const auto* gefunden = std::find_if(kRollen.begin(), kRollen.end(),
                                        [&](const Rolle& rolle) { return rolle.klasse == objekt->metaObject(); });
    return gefunden == kRollen.end() ? nullptr : new QAccessibleWidget(qobject_cast<QWidget*>(objekt), gefunden->rolle);
}

}  // namespace

void melde() {
    QAccessible::installFactory(beschreibe);
}

}  // namespace spurkiste::vorleserollen
