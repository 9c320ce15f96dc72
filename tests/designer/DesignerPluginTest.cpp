#include "ui_ControlsForm.h"

#include <QBuffer>
#include <QFile>
#include <QIcon>
#include <QPluginLoader>
#include <QTest>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiTools/QUiLoader>

#include <gtest/gtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A loader of forms that looks for plugins in ours alone, and not in those of the machine.
struct Loader : QUiLoader
{
    Loader()
    {
        clearPluginPaths();
        addPluginPath(QStringLiteral(PLUGIN_FOLDER));
    }
    std::unique_ptr<QWidget> loaded(const QByteArray &form)
    {
        QByteArray bytes = form;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        return std::unique_ptr<QWidget>(load(&buffer));
    }
};

TEST(DesignerPlugin, OffersEveryControlByItsName)
{
    QPluginLoader plugin(QStringLiteral(PLUGIN_FILE));
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(plugin.instance());
    ASSERT_TRUE(collection) << plugin.errorString().toStdString();
    ASSERT_FALSE(collection->customWidgets().isEmpty());
    Loader loader;
    for (QDesignerCustomWidgetInterface *entry : collection->customWidgets()) {
        const std::string name = entry->name().toStdString();
        QWidget parent;
        QWidget *control = entry->createWidget(&parent);
        ASSERT_TRUE(control) << name;
        EXPECT_EQ(control->parentWidget(), &parent) << name;
        EXPECT_EQ(control->metaObject()->className(), name);
        EXPECT_FALSE(entry->icon().pixmap(16, 16).isNull()) << name;
        EXPECT_TRUE(QFile::exists(QStringLiteral(TD_SOURCE_DIR "/src/") + entry->includeFile())) << name;
        parent.show();
        parent.grab();
        // What is dropped into a form takes the values it starts with.
        const QByteArray form = entry->domXml().toUtf8().replace("language=\"c++\"", "version=\"4.0\"");
        const std::unique_ptr<QWidget> dropped = loader.loaded(form);
        ASSERT_TRUE(dropped) << name << ": " << loader.errorString().toStdString();
        EXPECT_EQ(dropped->metaObject()->className(), name);
        EXPECT_TRUE(dropped->dynamicPropertyNames().isEmpty()) << name << " starts with a property it does not have";
    }
}

void expectFormIsAsDrawn(const QWidget &form)
{
    const auto *angle = form.findChild<CTdDMSMakEdit *>(u"angleEdit"_s);
    const auto *number = form.findChild<CTdNumEdit *>(u"numberEdit"_s);
    const auto *slider = form.findChild<CTdEditSlider *>(u"editSlider"_s);
    const auto *button = form.findChild<CTdTriangleButton *>(u"triangleButton"_s);
    const auto *list = form.findChild<CListCtrlEx *>(u"reportList"_s);
    ASSERT_TRUE(angle && number && slider && button && list);
    EXPECT_EQ(angle->text().toStdString(), "- 45:30: 0.0000");
    EXPECT_EQ(angle->GetPrompt(), u'.');
    EXPECT_EQ(angle->GetEditType(), CTdDMSMakEdit::Range180);
    EXPECT_EQ(number->GetEditMode(), CTdNumEdit::WholeNumbers);
    EXPECT_EQ(number->GetMinimum(), 0.0);
    EXPECT_EQ(number->GetMaximum(), 2147483647.0);
    EXPECT_EQ(slider->GetPos(), 7);
    EXPECT_EQ(slider->GetMax(), 20);
    EXPECT_TRUE(slider->IsEnabledX());
    EXPECT_EQ(button->GetDirection(), Qt::LeftArrow);
    EXPECT_EQ(list->GetColumnTitles(), (QStringList{u"Name"_s, u"Type"_s}));
}

TEST(DesignerPlugin, FormsComeOutAsDrawnCompiledAndLoaded)
{
    QWidget compiled;
    Ui::ControlsForm form;
    form.setupUi(&compiled);
    expectFormIsAsDrawn(compiled);
    form.reportList->InsertItems(0, {{u"Area"_s, u"Double"_s}});
    form.retranslateUi(&compiled); // another language does not clear what was entered
    expectFormIsAsDrawn(compiled);
    EXPECT_EQ(form.reportList->GetItemText(0, 1), u"Double"_s);

    QFile file(QStringLiteral(TD_SOURCE_DIR "/tests/designer/ControlsForm.ui"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    Loader loader;
    const std::unique_ptr<QWidget> loaded = loader.loaded(file.readAll());
    ASSERT_TRUE(loaded) << loader.errorString().toStdString();
    expectFormIsAsDrawn(*loaded);
}

} // namespace
