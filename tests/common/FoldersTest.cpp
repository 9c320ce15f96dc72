#include "HostWindow.h"
#include "common/TdCommMethods.h"
#include "common/TdFileChooser.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;

TEST(AppDir, IsTheExecutablesFolder)
{
    const QString folder = Methods::GetAppDir();
    EXPECT_TRUE(folder.endsWith(u'/'));
    EXPECT_TRUE(QFileInfo::exists(folder + QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
}

/// A folder "tree" with the folders "first" and "second" and a file.
class Folder : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"tree/first"_s) && QDir(m_folder.path()).mkpath(u"tree/second"_s));
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    /// Does @p work to the browser that opens next.
    void whenOpen(std::function<void(QFileDialog &)> work)
    {
        QTimer::singleShot(0, &m_timer, [work = std::move(work)] {
            if (auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget()))
                work(*dialog);
        });
    }
    static void accept(const QFileDialog &dialog)
    {
        dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Open)->click();
    }
    static QString status(const QFileDialog &dialog) { return dialog.findChild<QLabel *>(u"status"_s)->text(); }

    QTemporaryDir m_folder;
    QObject m_timer;
};

TEST_F(Folder, IsSelectedAtFirstAndGivenBackByOkAndByCancel)
{
    struct Row
    {
        QString initial;
        QString shown; // as selected
        bool accepts;
        QString result;
    };
    const QString none = path(u"tree/none/deep"_s);
    const Row rows[] = {
        {path(u"tree/first"_s), path(u"tree/first"_s), true, path(u"tree/first"_s)},
        {path(u"tree/first/"_s), path(u"tree/first"_s), false, path(u"tree/first/"_s)},
        {none, path(u"tree"_s), false, none},
        {none, path(u"tree"_s), true, path(u"tree"_s)},
        {u"/"_s, u"/"_s, true, u"/"_s},
        {u""_s, QString(), false, u""_s},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(qPrintable(row.initial));
        whenOpen([&](QFileDialog &dialog) {
            EXPECT_EQ(dialog.windowTitle(), u"Choose"_s);
            EXPECT_TRUE(row.shown.isEmpty() ||
                        status(dialog) == u"Please select a directory path \n"_s + QDir::toNativeSeparators(row.shown))
                << qPrintable(status(dialog));
            row.accepts ? accept(dialog) : QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        EXPECT_EQ(Methods::GetFolder(nullptr, row.initial, u"Choose"_s), row.result);
    }
}

TEST_F(Folder, StatusFollowsTheSelection)
{
    const QString wide = path(u"tree/third"_s + QString(200, u'x'));
    ASSERT_TRUE(QDir().mkpath(wide));
    whenOpen([&](QFileDialog &dialog) {
        auto *list = dialog.findChild<QAbstractItemView *>(u"listView"_s);
        // The list is read and sorted on a thread of its own, so a row is looked for by what stands in it.
        const auto select = [&](const QString &start) {
            const QAbstractItemModel &model = *list->model();
            QModelIndexList found;
            ASSERT_TRUE(QTest::qWaitFor([&] {
                const QModelIndex top = model.index(0, 0, list->rootIndex());
                found = top.isValid() ? model.match(top, Qt::DisplayRole, start) : QModelIndexList();
                return !found.isEmpty();
            }));
            list->setCurrentIndex(found.first());
        };
        const int width = dialog.width();
        select(u"third"_s);
        EXPECT_TRUE(status(dialog).contains(u'…')) << "there is room for a part of it";
        EXPECT_EQ(dialog.findChild<QLabel *>(u"status"_s)->toolTip(), wide);
        EXPECT_EQ(dialog.width(), width);
        select(u"second"_s);
        EXPECT_EQ(status(dialog), u"Please select a directory path \n"_s + path(u"tree/second"_s));
        accept(dialog);
    });
    EXPECT_EQ(Methods::GetFolder(nullptr, path(u"tree/first"_s), u"Choose"_s), path(u"tree/second"_s));
}

TEST_F(Folder, BelongsToTheGivenWindowElseToTheMainWindowAndGoesWithIt)
{
    HostWindow host;
    QWidget other;
    for (QWidget *owner : {&other, static_cast<QWidget *>(nullptr)}) {
        whenOpen([&](QFileDialog &dialog) {
            EXPECT_EQ(dialog.parentWidget(), owner ? owner : &host);
            dialog.reject();
        });
        Methods::GetFolder(owner, path(u"tree"_s), u"Choose"_s);
    }
    auto *dying = new QWidget;
    whenOpen([&](QFileDialog &) { delete dying; });
    EXPECT_EQ(Methods::GetFolder(dying, path(u"tree"_s), u"Choose"_s), path(u"tree"_s));
}

TEST_F(Folder, IsAskedOfTheChooserInPlace)
{
    struct Chooser : CTdFileChooser
    {
        std::optional<QString> ChooseFolder(QWidget *, const QString &initial, const QString &) override
        {
            return initial == u"a" ? std::optional(u"b"_s) : std::nullopt;
        }
    } chooser;
    CTdFileChooser::SetCurrent(&chooser);
    EXPECT_EQ(Methods::GetFolder(nullptr, u"a"_s, {}), u"b");
    EXPECT_EQ(Methods::GetFolder(nullptr, u"c"_s, {}), u"c");
    CTdFileChooser::SetCurrent(nullptr);
    EXPECT_NE(&CTdFileChooser::GetCurrent(), &chooser);
}

} // namespace
