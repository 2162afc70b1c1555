// Qt's Japanese catalogue from the system's Qt translations folder.
#include "startup/JapaneseTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace kelvary {

bool installJapaneseTranslations() {
    auto* app = QCoreApplication::instance();
    if (!app) return false;
    const QLocale japanese(QLocale::Japanese, QLocale::Japan);
    QLocale::setDefault(japanese);
    // "qt" is the catalogue that gathers qtbase and the other modules.
    auto* translator = new QTranslator(app);
    if (!translator->load(japanese, QStringLiteral("qt"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    QCoreApplication::installTranslator(translator);
    return true;
}

}  // namespace kelvary
