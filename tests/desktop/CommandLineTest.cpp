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
    const CommandLine line = CommandLine::parse(QStringList{u"terravox"_s} + GetParam().arguments);
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
                                         ParseCase{{"--automation"}, Action::Automation, {}, {}},
                                         ParseCase{{"--automation", "--linger", "0"}, Action::Automation, {}, {}},
                                         ParseCase{{"--automation", "--linger", "-1"}, Action::Fail, {}, {}},
                                         ParseCase{{"--automation", "--linger", "soon"}, Action::Fail, {}, {}},
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
        environment.remove(u"QT_QPA_PLATFORM"_s); // no display is said to be needed
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
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
    const QString bad = write(u"bad.gpkg"_s, "this is no database");
    run({u"--print-tree"_s, bad, towns(), folder.filePath(u"gone.shp"_s)});
    EXPECT_EQ(code, 1);
    EXPECT_TRUE(out.contains(u"towns"_s)) << out.toStdString();
    EXPECT_TRUE(out.contains(u"Point, 3"_s)) << out.toStdString();
    EXPECT_TRUE(out.startsWith(u"Untitle Workspace\n"_s)) << "as the tree names it: " << out.toStdString();
    EXPECT_TRUE(out.contains(u"Fill Library"_s)) << out.toStdString();
    EXPECT_TRUE(err.contains(u"bad.gpkg"_s)) << err.toStdString();
    EXPECT_TRUE(err.contains(u"gone.shp"_s)) << err.toStdString();
}

TEST_F(Program, AnswersHelpVersionAndMistakes)
{
    run({u"--help"_s});
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(out.startsWith(u"Usage: terravox "_s)) << out.toStdString();
    EXPECT_TRUE(out.contains(u"--print-tree"_s)) << out.toStdString();
    run({u"--version"_s});
    EXPECT_EQ(code, 0);
    EXPECT_TRUE(out.startsWith(u"terravox "_s)) << out.toStdString();
    run({u"--wrong"_s});
    EXPECT_EQ(code, 2);
    EXPECT_TRUE(err.contains(u"wrong"_s)) << err.toStdString();
    run({});
    EXPECT_EQ(code, 2);
    EXPECT_TRUE(err.contains(u"no display"_s)) << err.toStdString();
}

} // namespace
