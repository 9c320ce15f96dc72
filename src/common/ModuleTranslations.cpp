#include "common/ModuleTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <algorithm>

namespace {

using Translators = std::vector<std::unique_ptr<QTranslator>>;

/// True for the language that the texts are written in.
bool isSourceLanguage(const QString &language)
{
    return language.isEmpty() || language == u"C" || QLocale(language).language() == QLocale::English;
}

/// The translators into @p language, the front module's last; empty when no module has one.
Translators load(const QString &language, const std::vector<CTdModule::Resources> &chain)
{
    Translators translators;
    const QLocale locale(language);
    // An unknown language gives the C locale, for which a system-wide file must not be taken.
    if (locale.language() == QLocale::C)
        return translators;
    for (const CTdModule::Resources &module : chain) {
        auto translator = std::make_unique<QTranslator>();
        if (translator->load(locale, module.name, QStringLiteral("_"), module.root + QStringLiteral("/translations")))
            translators.push_back(std::move(translator));
    }
    if (translators.empty())
        return translators;
    // Qt's own texts (standard buttons), where the system has them.
    auto qtTexts = std::make_unique<QTranslator>();
    if (qtTexts->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        translators.push_back(std::move(qtTexts));
    std::ranges::reverse(translators); // the translator that is installed last is asked first
    return translators;
}

} // namespace

ModuleTranslations::ModuleTranslations() = default;
ModuleTranslations::~ModuleTranslations() = default;

bool ModuleTranslations::setLanguage(const QString &language, const std::vector<CTdModule::Resources> &chain)
{
    if (!QCoreApplication::instance())
        return false;
    Translators translators;
    if (!isSourceLanguage(language)) {
        translators = load(language, chain);
        if (translators.empty())
            return false;
    }
    m_language = isSourceLanguage(language) ? QString() : language;
    m_ofLanguage = std::move(translators); // a translator that goes takes itself out of the application
    for (const auto &translator : m_ofLanguage)
        QCoreApplication::installTranslator(translator.get());
    installFiles();
    return true;
}

void ModuleTranslations::refresh(const std::vector<CTdModule::Resources> &chain)
{
    if (m_language.isEmpty() || !QCoreApplication::instance())
        return;
    m_ofLanguage = load(m_language, chain);
    for (const auto &translator : m_ofLanguage)
        QCoreApplication::installTranslator(translator.get());
    installFiles();
}

bool ModuleTranslations::addFile(const QString &path)
{
    if (!QCoreApplication::instance())
        return false;
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(path))
        return false;
    removeFile(path);
    QCoreApplication::installTranslator(translator.get());
    m_files.push_back({path, std::move(translator)});
    return true;
}

bool ModuleTranslations::removeFile(const QString &path)
{
    return std::erase_if(m_files, [&path](const File &file) { return file.path == path; }) != 0;
}

void ModuleTranslations::installFiles()
{
    // The translator that was installed last is asked first.
    for (const File &file : m_files) {
        QCoreApplication::removeTranslator(file.translator.get());
        QCoreApplication::installTranslator(file.translator.get());
    }
}
