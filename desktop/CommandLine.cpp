#include "CommandLine.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>

CommandLine CommandLine::parse(const QStringList &arguments)
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("CommandLine", text); };
    QCommandLineParser parser;
    parser.setApplicationDescription(tr("Terravox shows geographic data: workspaces, maps and attribute tables."));
    // Not addHelpOption(), which would promise --help-all too.
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, tr("Print this help and exit."));
    parser.addOption(help);
    const QCommandLineOption version = parser.addVersionOption();
    const QCommandLineOption gallery(
        QStringLiteral("gallery"),
        tr("Draw every window and dialog into PNG files in <folder> and exit. Needs no display."), tr("folder"));
    const QCommandLineOption tree(QStringLiteral("print-tree"),
                                  tr("Print the workspace tree as text and exit. Needs no display."));
    const QCommandLineOption automation(QStringLiteral("automation"),
                                        tr("Serve other programs on the session bus, without a window, and exit when "
                                           "they are done. Needs no display."));
    const QCommandLineOption linger(QStringLiteral("linger"),
                                    tr("With --automation: stay for <seconds> (10) while nobody holds an object."),
                                    tr("seconds"));
    parser.addOption(gallery);
    parser.addOption(tree);
    parser.addOption(automation);
    parser.addOption(linger);
    parser.addPositionalArgument(
        QStringLiteral("files"),
        tr("A workspace (.txw), and files, folders or connection strings (PG:…) to open as datasources."),
        tr("[files…]"));

    CommandLine result;
    if (!parser.parse(arguments)) {
        result.action = Action::Fail;
        result.message = parser.errorText();
        return result;
    }
    result.files = parser.positionalArguments();
    if (parser.isSet(help)) {
        result.action = Action::ShowHelp;
        // There is no application yet whose name the parser could tell.
        result.message =
            parser.helpText().replace(QLatin1String("<executable_name>"), QFileInfo(arguments.value(0)).fileName());
    } else if (parser.isSet(version)) {
        result.action = Action::ShowVersion;
        result.message =
            QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion();
    } else if (parser.isSet(gallery)) {
        result.action = Action::Gallery;
        result.galleryFolder = parser.value(gallery);
        if (result.galleryFolder.isEmpty()) {
            result.action = Action::Fail;
            result.message = tr("--gallery needs a folder.");
        }
    } else if (parser.isSet(tree)) {
        result.action = Action::PrintTree;
    } else if (parser.isSet(automation)) {
        result.action = Action::Automation;
        if (parser.isSet(linger)) {
            bool ok = false;
            const int seconds = parser.value(linger).toInt(&ok);
            if (!ok || seconds < 0 || seconds > 24 * 60 * 60) {
                result.action = Action::Fail;
                result.message = tr("--linger needs a number of seconds, at most a day.");
            }
            result.linger = std::chrono::seconds(seconds);
        }
    }
    return result;
}
