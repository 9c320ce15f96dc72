#include "AttributeTable.h"
#include "DesktopFixture.h"
#include "RecordTableModel.h"
#include "engine/map/TxWorkspace.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QTest>

namespace {

class AttributeTableWindow : public DesktopFixture
{
protected:
    AttributeTableWindow()
    {
        workspace.GetDataSources().Open(towns());
        dataset = vector(workspace, u"towns"_s);
        table = std::make_unique<AttributeTable>();
        EXPECT_TRUE(table->setDataset(dataset)) << table->error().toStdString();
        table->resize(700, 400);
        table->show();
        filter = table->findChild<QLineEdit *>();
        for (QLabel *label : table->findChildren<QLabel *>())
            if (label->accessibleName() == u"Filter error"_s)
                error = label;
        while (!table->model()->isComplete())
            QCoreApplication::processEvents();
    }

    int rows() const { return table->model()->rowCount(); }

    CTxWorkspace workspace;
    CDatasetVector *dataset = nullptr;
    std::unique_ptr<AttributeTable> table;
    QLineEdit *filter = nullptr;
    QLabel *error = nullptr;
};

TEST_F(AttributeTableWindow, FiltersByWhatIsTyped)
{
    ASSERT_NE(error, nullptr);
    QTest::keyClicks(filter, u"name LIKE 'S%'"_s);
    EXPECT_EQ(rows(), 3) << "nothing is read while the user types";
    QTest::keyClick(filter, Qt::Key_Return);
    EXPECT_EQ(rows(), 1);
    EXPECT_FALSE(error->isVisible());

    QTest::keyClicks(filter, u" AND nonsense("_s);
    QTest::keyClick(filter, Qt::Key_Return);
    EXPECT_TRUE(error->isVisible());
    EXPECT_FALSE(error->text().isEmpty());
    EXPECT_EQ(rows(), 1) << "the rows stay as they were";

    filter->clear();
    EXPECT_EQ(rows(), 3);
    EXPECT_FALSE(error->isVisible());
}

TEST_F(AttributeTableWindow, AClickOnATitleOrders)
{
    QHeaderView *header = table->view()->horizontalHeader();
    int name = 0;
    while (table->model()->headerData(name, Qt::Horizontal).toString() != u"name"_s)
        ++name;
    const auto click = [&] {
        const QPoint place(header->sectionViewportPosition(name) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
    };
    const auto first = [&] { return table->model()->index(0, name).data().toString(); };
    click();
    EXPECT_EQ(first(), "Havn");
    click();
    EXPECT_EQ(first(), "Sund");
    click();
    EXPECT_EQ(header->sortIndicatorSection(), -1) << "the third click gives the dataset's order back";
    EXPECT_EQ(first(), "Havn");
}

TEST_F(AttributeTableWindow, CopiesTheSelectionWithTabs)
{
    table->view()->selectAll();
    table->view()->setFocus();
    table->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(table.get()));
    QTest::keyClick(table->view(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].count(u'\t'), table->model()->columnCount() - 1);
    EXPECT_TRUE(lines[0].contains(u"Havn"_s));
    EXPECT_FALSE(lines[1].contains(u"NULL"_s)) << "a null is copied as nothing";
}

} // namespace
