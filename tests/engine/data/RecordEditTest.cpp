#include "Rows.h"
#include "engine/data/DataFixture.h"

#include "engine/geometry/GeoCompound.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"

#include <limits>

namespace {

using Info = CElemDatasetInfo;
using Field = CTxFieldInfo;
using V = CTxVariant;

constexpr double infinity = std::numeric_limits<double>::infinity();

struct ValueRow
{
    const char *name;
    Field::Type type;
    qint32 size;
    V value;
    V expected; ///< what is read back; Empty when the value is refused
};

using FieldValue = WithRows<DataFixture, ValueRow>;

/// The value goes in and out of a native database, and what is refused leaves the record open with what it held.
TEST_P(FieldValue, IsConvertedOrRefused)
{
    const ValueRow &row = GetParam();
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(
        definition("Data", Info::Tabular, {Field("F", row.type, row.size), Field("Other", Field::Long)})))
        << lastError();
    {
        RecordsetPtr records = query(vector(source, "Data"));
        ASSERT_TRUE(records->AddNew() && records->SetFieldValue("other", V(7))) << lastError();
        const int errors = TxGetErrorMsgObj().GetErrorCount();
        const bool done = records->SetFieldValue("F", row.value);
        EXPECT_EQ(done, row.expected.GetType() != V::Empty) << lastError();
        EXPECT_EQ(TxGetErrorMsgObj().GetErrorCount() > errors, !done);
        ASSERT_TRUE(records->Update()) << lastError();
        EXPECT_EQ(records->GetID(), 1);
        EXPECT_EQ(textOf(*records, "Other"), "7");
    }
    RecordsetPtr records = query(vector(reopen(), "Data"));
    EXPECT_EQ(fieldOf(*records, "F").GetType(), row.type);
    V stored;
    ASSERT_TRUE(records->GetFieldValue("F", stored));
    const V expected = row.expected.GetType() == V::Empty ? V::null() : row.expected;
    EXPECT_EQ(stored.GetType(), expected.GetType());
    EXPECT_EQ(stored.toText().toStdString(), expected.toText().toStdString());
    EXPECT_EQ(stored.toBytes(), expected.toBytes());
}

V text(const char *utf8)
{
    return V(QString::fromUtf8(utf8));
}

V moment(int year, int month, int day, int hour, int offset = 0)
{
    return V(QDateTime(QDate(year, month, day), QTime(hour, 0, 15), Qt::OffsetFromUTC, offset));
}

const V refused;

INSTANTIATE_TEST_SUITE_P(
    Values, FieldValue,
    testing::Values(
        ValueRow{"booleanOfNumber", Field::Boolean, 0, V(5), V(true)},
        ValueRow{"booleanOfText", Field::Boolean, 0, text(" False "), V(false)},

        ValueRow{"byteMaximum", Field::Byte, 0, V(255), V(quint8(255))},

        ValueRow{"byteNegative", Field::Byte, 0, V(-1), refused},
        ValueRow{"shortMinimum", Field::Short, 0, V(-32768), V(qint16(-32768))},

        ValueRow{"longOfFraction", Field::Long, 0, V(1.5), refused},

        ValueRow{"longOfTextWithTail", Field::Long, 0, text("42 m"), refused},

        ValueRow{"longOfHugeUnsigned", Field::Long, 0, V::fromInteger(V::UnsignedInt64, -1), refused},
        ValueRow{"longOfBytes", Field::Long, 0, V(QByteArray("1")), refused},
        ValueRow{"singleKeepsItsDigits", Field::Single, 0, V(0.1), V(0.1F)},
        ValueRow{"singleTooLarge", Field::Single, 0, V(1e39), refused},
        ValueRow{"doubleOfComma", Field::Double, 0, text("1,5"), refused},

        ValueRow{"doubleInfinite", Field::Double, 0, V(infinity), refused},

        ValueRow{"currency", Field::Currency, 0, V::fromInteger(V::Currency, 123456789012345),
                 V::fromInteger(V::Currency, 123456789012345)},
        ValueRow{"currencyTooLarge", Field::Currency, 0, V(1e12), refused},

        ValueRow{"numericTooLong", Field::Numeric, 6, V(-123456), refused},
        ValueRow{"textInBound", Field::Text, 3, text("äö\xF0\x9F\x8C\x8D"), text("äö\xF0\x9F\x8C\x8D")},
        ValueRow{"textTooLong", Field::Text, 3, text("äöüß"), refused},

        ValueRow{"textOfRightToLeft", Field::Text, 0, text("\xE2\x80\xAEطرق'\";--"), text("\xE2\x80\xAEطرق'\";--")},
        ValueRow{"textWithZero", Field::Text, 0, V(QString(QChar(u'\0'))), refused},
        ValueRow{"textEmptyIsNotNull", Field::Text, 5, V(QStringLiteral("")), text("")},
        ValueRow{"memoLong", Field::Memo, 40, V(QString(100000, u'm')), V(QString(100000, u'm'))},

        ValueRow{"dateUtc", Field::Date, 0, moment(2024, 2, 29, 12), moment(2024, 2, 29, 12)},
        ValueRow{"dateWithZone", Field::Date, 0, moment(2024, 2, 29, 12, 18000), moment(2024, 2, 29, 7)},

        ValueRow{"timeOfText", Field::Time, 0, text("23:59:58"),
                 V(QDateTime(QDate(1899, 12, 30), QTime(23, 59, 58), Qt::UTC))},

        ValueRow{"dateOfNonsense", Field::Date, 0, text("2023-02-29"), refused},

        ValueRow{"binaryTooLong", Field::Binary, 3, V(QByteArray("\0\1\2\3", 4)), refused},
        ValueRow{"binaryEmpty", Field::LongBinary, 0, V(QByteArray("")), V(QByteArray(""))},
        ValueRow{"booleanOfWord", Field::Boolean, 0, text("perhaps"), refused},
        ValueRow{"byteTooLarge", Field::Byte, 0, V(256), refused},
        ValueRow{"longOfWholeReal", Field::Long, 0, V(-3.0), V(-3)},
        ValueRow{"numericFits", Field::Numeric, 6, V(123456), V(123456.0)},
        ValueRow{"textOfNumber", Field::Text, 10, V(-1.25), text("-1.25")},
        ValueRow{"timeOfNonsense", Field::Time, 0, text("25:00"), refused},
        ValueRow{"binaryInBound", Field::Binary, 4, V(QByteArray("\0\1\2\3", 4)), V(QByteArray("\0\1\2\3", 4))},
        ValueRow{"nullOfNull", Field::Long, 0, V::null(), V::null()}),
    rowNames(&ValueRow::name));

using RecordEdit = DataFixture;

TEST_F(RecordEdit, AddsChangesAndDeletes)
{
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    RecordsetPtr records = query(towns);
    EXPECT_TRUE(records->IsEOF());
    for (int i = 1; i <= 5; ++i) {
        const CGeoPoint place(i, 10.0 * i);
        ASSERT_TRUE(addRecord(*records, {{"Size", i}}, &place)) << lastError();
        EXPECT_EQ(records->GetID(), i);
    }
    EXPECT_EQ(towns->GetRecordCount(), 5);
    EXPECT_EQ(towns->GetBounds(), CRect2D(1, 10, 5, 50));

    records = query(towns, "Size >= 2");
    EXPECT_EQ(records->GetRecordCount(), 4);
    ASSERT_TRUE(records->Edit() && records->SetFieldValue("Name", V(QStringLiteral("two"))));
    EXPECT_EQ(textOf(*records, "Name"), "") << "not before Update()";
    ASSERT_TRUE(records->Update()) << lastError();
    EXPECT_EQ(textOf(*records, "Name"), "two");
    ASSERT_TRUE(records->MoveNext());
    EXPECT_EQ(records->GetID(), 3);
    ASSERT_TRUE(records->Delete()) << lastError();
    EXPECT_FALSE(records->Delete()) << "it has gone already";
    EXPECT_EQ(records->GetID(), -1);
    ASSERT_TRUE(records->MoveNext());
    EXPECT_EQ(records->GetID(), 4);
    ASSERT_TRUE(records->Edit() && records->SetFieldValue("Size", V(99)));
    records->CancelUpdate();
    EXPECT_FALSE(records->Update()) << "nothing is open for change";
    EXPECT_EQ(textOf(*records, "Size"), "4");
    records.reset();

    records = query(vector(reopen(), "Towns"));
    std::string seen;
    for (; !records->IsEOF(); records->MoveNext())
        seen += textOf(*records, "TxID") + textOf(*records, "Name") + textOf(*records, "Size") + " ";
    EXPECT_EQ(seen, "11 2two2 44 55 ");
}

TEST_F(RecordEdit, RefusesWhatCannotBeWritten)
{
    CTxDataSource *source = create();
    RecordsetPtr records = query(makeVector(source, "Towns"));
    const CGeoPoint place(1, 2);
    EXPECT_FALSE(records->SetFieldValue("Size", V(1))) << "no record is open for change";
    EXPECT_FALSE(records->SetGeometry(&place));
    EXPECT_FALSE(records->Update());
    EXPECT_FALSE(records->Edit()) << "there is no record";
    EXPECT_FALSE(records->Delete());
    ASSERT_TRUE(records->AddNew());
    for (const QString &name : {QString("TxID"), QString("Nothing"), QString(10000, u'n')})
        EXPECT_FALSE(records->SetFieldValue(name, V(9))) << name.left(20).toStdString();
    for (const int index : {-1, 1000})
        EXPECT_FALSE(records->SetFieldValue(index, V(9))) << index;
    EXPECT_TRUE(records->SetFieldValue("txuserid", V(9))) << lastError();
    ASSERT_TRUE(records->Update()) << lastError();
    EXPECT_EQ(textOf(*records, "TxUserID"), "9");
}

TEST_F(RecordEdit, KeepsMeasuresOfTheGeometry)
{
    const CPoint2D corners[] = {{0, 0}, {30, 0}, {30, 40}, {0, 40}};
    CGeoLine line;
    line.MakePolyline(corners, 4);
    CGeoRegion region;
    region.MakePolygon(corners, 4);
    CTxDataSource *source = create();
    RecordsetPtr roads = query(makeVector(source, "Roads", Info::Line));
    ASSERT_TRUE(addRecord(*roads, {}, &line)) << lastError();
    EXPECT_EQ(textOf(*roads, "TxLength"), "100");
    RecordsetPtr fields = query(makeVector(source, "Fields", Info::Region));
    ASSERT_TRUE(addRecord(*fields, {}, &region)) << lastError();
    EXPECT_EQ(textOf(*fields, "TxArea"), "1200");
    EXPECT_EQ(textOf(*fields, "TxPerimeter"), "140");
    EXPECT_FALSE(fields->Edit() && fields->SetFieldValue("TxArea", V(1.0)));
    ASSERT_TRUE(fields->SetGeometry(nullptr) && fields->Update()) << lastError();
    EXPECT_EQ(textOf(*fields, "TxArea"), "");
    EXPECT_FALSE(geometryOf(*fields));
}

struct GeometryRow
{
    Info::Type kind;
    const char *fits; ///< a letter for each element that the dataset takes: Point, Line, Region, Text, Compound
};

using KindGeometry = WithRows<DataFixture, GeometryRow>;

TEST_P(KindGeometry, IsTakenOrRefusedByTheKind)
{
    const CPoint2D corners[] = {{0, 0}, {30, 0}, {30, 40}};
    CGeoLine line;
    line.MakePolyline(corners, 3);
    CGeoRegion region;
    region.MakePolygon(corners, 3);
    const CGeoPoint point(1, 2);
    const CGeoText label(CPoint2D(1, 2), "a");
    CGeoCompound mixed;
    mixed.AddGeometry(point.Clone());
    mixed.AddGeometry(line.Clone());
    const std::pair<char, const CElemGeometry *> elements[] = {
        {'P', &point}, {'L', &line}, {'R', &region}, {'T', &label}, {'C', &mixed}};

    RecordsetPtr records = query(makeVector(create(), "Data", GetParam().kind));
    std::string taken;
    for (const auto &[letter, element] : elements) {
        ASSERT_TRUE(records->AddNew());
        if (!records->SetGeometry(element))
            continue;
        taken += letter;
        ASSERT_TRUE(records->Update()) << lastError();
        const std::unique_ptr<CElemGeometry> stored = geometryOf(*records);
        ASSERT_TRUE(stored);
        EXPECT_EQ(stored->GetBounds(), element->GetBounds());
        EXPECT_EQ(stored->GetType() % 100, element->GetType() % 100) << letter;
    }
    EXPECT_EQ(taken, GetParam().fits);
}

INSTANTIATE_TEST_SUITE_P(Kinds, KindGeometry,
                         testing::Values(GeometryRow{Info::Tabular, ""}, GeometryRow{Info::Point, "P"},
                                         GeometryRow{Info::Line, "L"}, GeometryRow{Info::Route, "L"},
                                         GeometryRow{Info::Region3D, "R"}, GeometryRow{Info::TIN, "R"},
                                         GeometryRow{Info::Text, "PT"}, GeometryRow{Info::Text3D, "PT"},
                                         GeometryRow{Info::CAD, "PLRTC"}));

TEST_F(RecordEdit, TextsAreGeometriesWhateverIsAskedFor)
{
    CTxDataSource *source = create();
    RecordsetPtr records = query(makeVector(source, "Labels", Info::Text3D));
    CGeoText label(CPoint2D(1, 2), "Zwei\nZeilen", 30, 2.5);
    label.SetAnchor(CGeoPoint(1, 2, 3));
    ASSERT_TRUE(addRecord(*records, {}, &label)) << lastError();
    EXPECT_FALSE(records->Edit() && records->SetFieldValue("TxText", V(QStringLiteral("x"))));
    records.reset();

    CDatasetVector *labels = vector(reopen(), "Labels");
    for (const QStringList &fields : {QStringList(), QStringList{"Name"}}) {
        CTxQueryDef def;
        def.fields = fields;
        def.options = fields.isEmpty() ? CTxQueryDef::SkipAttributes : CTxQueryDef::NoOption;
        const RecordsetPtr found = query(labels, def);
        EXPECT_EQ(found->GetFieldCount(), 1 + fields.size());
        EXPECT_EQ(found->FindField("TxText"), -1);
        const std::unique_ptr<CElemGeometry> geometry = geometryOf(*found);
        const auto *text = dynamic_cast<CGeoText *>(geometry.get());
        ASSERT_TRUE(text);
        EXPECT_EQ(text->GetType(), CElemGeometry::Text3D);
        EXPECT_EQ(text->GetText(), "Zwei\nZeilen");
        EXPECT_EQ(text->GetAngle(), 30);
        EXPECT_EQ(text->GetHeight(), 2.5);
        EXPECT_EQ(text->GetAnchor().GetZ(), 3);
    }

    // A text within a compound would lose what it says.
    CGeoCompound outer;
    auto inner = std::make_unique<CGeoCompound>();
    inner->AddGeometry(label.Clone());
    outer.AddGeometry(std::move(inner));
    RecordsetPtr drawing = query(makeVector(sources.find("db"), "Drawing", Info::CAD));
    ASSERT_TRUE(drawing->AddNew());
    EXPECT_FALSE(drawing->SetGeometry(&outer));
}

TEST_F(RecordEdit, FieldsAreAddedWholeOrNotAtAll)
{
    CTxDataSource *source = create();
    CDatasetVector *towns = makeVector(source, "Towns");
    {
        RecordsetPtr records = query(towns);
        ASSERT_TRUE(addRecord(*records));
        EXPECT_FALSE(towns->CreateField("Late", Field::Long, 0, 0)) << "a recordset is open";
    }
    const int before = towns->GetFieldCount();
    CTxFieldInfos bad = {Field("Good", Field::Long), Field("Bad", 77)};
    EXPECT_FALSE(towns->CreateFields(bad));
    for (const char *name : {"", "Tx ID", "TxID", "TxArea", "select", "size", "9a", "a-b", "a\"b"})
        EXPECT_FALSE(towns->CreateField(name, Field::Long, 0, 0)) << name;
    EXPECT_EQ(towns->GetFieldCount(), before);

    Field amount("Amount", Field::Currency);
    amount.SetCaption("Amount of money");
    amount.SetDefault("1.5");
    ASSERT_TRUE(towns->CreateFields({amount, Field("名前", Field::Character, 8)})) << lastError();
    towns = vector(reopen(), "Towns");
    ASSERT_EQ(towns->GetFieldCount(), before + 2);
    EXPECT_EQ(fieldOf(*towns, "Amount"), amount);
    EXPECT_EQ(fieldOf(*towns, "名前").GetType(), Field::Character);
    EXPECT_EQ(fieldOf(*towns, "名前").GetSize(), 8);
    RecordsetPtr records = query(towns);
    ASSERT_TRUE(addRecord(*records)) << lastError();
    EXPECT_EQ(textOf(*records, "Amount"), V::fromInteger(V::Currency, 15000).toText().toStdString());
}

TEST_F(RecordEdit, RequiredAndUniqueFieldsHold)
{
    CTxDataSource *source = create();
    ASSERT_TRUE(source->CreateDataset(
        definition("Codes", Info::Tabular, {Field("Code", Field::Text, 4, Field::Required | Field::Unique)})))
        << lastError();
    RecordsetPtr records = query(vector(source, "Codes"));
    ASSERT_TRUE(records->AddNew());
    EXPECT_FALSE(records->SetFieldValue("Code", V::null()));
    EXPECT_FALSE(records->Update()) << "required, but never given";
    ASSERT_TRUE(records->SetFieldValue("Code", V(QStringLiteral("A"))));
    ASSERT_TRUE(records->Update()) << "the record stayed open: " << lastError();
    ASSERT_TRUE(records->AddNew() && records->SetFieldValue("Code", V(QStringLiteral("A"))));
    EXPECT_FALSE(records->Update());
    ASSERT_TRUE(records->SetFieldValue("Code", V(QStringLiteral("B"))) && records->Update()) << lastError();
    EXPECT_EQ(records->GetID(), 2);
}

} // namespace
