#include "common/TdModule.h"

#include "common/ModuleTranslations.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QThread>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

/// The only process-wide state of the module frame.
struct State
{
    std::vector<CTdModule::Resources> chain; // the module in front first
    ModuleTranslations translations;
    QPointer<QWidget> mainWnd; // the host's
};

State &state()
{
    static State instance;
    return instance;
}

QString ownName()
{
    return QStringLiteral("TdCommon");
}

auto findModule(const QString &name)
{
    return std::ranges::find(state().chain, name, &CTdModule::Resources::name);
}

/// Stands for the library: made when it is loaded, destroyed when it is unloaded.
const struct LoadedLibrary
{
    LoadedLibrary() { CTdModule::Attach(); }
    ~LoadedLibrary() { CTdModule::Detach(); }
} loadedLibrary;

} // namespace

bool CTdModule::Attach()
{
    if (!IsAttached()) {
        // At the end: whatever a host has put into the chain stands before the library.
        state().chain.push_back({ownName(), "TdCommon", TdStringTable(), QStringLiteral(":/terravox")});
        state().translations.refresh(state().chain);
    }
    return IsAttached();
}

void CTdModule::Detach()
{
    RemoveModule(ownName());
    SetMainWnd(nullptr);
}

bool CTdModule::IsAttached()
{
    return findModule(ownName()) != state().chain.end();
}

bool CTdModule::AddModule(const Resources &module)
{
    const bool ascending = std::ranges::adjacent_find(module.strings, std::ranges::greater_equal{}, &TdStringRow::id) ==
                           module.strings.end();
    if (module.name.isEmpty() || !ascending || findModule(module.name) != state().chain.end())
        return false;
    state().chain.insert(state().chain.begin(), module);
    state().translations.refresh(state().chain);
    return true;
}

bool CTdModule::RemoveModule(const QString &name)
{
    const auto module = findModule(name);
    if (module == state().chain.end())
        return false;
    state().chain.erase(module);
    state().translations.refresh(state().chain);
    return true;
}

QString CTdModule::LoadString(quint32 id)
{
    for (const Resources &module : state().chain) {
        const auto row = std::ranges::lower_bound(module.strings, id, {}, &TdStringRow::id);
        if (row != module.strings.end() && row->id == id)
            return QCoreApplication::translate(module.context, row->text);
    }
    return {};
}

QString CTdModule::FindResource(const QString &path)
{
    for (const Resources &module : state().chain) {
        QString file = module.root + u'/' + path;
        if (QFile::exists(file))
            return file;
    }
    return {};
}

QIcon CTdModule::LoadIcon(const QString &name)
{
    const QString file = FindResource(QStringLiteral("icons/%1.svg").arg(name));
    return file.isEmpty() ? QIcon() : QIcon(file);
}

bool CTdModule::SetLanguage(const QString &language)
{
    return state().translations.setLanguage(language, state().chain);
}

QString CTdModule::GetLanguage()
{
    return state().translations.language();
}

bool CTdModule::InstallTranslation(const QString &path)
{
    return state().translations.addFile(path);
}

bool CTdModule::RemoveTranslation(const QString &path)
{
    return state().translations.removeFile(path);
}

void CTdModule::SetMainWnd(QWidget *window)
{
    state().mainWnd = window;
}

QWidget *CTdModule::GetMainWnd()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread() ? state().mainWnd.data() : nullptr;
}
