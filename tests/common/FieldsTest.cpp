#include "common/HostWindow.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxVariant.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;
using Info = CTxFieldInfo;

/// Two native databases, "from" and "to", with a dataset each; the host listens.
class Fields : public testing::Test
{
protected:
    void SetUp() override
    {
        m_source = make(u"from"_s, {{u"Name"_s, Info::Text, 20}, {u"Size"_s, Info::Long}, {u"Height"_s, Info::Double}});
        m_target = make(u"to"_s, {{u"name"_s, Info::Text, 20}, {u"Height"_s, Info::Long}});
        ASSERT_TRUE(m_source && m_target);
    }

    CDatasetVector *make(const QString &alias, const CTxFieldInfos &fields)
    {
        CTxDataSource *source =
            m_sources.Create(m_folder.filePath(alias + u".tdb"_s), alias, CTxDataSourceStorage::Native);
        CTxDatasetDef def;
        def.name = u"Towns"_s;
        def.type = CElemDatasetInfo::Tabular;
        def.fields = fields;
        auto *made = source ? dynamic_cast<CDatasetVector *>(source->CreateDataset(def)) : nullptr;
        return made && made->Open() ? made : nullptr;
    }

    static QStringList names(const CDatasetVector &dataset)
    {
        QStringList all;
        CTxFieldInfo info;
        for (int i = 0; dataset.GetFieldInfo(i, info); ++i)
            all.append(info.GetName());
        return all;
    }

    /// The host was told exactly @p count failures since the last call, each with the text of its own.
    void expectReports(int count)
    {
        EXPECT_EQ(m_host.m_messages.size(), count);
        EXPECT_EQ(m_host.m_messages.count(1124), count);
        EXPECT_EQ(m_host.m_numbers.count(0), count);
        for (const QString &text : std::as_const(m_host.m_texts))
            EXPECT_FALSE(text.isEmpty() || text == staleText) << text.toStdString();
        m_host.m_messages.clear();
        m_host.m_numbers.clear();
        m_host.m_texts.clear();
        TxGetErrorMsgObj().SetErrorMessage(staleText);
    }

    static inline const QString staleText = u"an error of long ago"_s;
    HostWindow m_host;
    QTemporaryDir m_folder;
    CTxDataSources m_sources;
    CDatasetVector *m_source = nullptr;
    CDatasetVector *m_target = nullptr;
};

TEST(FieldNames, SystemNamesInAnyLetterCase)
{
    for (const char *name : {"TXUSERID", "txuserid", "TxUserID", "TxID", "txid", "TXAREA", "TxLibTileName"})
        EXPECT_TRUE(Methods::IsSysFieldName(QString::fromUtf8(name))) << name;
    for (const char *name : {"", "Tx", "TxIDs", "TXUSERID ", "UserID", "Name"})
        EXPECT_FALSE(Methods::IsSysFieldName(QString::fromUtf8(name))) << name;
}

TEST(FieldNames, NumericAreSixTypesAlone)
{
    QList<int> numeric;
    for (qint16 type = -1; type < 200; ++type) {
        if (Methods::IsNumericField(CTxFieldInfo(u"F"_s, type)))
            numeric.append(type);
    }
    EXPECT_EQ(numeric, QList<int>({3, 4, 6, 7, 19, 21}));
}

TEST_F(Fields, NamesForNewFieldsAndDatasets)
{
    for (const QString &name : {u"txtra"_s, u"TXUSERID"_s, u"tX"_s, u"Name"_s, u"SELECT"_s, u"a b"_s, QString()})
        EXPECT_FALSE(Methods::IsAvailableFieldName(m_source, name)) << name.toStdString();
    for (const QString &name : {u"Text"_s, u"T"_s, u"aTx"_s, u"Größe"_s})
        EXPECT_TRUE(Methods::IsAvailableFieldName(m_source, name)) << name.toStdString();
    EXPECT_FALSE(Methods::IsAvailableFieldName(nullptr, u"Text"_s));
    EXPECT_TRUE(Methods::IsAvailableDatasetName(m_source->GetDataSource(), u"Villages"_s));
    EXPECT_FALSE(Methods::IsAvailableDatasetName(m_source->GetDataSource(), u"TOWNS"_s));
    EXPECT_FALSE(Methods::IsAvailableDatasetName(nullptr, u"Villages"_s));
    expectReports(0);
}

TEST_F(Fields, CopyFieldInfoMatchesLetterCaseAndIsAlwaysTrue)
{
    EXPECT_TRUE(Methods::CopyFieldInfo(m_source, m_target));
    EXPECT_EQ(names(*m_target), QStringList({u"TxID"_s, u"TxUserID"_s, u"name"_s, u"Height"_s, u"Size"_s}));
    expectReports(1); // "Name", which the engine does not tell from "name"
    EXPECT_TRUE(Methods::CopyFieldInfo(m_source, m_source) && Methods::CopyFieldInfo(nullptr, m_target) &&
                Methods::CopyFieldInfo(m_source, nullptr));
    expectReports(0);
}

TEST_F(Fields, CopyFieldInfoOfManyTellsEachThatFailsAndKeepsTheOrder)
{
    CTxFieldInfos many;
    QStringList expected = names(*m_target);
    for (int i = 0; i < 300; ++i)
        many.append(CTxFieldInfo(i == 50 ? u"HEIGHT"_s : i == 299 ? u"NAME"_s : u"F%1"_s.arg(i), Info::Long));
    for (const CTxFieldInfo &info : many)
        expected.append(info.GetName());
    expected.removeOne(u"HEIGHT"_s);
    expected.removeOne(u"NAME"_s);
    CDatasetVector *wide = make(u"wide"_s, many);
    ASSERT_TRUE(wide);
    EXPECT_TRUE(Methods::CopyFieldInfo(wide, m_target));
    EXPECT_EQ(names(*m_target), expected);
    expectReports(2);
}

TEST_F(Fields, CopyFieldValueWritesWhatTheTargetHas)
{
    const auto query = [](CDatasetVector *dataset, const QStringList &fields = {}) {
        CTxQueryDef def;
        def.fields = fields;
        return dataset->Query(def);
    };
    CTxRecordset *from = query(m_source);
    CTxRecordset *to = query(m_target);
    ASSERT_TRUE(from && to);
    EXPECT_FALSE(Methods::CopyFieldValue(from, to)) << "there is no record";
    ASSERT_TRUE(from->AddNew() && from->SetFieldValue(u"TxUserID"_s, 7) && from->SetFieldValue(u"Name"_s, u"Bern"_s) &&
                from->SetFieldValue(u"Height"_s, 1.5) && from->Update() && from->MoveFirst());
    EXPECT_FALSE(Methods::CopyFieldValue(from, to)) << "no record is open for writing";
    ASSERT_TRUE(to->AddNew());
    EXPECT_TRUE(Methods::CopyFieldValue(from, to)) << "one that does not fit keeps nobody from the others";
    ASSERT_TRUE(to->Update());
    CTxVariant value;
    EXPECT_TRUE(to->GetFieldValue(u"TxUserID"_s, value) && value.toInt32() == 7);
    EXPECT_TRUE(to->GetFieldValue(u"name"_s, value) && value.toText() == u"Bern"_s);
    EXPECT_TRUE(to->GetFieldValue(u"Height"_s, value) && value.IsNull()) << "1.5 is no whole number";

    CTxRecordset *systemOnly = query(m_source, {u"TxID"_s});
    ASSERT_TRUE(systemOnly && to->AddNew());
    EXPECT_FALSE(Methods::CopyFieldValue(systemOnly, to));
    CTxRecordset *released = systemOnly;
    Methods::ReleaseRecordset(systemOnly);
    EXPECT_FALSE(Methods::CopyFieldValue(released, to) || Methods::CopyFieldValue(from, released) ||
                 Methods::CopyFieldValue(nullptr, to) || Methods::CopyFieldValue(from, nullptr));
    m_target->Close();
    EXPECT_FALSE(Methods::CopyFieldValue(from, to));
}

TEST_F(Fields, WhatCannotBeCreatedIsToldToTheHost)
{
    const CTxFieldInfo good(u"Good"_s, Info::Long);
    CTxDataSource *source = m_target->GetDataSource();
    const CElemDataEnc::encType none = CElemDataEnc::NONE;
    expectReports(0);
    EXPECT_FALSE(Methods::CreateField(nullptr, good) || Methods::CreateField(nullptr, u"G"_s, Info::Long, 0, 0) ||
                 Methods::CreateFields(nullptr, {good}) ||
                 Methods::CreateDatasetFrom(nullptr, u"A"_s, m_source, none) ||
                 Methods::CreateDatasetFrom(source, u"A"_s, nullptr, none) ||
                 Methods::Append(nullptr, static_cast<CTxRecordset *>(nullptr), false, QString(), CRect2D()) ||
                 Methods::Append(static_cast<CDatasetRaster *>(nullptr), nullptr, true) ||
                 Methods::Append(nullptr, u"image.tif"_s, CRect2D(), CDatasetRaster::AutoDetect, true));
    expectReports(0);

    for (const QString &name :
         {u"height"_s, u"order"_s, u"it's"_s, u"\"q\""_s, u"🌍"_s, QString(300, u'n'), QString()}) {
        EXPECT_FALSE(Methods::CreateField(m_target, name, Info::Long, 0, 0));
        expectReports(1);
    }
    EXPECT_FALSE(Methods::CreateField(m_target, u"Size"_s, 77, 0, 0));
    expectReports(1);
    EXPECT_FALSE(Methods::CreateField(m_target, u"Size"_s, Info::Text, -5, 0));
    expectReports(1);
    EXPECT_FALSE(Methods::CreateFields(m_target, {good, good}));
    expectReports(1);
    CTxRecordset *records = m_source->Query(CTxQueryDef());
    const CTxRecordset *released = records;
    Methods::ReleaseRecordset(records);
    for (CTxRecordset *gone : {records, const_cast<CTxRecordset *>(released)}) {
        EXPECT_FALSE(Methods::Append(m_target, gone, false, QString(), CRect2D()));
        expectReports(1);
    }
    EXPECT_FALSE(Methods::CreateDatasetFrom(source, u"towns"_s, m_source, none));
    expectReports(1);
    EXPECT_FALSE(Methods::CreateDatasetFrom(source, u"New"_s, m_source, static_cast<CElemDataEnc::encType>(6)));
    expectReports(1);
    m_sources.Close(u"to"_s);
    source =
        m_sources.Open(m_folder.filePath(u"to.tdb"_s), u"to"_s, CTxDataSource::Normal | CTxDataSource::OpenReadOnly);
    ASSERT_TRUE(source);
    m_target = static_cast<CDatasetVector *>(source->GetDataset(u"Towns"_s));
    EXPECT_FALSE(Methods::CreateField(m_target, good));
    expectReports(1);
    EXPECT_FALSE(Methods::CreateDatasetFrom(source, u"New"_s, m_source, none));
    expectReports(1);

    CTdModule::SetMainWnd(nullptr);
    EXPECT_FALSE(Methods::CreateField(m_target, good)) << "nobody listens, and nothing breaks";
}

TEST_F(Fields, WhatIsCreatedIsNotTold)
{
    EXPECT_TRUE(Methods::CreateField(m_target, CTxFieldInfo(u"A"_s, Info::Long)));
    EXPECT_TRUE(Methods::CreateField(m_target, u"B"_s, Info::Text, 5, 0));
    EXPECT_TRUE(Methods::CreateFields(m_target, {{u"C"_s, Info::Long}, {u"D"_s, Info::Long}}));
    const CTxDataset *copy =
        Methods::CreateDatasetFrom(m_source->GetDataSource(), u"Copy"_s, m_target, CElemDataEnc::SGL);
    ASSERT_TRUE(copy);
    EXPECT_EQ(names(static_cast<const CDatasetVector &>(*copy)), names(*m_target));
    EXPECT_EQ(copy->GetEncType(), CElemDataEnc::SGL);
    expectReports(0);
}

} // namespace
