#include "CommandLine.h"
#include "MainWindow.h"
#include "Prompts.h"
#include "basic/TdProfileFile.h"
#include "bench/FirstPaint.h"

#include <QApplication>

/// The desktop as its own main() starts it without files, up to the first picture.
int main(int argc, char **argv)
{
    QCoreApplication::setOrganizationName(QStringLiteral("terravox"));
    QCoreApplication::setApplicationName(QStringLiteral("terravox-bench"));
    CommandLine::parse({QStringLiteral("terravox")});
    QApplication application(argc, argv);
    DialogPrompts prompts;
    CTdProfileFile profile;
    MainWindow window(prompts, profile);
    window.setRemembersLayout(true);
    const FirstPaint firstPaint(&window);
    window.show();
    return QApplication::exec();
}
