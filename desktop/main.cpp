#include "CommandLine.h"
#include "Gallery.h"
#include "MainWindow.h"
#include "Prompts.h"
#include "TreeText.h"
#include "basic/TdProfileFile.h"
#include "colour/ColorsServer.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/map/TxWorkspace.h"

#include <QApplication>
#include <QFileInfo>
#include <QFont>
#include <QLoggingCategory>
#include <QProcess>

#include <cstdio>

namespace {

/// Marks the process that draws the gallery's pictures at twice the size.
constexpr const char *secondScale = "TERRAVOX_GALLERY_2X";

void print(FILE *stream, const QString &text)
{
    std::fputs(text.toUtf8().constData(), stream);
    if (!text.endsWith(QLatin1Char('\n')))
        std::fputc('\n', stream);
}

QStringList argumentList(int argc, char **argv)
{
    QStringList list;
    for (int i = 0; i < argc; ++i)
        list << QString::fromLocal8Bit(argv[i]);
    return list;
}

/// True when no window shows, so that no display is needed.
bool needsNoDisplay(const CommandLine &line)
{
    return line.action != CommandLine::Action::Run;
}

/// False where Qt would end the program because there is no screen to show a window on.
bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

/// Draws the pictures, then has another process of this program draw them at twice the size: a process has one scale.
int drawGallery(const CommandLine &line, const QStringList &arguments)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    QString error;
    if (!Gallery::draw(line.galleryFolder, line.files, error)) {
        print(stderr, error);
        return 1;
    }
    if (qEnvironmentVariableIsSet(secondScale))
        return 0;
    QProcess second;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    environment.insert(QLatin1String(secondScale), QStringLiteral("1"));
    second.setProcessEnvironment(environment);
    second.setProcessChannelMode(QProcess::ForwardedChannels);
    second.start(QCoreApplication::applicationFilePath(), arguments.mid(1));
    if (!second.waitForFinished(-1) || second.exitStatus() != QProcess::NormalExit)
        return 1;
    return second.exitCode();
}

int printTree(const CommandLine &line)
{
    CTxWorkspace workspace;
    int failed = 0;
    for (const bool workspaces : {true, false}) {
        for (const QString &file : line.files) {
            const bool isWorkspace =
                QFileInfo(file).suffix().compare(QLatin1String(CTxWorkspace::extension), Qt::CaseInsensitive) == 0;
            if (isWorkspace != workspaces)
                continue;
            const bool ok = isWorkspace ? workspace.Open(file) : workspace.GetDataSources().Open(file) != nullptr;
            if (!ok) {
                print(stderr, QStringLiteral("%1: %2").arg(file, TxGetErrorMsgObj().GetErrorMessage()));
                ++failed;
            }
        }
    }
    print(stdout, treeText(workspace));
    return failed > 0 ? 1 : 0;
}

/// Serves other programs until they are done. @return 1 when that is not possible
int serveAutomation(const CommandLine &line)
{
    ColorsServer server;
    if (!server.start()) {
        print(stderr, QStringLiteral("There is no session bus, or another program serves %1 already.")
                          .arg(QLatin1String(ColorsServer::serviceName)));
        return 1;
    }
    server.linger(line.linger);
    return QApplication::exec();
}

int runDesktop(const CommandLine &line)
{
    DialogPrompts prompts;
    CTdProfileFile profile;
    MainWindow window(prompts, profile);
    window.setRemembersLayout(true);
    window.show();
    if (!line.files.isEmpty()) {
        // After the first picture, so that the window is there while large files are opened. What fails is told in
        // the output pane: several message boxes at start help nobody.
        QMetaObject::invokeMethod(
            &window, [&window, &line] { window.openAtStart(line.files); }, Qt::QueuedConnection);
    }
    // Whoever drives this desktop by scripts; there may be no bus, or another process that serves them.
    ColorsServer server;
    QMetaObject::invokeMethod(&server, &ColorsServer::start, Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("terravox"));
    QCoreApplication::setApplicationName(QStringLiteral("terravox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TD_VERSION));
    const CommandLine line = CommandLine::parse(argumentList(argc, argv));
    if (needsNoDisplay(line)) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QLoggingCategory::setFilterRules(QStringLiteral("default=false")); // what that platform has to say of itself
    }
    switch (line.action) {
    case CommandLine::Action::Fail:
        print(stderr, line.message);
        return 2;
    case CommandLine::Action::ShowVersion:
        print(stdout, line.message);
        return 0;
    case CommandLine::Action::Run:
        if (hasDisplay())
            break;
        print(stderr, QStringLiteral("There is no display. --print-tree, --gallery and --automation need none."));
        return 2;
    default:
        break;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Terravox"));
    switch (line.action) {
    case CommandLine::Action::ShowHelp:
        print(stdout, line.message);
        return 0;
    case CommandLine::Action::Gallery:
        return drawGallery(line, argumentList(argc, argv));
    case CommandLine::Action::PrintTree:
        return printTree(line);
    case CommandLine::Action::Automation:
        return serveAutomation(line);
    default:
        return runDesktop(line);
    }
}
