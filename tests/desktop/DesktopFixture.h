#pragma once

#include "Actions.h"
#include "DocumentArea.h"
#include "MainWindow.h"
#include "Prompts.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "basic/TdOleDataNode.h"
#include "basic/TdProfileFile.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "workspace/WorkspaceBarTree.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

/// Answers the desktop's questions as a test wants, and keeps what was asked.
class ScriptedPrompts : public Prompts
{
public:
    QStringList openFiles(QWidget *, const QString &, const QString &, const QStringList &) override
    {
        return filesToOpen;
    }
    QString openFolder(QWidget *, const QString &) override { return folderToOpen; }
    QString saveFile(QWidget *, const QString &, const QString &, const QStringList &, const QString &) override
    {
        return fileToSave;
    }
    std::optional<QString> text(QWidget *, const QString &, const QString &, const QString &) override
    {
        return textToEnter;
    }
    Unsaved unsaved(QWidget *, const QString &) override
    {
        ++unsavedQuestions;
        return unsavedAnswer;
    }
    bool confirm(QWidget *, const QString &question, const QString &explanation, const QString &) override
    {
        questions << question;
        explanations << explanation;
        return confirmAnswer;
    }
    void warn(QWidget *, const QString &what, const QString &why) override
    {
        warnings << what + QLatin1Char(' ') + why;
    }

    QStringList filesToOpen;
    QString folderToOpen;
    QString fileToSave;
    std::optional<QString> textToEnter;
    Unsaved unsavedAnswer = Unsaved::Cancel;
    bool confirmAnswer = false;
    int unsavedQuestions = 0;
    QStringList questions;
    QStringList explanations;
    QStringList warnings;
};

/// A temporary folder with small real data files, and settings that do not touch the user's.
class DesktopFixture : public testing::Test
{
protected:
    DesktopFixture()
    {
        QCoreApplication::setOrganizationName(u"terravox-test"_s);
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path() + u"/settings"_s);
        profile = std::make_unique<CTdProfileFile>(folder.filePath(u"profile.ini"_s));
    }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    /// Three towns, the second without a population.
    QString towns() const
    {
        return write(u"towns.geojson"_s, R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"Havn","population":18250},"geometry":{"type":"Point","coordinates":[10.9,54.05]}},
{"type":"Feature","properties":{"name":"Midby","population":null},"geometry":{"type":"Point","coordinates":[10.85,53.75]}},
{"type":"Feature","properties":{"name":"Sund","population":9120},"geometry":{"type":"Point","coordinates":[10.6,53.45]}}]})");
    }

    /// One red-bordered region.
    QString districts() const
    {
        return write(u"districts.geojson"_s, R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"North"},"geometry":{"type":"Polygon","coordinates":[[[10,53],[12,53],[12,55],[10,55],[10,53]]]}}]})");
    }

    /// A table of @p rows rows without geometry: n and its square.
    QString numbers(int rows) const
    {
        QByteArray text = "n,square\n";
        for (int i = 0; i < rows; ++i)
            text += QByteArray::number(i) + ',' + QByteArray::number(qint64(i) * i) + '\n';
        write(u"numbers.csvt"_s, "Integer,Integer64\n");
        return write(u"numbers.csv"_s, text);
    }

    /// A new native database called @p alias, and its file likewise.
    CTxDataSource *createNative(CTxWorkspace &workspace, const QString &alias) const
    {
        CTxDataSource *made =
            workspace.GetDataSources().Create(folder.filePath(alias + u".tdb"_s), alias, CTxDataSourceStorage::Native);
        EXPECT_NE(made, nullptr);
        return made;
    }

    /// The first dataset of the datasource called @p alias, as a vector dataset.
    static CDatasetVector *vector(CTxWorkspace &workspace, const QString &alias)
    {
        CTxDataSource *source = workspace.GetDataSources().find(alias);
        CTxDataset *dataset = source ? source->GetDatasetAt(0) : nullptr;
        return dataset && dataset->IsVector() ? static_cast<CDatasetVector *>(dataset) : nullptr;
    }

    QTemporaryDir folder;
    ScriptedPrompts prompts;
    std::unique_ptr<CTdProfileFile> profile;
};

/// A main window on the screen, with the data open that a test names.
class WindowFixture : public DesktopFixture
{
protected:
    WindowFixture() : window(std::make_unique<MainWindow>(prompts, *profile))
    {
        window->resize(1280, 800);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    CTxWorkspace &workspace() const { return window->document().workspace(); }
    DocumentArea &area() const { return window->documentArea(); }
    CWorkspaceBarTree *tree() const { return window->workspacePane().tree(); }
    QTreeWidgetItem *item(const QString &name, const QString &alias,
                          CTdOleDataNode::ItemType kind = CTdOleDataNode::ItemDataset) const
    {
        return tree()->FindHTreeItem(name, alias, kind, 0);
    }
    /// Makes the dataset the tree's only selected and its current item.
    void select(const QString &name, const QString &alias) const
    {
        QTreeWidgetItem *dataset = item(name, alias);
        ASSERT_TRUE(dataset) << qPrintable(name);
        tree()->setCurrentItem(dataset, 0, QItemSelectionModel::ClearAndSelect);
    }

    QAction *action(Actions::Id id) const { return window->actions()[id]; }

    /// Lets @p use the dialog that @p open opens; it is closed afterwards.
    template<class Dialog, class Open, class Use>
    void inDialog(Open &&open, Use &&use)
    {
        bool used = false;
        QTimer poll;
        poll.setInterval(5);
        QObject::connect(&poll, &QTimer::timeout, window.get(), [&] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (!dialog || used)
                return;
            used = true;
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog));
            EXPECT_TRUE(QTest::qWaitFor([&] { return dialog->isAncestorOf(QApplication::focusWidget()); }));
            use(*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << "the dialog did not close";
                dialog->reject();
            }
        });
        poll.start();
        open();
        EXPECT_TRUE(used) << "no dialog came";
    }

    static QPushButton *ok(QDialog &dialog)
    {
        return dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    }

    static void key(QDialog &dialog, int code, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(dialog.windowHandle(), static_cast<Qt::Key>(code), modifiers);
    }

    static void type(const QString &text) { QTest::keyClicks(QApplication::focusWidget(), text); }

    std::unique_ptr<MainWindow> window;
};
