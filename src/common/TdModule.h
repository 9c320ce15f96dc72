#pragma once

#include "common/TdCommonExport.h"
#include "res/StringTable.h"

#include <QIcon>
#include <QString>

#include <span>

class QWidget;

/// The library as a module of the host: its texts, icons and translations, and the host's main window.
///
/// Texts and resources are searched through a chain of modules. The library puts itself into the chain when it is
/// loaded and takes itself out when it is unloaded; a host puts a module of its own in front to replace a text, an icon
/// or a translation, or to add some. User-interface thread only.
class TDCOMMON_API CTdModule
{
public:
    /// What a module brings with it.
    struct Resources
    {
        QString name;        ///< unique in the chain; its translations are called "<name>_<language>.qm"
        const char *context; ///< the context that its texts are translated in; must outlive the module
        std::span<const TdStringRow> strings; ///< its texts, ids ascending; must outlive the module
        QString root; ///< resource path or folder, without a slash at the end, that holds "icons" and "translations"
    };

    /// Puts the library's own module into the chain, unless it is there. Runs when the library is loaded.
    /// @return true when it is in the chain.
    static bool Attach();
    /// Takes the library's own module out of the chain and forgets the main window. Runs when the library is unloaded.
    static void Detach();
    static bool IsAttached();

    /// Puts a module in front of the chain. @return false when the name is empty or in the chain already, or the ids of
    /// its texts do not ascend.
    static bool AddModule(const Resources &module);
    /// Takes the module called @p name out of the chain. @return false when there is none.
    static bool RemoveModule(const QString &name);

    /// The text @p id of the first module in the chain that has it, in the current language; empty when none has it.
    static QString LoadString(quint32 id);
    /// The full path of the file @p path ("icons/map.svg") below the root of the first module that has it; empty when
    /// none has it.
    static QString FindResource(const QString &path);
    /// The icon "icons/<name>.svg" of the first module that has it; a null icon when none has it.
    static QIcon LoadIcon(const QString &name);

    /// Switches every text to @p language ("de", "de_DE"; empty, "C" or English for the texts as they are written) for
    /// every module that is translated into it, now and for modules that come later; standard buttons follow where Qt's
    /// own translations are installed. Windows are told by LanguageChange events.
    /// @return false, and nothing changes, when there is no application yet or no module knows the language.
    static bool SetLanguage(const QString &language);
    /// The language that SetLanguage() set last; empty for the texts as they are written.
    static QString GetLanguage();
    /// Puts the translation file @p path (.qm) before all others. @return false when it cannot be read, or there is no
    /// application yet.
    static bool InstallTranslation(const QString &path);
    /// Takes back what InstallTranslation() did. @return false when @p path is not installed.
    static bool RemoveTranslation(const QString &path);

    /// Names the host's main window, the receiver of host messages; null for none. It is not owned.
    static void SetMainWnd(QWidget *window);
    /// The host's main window; null when the host named none or it is gone, and on every other thread.
    static QWidget *GetMainWnd();
};
