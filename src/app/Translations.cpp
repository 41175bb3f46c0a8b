#include "app/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace {

const QString separator = QStringLiteral("_");

void installIf(bool isLoaded, std::unique_ptr<QTranslator> translator)
{
    if (isLoaded && QCoreApplication::installTranslator(translator.get()))
        translator.release()->setParent(QCoreApplication::instance());
}

} // namespace

void Translations::install(const QLocale& user)
{
    const QString place = QStringLiteral(":/i18n");
    const QString program = QStringLiteral("sonvika");
    auto ours = std::make_unique<QTranslator>();
    const bool isLoaded =
        ours->load(user, program, separator, place) || ours->load(QLocale::English, program, separator, place);
    const QLocale language(ours->language());
    auto qts = std::make_unique<QTranslator>();
    const bool isQtLoaded =
        qts->load(language, QStringLiteral("qtbase"), separator, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    installIf(isQtLoaded, std::move(qts));
    installIf(isLoaded, std::move(ours));
}
