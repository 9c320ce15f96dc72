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

constexpr std::array<TdStringRow, 2> hostTexts{{{100, "Own text"}, {TdStringId::DatasetTin, "Triangles"}}};

/// A host's module, in the chain while it lives.
class HostModule
{
public:
    explicit HostModule(const QString &root = QString())
    {
        EXPECT_TRUE(CTdModule::AddModule({QStringLiteral("Host"), "Host", hostTexts, root}));
    }
    ~HostModule() { EXPECT_TRUE(CTdModule::RemoveModule(QStringLiteral("Host"))); }
};

TEST(Module, IsAttachedWhenTheLibraryIsLoaded)
{
    EXPECT_TRUE(CTdModule::IsAttached());
    EXPECT_TRUE(CTdModule::Attach());
    CTdModule::Detach();
    EXPECT_FALSE(CTdModule::IsAttached());
    EXPECT_TRUE(CTdModule::LoadString(TdStringId::DatasetTin).isEmpty());
    CTdModule::Detach();
    EXPECT_TRUE(CTdModule::Attach());
    EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetTin), QStringLiteral("TIN"));
}

TEST(Module, UnknownTextIsEmpty)
{
    for (const quint32 id : {0u, 100u, 41193u, 0xFFFFFFFFu})
        EXPECT_TRUE(CTdModule::LoadString(id).isEmpty()) << id;
}

TEST(Module, HostModuleStandsInFront)
{
    {
        const HostModule host;
        EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetTin), QStringLiteral("Triangles"));
        EXPECT_EQ(CTdModule::LoadString(100), QStringLiteral("Own text"));
        EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetCad), QStringLiteral("CAD"));

        // The library stays behind it also when it is attached again.
        CTdModule::Detach();
        EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetTin), QStringLiteral("Triangles"));
        CTdModule::Attach();
        EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetTin), QStringLiteral("Triangles"));
    }
    EXPECT_EQ(CTdModule::LoadString(TdStringId::DatasetTin), QStringLiteral("TIN"));
    EXPECT_TRUE(CTdModule::LoadString(100).isEmpty());
}

TEST(Module, RefusesModulesThatCannotBeSearched)
{
    static constexpr std::array<TdStringRow, 2> unsorted{{{2, "b"}, {1, "a"}}};
    static constexpr std::array<TdStringRow, 2> twice{{{1, "a"}, {1, "b"}}};
    EXPECT_FALSE(CTdModule::AddModule({QString(), "Host", hostTexts, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({QStringLiteral("TdCommon"), "Host", hostTexts, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({QStringLiteral("Bad"), "Bad", unsorted, QString()}));
    EXPECT_FALSE(CTdModule::AddModule({QStringLiteral("Bad"), "Bad", twice, QString()}));
    EXPECT_FALSE(CTdModule::RemoveModule(QStringLiteral("Bad")));
}

TEST(Module, ResourcesAreSearchedThroughTheChain)
{
    const QString own = QStringLiteral("translations/TdCommon_de.qm");
    EXPECT_EQ(CTdModule::FindResource(own), QStringLiteral(":/terravox/translations/TdCommon_de.qm"));
    EXPECT_TRUE(CTdModule::FindResource(QStringLiteral("icons/no-such.svg")).isEmpty());
    EXPECT_TRUE(CTdModule::LoadIcon(QStringLiteral("no-such")).isNull());

    const QTemporaryDir root;
    QDir(root.path()).mkpath(QStringLiteral("icons"));
    QFile icon(root.filePath(QStringLiteral("icons/no-such.svg")));
    ASSERT_TRUE(icon.open(QIODevice::WriteOnly));
    icon.write("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8'/></svg>");
    icon.close();
    const HostModule host(root.path());
    EXPECT_EQ(CTdModule::FindResource(QStringLiteral("icons/no-such.svg")), icon.fileName());
    EXPECT_FALSE(CTdModule::LoadIcon(QStringLiteral("no-such")).isNull());
    EXPECT_EQ(CTdModule::FindResource(own), QStringLiteral(":/terravox/translations/TdCommon_de.qm"));
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
