#include "common/TdModule.h"
#include "res/StringId.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <QWidget>

#include <gtest/gtest.h>

#include <array>

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr std::array<TdStringRow, 2> hostTexts{{{100, "Own text"}, {TdStringId::DatasetTin, "Triangles"}}};

/// A host's module, in the chain while it lives.
class HostModule
{
public:
    explicit HostModule(const QString &root = QString())
    {
        EXPECT_TRUE(CTdModule::AddModule({u"Host"_s, "Host", hostTexts, root}));
    }
    ~HostModule() { EXPECT_TRUE(CTdModule::RemoveModule(u"Host"_s)); }
};

QString tin()
{
    return CTdModule::LoadString(TdStringId::DatasetTin);
}

TEST(Module, IsAttachedWhenTheLibraryIsLoaded)
{
    EXPECT_TRUE(CTdModule::IsAttached());
    EXPECT_TRUE(CTdModule::Attach());
    for (int twice = 0; twice < 2; ++twice) {
        CTdModule::Detach();
        EXPECT_FALSE(CTdModule::IsAttached());
        EXPECT_TRUE(tin().isEmpty());
    }
    EXPECT_TRUE(CTdModule::Attach());
    EXPECT_EQ(tin(), u"TIN"_s);
    for (const quint32 unknown : {0u, 100u, 41193u, 0xFFFFFFFFu})
        EXPECT_TRUE(CTdModule::LoadString(unknown).isEmpty()) << unknown;
}

TEST(Module, HostModuleStandsInFront)
{
    {
        const HostModule host;
        EXPECT_EQ(tin(), u"Triangles"_s);
        EXPECT_EQ(CTdModule::LoadString(100), u"Own text"_s);
        EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetCad), u"CAD"_s);

        // The library stays behind it also when it is attached again.
        CTdModule::Detach();
        EXPECT_EQ(tin(), u"Triangles"_s);
        CTdModule::Attach();
        EXPECT_EQ(tin(), u"Triangles"_s);
    }
    EXPECT_EQ(tin(), u"TIN"_s);
    EXPECT_TRUE(CTdModule::LoadString(100).isEmpty());
}

TEST(Module, RefusesModulesThatCannotBeSearched)
{
    static constexpr std::array<TdStringRow, 2> unsorted{{{2, "b"}, {1, "a"}}};
    static constexpr std::array<TdStringRow, 2> twice{{{1, "a"}, {1, "b"}}};
    EXPECT_FALSE(CTdModule::AddModule({QString(), "Host", hostTexts, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({u"TdCommon"_s, "Host", hostTexts, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({u"Bad"_s, "Bad", unsorted, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({u"Bad"_s, "Bad", twice, QString()}));
    EXPECT_FALSE(CTdModule::RemoveModule(u"Bad"_s));
}

TEST(Module, ResourcesAreSearchedThroughTheChain)
{
    EXPECT_TRUE(CTdModule::FindResource(u"icons/no-such.svg"_s).isEmpty());
    EXPECT_TRUE(CTdModule::LoadIcon(u"no-such"_s).isNull());

    const QTemporaryDir root;
    QDir(root.path()).mkpath(u"icons"_s);
    QFile icon(root.filePath(u"icons/no-such.svg"_s));
    ASSERT_TRUE(icon.open(QIODevice::WriteOnly));
    icon.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8'/></svg>");
    icon.close();
    const HostModule host(root.path());
    EXPECT_EQ(CTdModule::FindResource(u"icons/no-such.svg"_s), icon.fileName());
    EXPECT_FALSE(CTdModule::LoadIcon(u"no-such"_s).isNull());
    EXPECT_EQ(CTdModule::FindResource(u"translations/TdCommon_de.qm"_s), u":/terravox/translations/TdCommon_de.qm"_s);
}

TEST(Module, ForgetsAMainWindowThatIsGone)
{
    EXPECT_EQ(CTdModule::GetMainWnd(), nullptr);
    auto window = std::make_unique<QWidget>();
    CTdModule::SetMainWnd(window.get());
    EXPECT_EQ(CTdModule::GetMainWnd(), window.get());

    QWidget *elsewhere = window.get();
    const std::unique_ptr<QThread> thread(QThread::create([&elsewhere] { elsewhere = CTdModule::GetMainWnd(); }));
    thread->start();
    thread->wait();
    EXPECT_EQ(elsewhere, nullptr) << "another thread has no main window";

    window.reset();
    EXPECT_EQ(CTdModule::GetMainWnd(), nullptr);
}

} // namespace
