#include "RecordTableModel.h"
#include "DesktopFixture.h"
#include "engine/map/TxWorkspace.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QFont>
#include <QSignalSpy>

#include <functional>
#include <utility>

namespace {

class RecordTable : public DesktopFixture
{
protected:
    CDatasetVector *open(const QString &path)
    {
        CTxDataSource *source = workspace.GetDataSources().Open(path);
        EXPECT_NE(source, nullptr);
        return source ? vector(workspace, source->GetAlias()) : nullptr;
    }

    /// The texts of a column, top to bottom.
    QStringList column(const QString &name) const
    {
        QStringList texts;
        for (int c = 0; c < model.columnCount(); ++c)
            if (model.headerData(c, Qt::Horizontal).toString() == name)
                for (int r = 0; r < model.rowCount(); ++r)
                    texts << model.index(r, c).data().toString();
        return texts;
    }

    int columnOf(const QString &name) const
    {
        for (int c = 0; c < model.columnCount(); ++c)
            if (model.headerData(c, Qt::Horizontal).toString() == name)
                return c;
        return -1;
    }

    void finishWalk()
    {
        while (!model.isComplete())
            QCoreApplication::processEvents();
    }

    CTxWorkspace workspace;
    RecordTableModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(RecordTable, ShowsRecordsAndTellsNullFromText)
{
    ASSERT_TRUE(model.setDataset(open(towns())));
    finishWalk();
    EXPECT_EQ(column(u"name"_s), (QStringList{"Havn", "Midby", "Sund"}));
    EXPECT_EQ(column(u"population"_s), (QStringList{"18250", "NULL", "9120"}));
    const QModelIndex null = model.index(1, columnOf(u"population"_s));
    EXPECT_TRUE(null.data(Qt::FontRole).value<QFont>().italic());
    EXPECT_TRUE(model.fullText(null).isEmpty());
    EXPECT_FALSE(model.index(0, 0).data(Qt::FontRole).isValid());
}

TEST_F(RecordTable, GivesItsCursorsBack)
{
    CDatasetVector *dataset = open(towns());
    ASSERT_TRUE(model.setDataset(dataset));
    EXPECT_GT(dataset->GetRecordsetCount(), 0);
    model.release();
    EXPECT_EQ(dataset->GetRecordsetCount(), 0);
    EXPECT_EQ(model.rowCount(), 0);
    {
        RecordTableModel other;
        ASSERT_TRUE(other.setDataset(dataset));
    }
    EXPECT_EQ(dataset->GetRecordsetCount(), 0);
    EXPECT_TRUE(dataset->Close());
}

TEST_F(RecordTable, NoticesADatasetThatGoesWithoutAWord)
{
    constexpr int rows = 20000;
    const std::pair<const char *, std::function<void(CTxDataSources &, CTxDataset *)>> ends[] = {
        {"closed", [](CTxDataSources &, CTxDataset *dataset) { dataset->Close(); }},
        {"closed and opened", [](CTxDataSources &, CTxDataset *dataset) { dataset->Close() && dataset->Open(); }},
        {"datasource closed", [](CTxDataSources &all, CTxDataset *) { all.CloseAll(); }}};
    for (const auto &[name, end] : ends) {
        SCOPED_TRACE(name);
        CDatasetVector *dataset = open(numbers(rows));
        ASSERT_TRUE(model.setDataset(dataset));
        ASSERT_FALSE(model.isComplete()) << "in the middle of its walk";
        EXPECT_EQ(model.index(0, 1).data().toString(), u"0"_s);
        end(workspace.GetDataSources(), dataset);
        QApplication::processEvents(); // a slice of the walk
        EXPECT_TRUE(model.isComplete());
        for (int row = 0; row < model.rowCount(); row += 100) // as a view that scrolls
            model.index(row, 1).data();
        model.sort(0);
        model.setFilter(u"n > 3"_s);
        EXPECT_EQ(model.refresh(), QByteArray(name) == "closed and opened") << qPrintable(model.error());
        EXPECT_NE(model.error().isEmpty(), !model.refresh());
        model.release();
        workspace.GetDataSources().CloseAll();
    }
}

TEST_F(RecordTable, ReadsManyRecordsBitByBit)
{
    constexpr int rows = 60000;
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    ASSERT_TRUE(model.setDataset(open(numbers(rows))));
    EXPECT_GT(model.rowCount(), 0) << "the first rows are there at once";
    finishWalk();
    ASSERT_EQ(model.rowCount(), rows);
    EXPECT_LT(inserted.count(), 20) << "views are not told of every row";
    const int square = columnOf(u"square"_s);
    for (const int row : {0, 1, 255, 256, 46341, rows - 1, 3}) // 46341² does not fit into 31 bits
        EXPECT_EQ(model.index(row, square).data().toString(), QString::number(qint64(row) * row));
    EXPECT_EQ(model.headerData(rows - 1, Qt::Vertical).toInt(), rows);
}

TEST_F(RecordTable, ToolTipsTellWhatACellDoesNotShow)
{
    const QString text = u"<b>"_s + QString(500, QLatin1Char('x'));
    const QString path = write(u"long.geojson"_s, uR"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"t":"%1","d":0.000000000125},"geometry":null}]})"_s.arg(text)
                                                      .toUtf8());
    ASSERT_TRUE(model.setDataset(open(path)));
    const QModelIndex cell = model.index(0, columnOf(u"t"_s));
    EXPECT_LT(cell.data().toString().size(), 400) << "a cell shows the beginning";
    EXPECT_EQ(model.fullText(cell), text);
    EXPECT_TRUE(cell.data(Qt::ToolTipRole).toString().contains(u"&lt;b&gt;xxx"_s));
    const QModelIndex number = model.index(0, columnOf(u"d"_s));
    EXPECT_EQ(number.data().toString(), "0.00000000");
    EXPECT_EQ(number.data(Qt::ToolTipRole).toString().toDouble(), 0.000000000125);
}

} // namespace
