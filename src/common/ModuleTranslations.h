#pragma once

#include "common/TdModule.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTranslator;

/// The translators that the module chain has installed in the application.
class ModuleTranslations
{
public:
    ModuleTranslations();
    ~ModuleTranslations();
    ModuleTranslations(const ModuleTranslations &) = delete;
    ModuleTranslations &operator=(const ModuleTranslations &) = delete;

    /// Switches to @p language; see CTdModule::SetLanguage(). @p chain has the front module first.
    bool setLanguage(const QString &language, const std::vector<CTdModule::Resources> &chain);
    const QString &language() const { return m_language; }
    /// Does again what setLanguage() did, after the chain has changed.
    void refresh(const std::vector<CTdModule::Resources> &chain);

    bool addFile(const QString &path);
    bool removeFile(const QString &path);

private:
    struct File
    {
        QString path;
        std::unique_ptr<QTranslator> translator;
    };

    void installFiles();

    QString m_language;
    std::vector<std::unique_ptr<QTranslator>> m_ofLanguage; // in the order of installation: the front module last
    std::vector<File> m_files;                              // in the order of installation, before all others
};
