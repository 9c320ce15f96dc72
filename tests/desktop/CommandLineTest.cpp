#include "CommandLine.h"
#include "DesktopFixture.h"

#include <QProcess>

namespace {

using Action = CommandLine::Action;

struct ParseCase
{
    QStringList arguments;
    Action action;
    QStringList files;
    QString folder;
};

class Parsing : public testing::TestWithParam<ParseCase>
{
};

TEST_P(Parsing, TellsWhatToDo)
{
    const CommandLine line = CommandLine::parse(QStringList{QStringLiteral("terravox")} + GetParam().arguments);
    EXPECT_EQ(line.action, GetParam().action);
    EXPECT_EQ(line.galleryFolder, GetParam().folder);
    if (line.action == Action::Fail)
        EXPECT_FALSE(line.message.isEmpty());
    else
        EXPECT_EQ(line.files, GetParam().files);
}

INSTANTIATE_TEST_SUITE_P(Arguments, Parsing,
                         testing::Values(ParseCase{{}, Action::Run, {}, {}},
                                         ParseCase{{"a.txw", "b.gpkg"}, Action::Run, {"a.txw", "b.gpkg"}, {}},
                                         ParseCase{{"--gallery", "out", "a.txw"}, Action::Gallery, {"a.txw"}, "out"},
                                         ParseCase{{"--gallery"}, Action::Fail, {}, {}},
                                         ParseCase{{"--gallery="}, Action::Fail, {}, {}},
                                         ParseCase{{"--print-tree", "x"}, Action::PrintTree, {"x"}, {}},
                                         ParseCase{{"--version"}, Action::ShowVersion, {}, {}},
                                         ParseCase{{"--help"}, Action::ShowHelp, {}, {}},
                                         ParseCase{{"--no-such-option"}, Action::Fail, {}, {}},
                                         ParseCase{{"--", "--print-tree"}, Action::Run, {"--print-tree"}, {}}));

/// The program itself.
class Program : public DesktopFixture
{
protected:
    void run(const QStringList &arguments)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM")); // no display is said to be needed
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(TERRAVOX_PROGRAM), arguments);
        ASSERT_TRUE(process.waitForFinished(60000));
        EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
        code = process.exitCode();
        out = QString::fromUtf8(process.readAllStandardOutput());
        err = QString::fromUtf8(process.readAllStandardError());
    }

    int code = -1;
    QString out;
    QString err;
};

TEST_F(Program, PrintsTheTreeAndGoesOnAfterBadFiles)
{
    const QString bad = write(QStringLiteral("bad.gpkg"), "this is no database");
    run({QStringLiteral("--print-tree"), bad, towns(), folder.filePath(QStringLiteral("gone.shp"))});
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(out.contains(QStringLiteral("towns"))) << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("Point, 3"))) << out.toStdString();
    EXPECT_TRUE(out.startsWith(QStringLiteral("Untitle Workspace\n"))) << "as the tree names it: " << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("Fill Library"))) << out.toStdString();
    EXPECT_TRUE(err.contains(QStringLiteral("bad.gpkg"))) << err.toStdString();
    EXPECT_TRUE(err.contains(QStringLiteral("gone.shp"))) << err.toStdString();
}

TEST_F(Program, AnswersHelpVersionAndMistakes)
{
    run({QStringLiteral("--help")});
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(out.startsWith(QStringLiteral("Usage: terravox "))) << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("--print-tree"))) << out.toStdString();
    run({QStringLiteral("--version")});
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(out.startsWith(QStringLiteral("terravox "))) << out.toStdString();
    run({QStringLiteral("--wrong")});
    EXPECT_EQ(code, 2);
    EXPECT_TRUE(err.contains(QStringLiteral("wrong"))) << err.toStdString();
    run({});
    EXPECT_EQ(code, 2);
    EXPECT_TRUE(err.contains(QStringLiteral("no display"))) << err.toStdString();
}

} // namespace
