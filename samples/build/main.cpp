// Builds the sample database and the sample workspace from samples/source, through the engine's public face alone.

#include "DatabaseBuilder.h"
#include "WorkspaceBuilder.h"

#include <QCoreApplication>
#include <QTextStream>

int main(int argc, char *argv[])
{
    // The database notes when it was changed: a fixed day keeps the result the same from run to run.
    qputenv("OGR_CURRENT_DATE", "2026-01-01T00:00:00Z");
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout);

    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2) {
        out << "usage: make_samples FOLDER\n"
               "Makes FOLDER/terravox.tdb and FOLDER/world.txw from FOLDER/source.\n";
        return 2;
    }
    const QString folder = arguments.at(1);

    DatabaseBuilder database(folder);
    if (!database.build(folder + QStringLiteral("/terravox.tdb"))) {
        out << database.error() << '\n';
        return 1;
    }
    WorkspaceBuilder workspace(folder);
    if (!workspace.build(folder + QStringLiteral("/world.txw"))) {
        out << workspace.error() << '\n';
        return 1;
    }
    return 0;
}
