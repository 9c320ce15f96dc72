#pragma once

#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSources.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/ElemGeometry.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

/// Gives a recordset back when it goes.
struct RecordsetReleaser
{
    void operator()(CTxRecordset *recordset) const { recordset->GetDataset()->ReleaseRecordset(recordset); }
};
using RecordsetPtr = std::unique_ptr<CTxRecordset, RecordsetReleaser>;

/// A test with a folder of its own and the datasources of a workspace.
class NativeFixture : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// A new native database, open under the alias "db".
    CTxDataSource *create(const QString &name = QStringLiteral("new.tdb"))
    {
        CTxDataSource *made = sources.Create(path(name), QStringLiteral("db"), CTxDataSourceStorage::Native);
        EXPECT_TRUE(made) << lastError();
        return made;
    }

    /// Closes the datasource "db" and opens it again.
    CTxDataSource *reopen(const QString &name = QStringLiteral("new.tdb"))
    {
        EXPECT_TRUE(sources.Close(QStringLiteral("db")));
        CTxDataSource *opened = sources.Open(path(name), QStringLiteral("db"));
        EXPECT_TRUE(opened) << lastError();
        return opened;
    }

    static CTxDatasetDef definition(const QString &name, CElemDatasetInfo::Type type = CElemDatasetInfo::Point)
    {
        CTxDatasetDef def;
        def.name = name;
        def.type = type;
        return def;
    }

    /// A dataset with the fields Name (text of 5 characters) and Size (whole number), open.
    static CDatasetVector *makeVector(CTxDataSource *source, const QString &name,
                                      CElemDatasetInfo::Type type = CElemDatasetInfo::Point)
    {
        CTxDatasetDef def = definition(name, type);
        def.fields = {CTxFieldInfo(QStringLiteral("Name"), CTxFieldInfo::Text, 5),
                      CTxFieldInfo(QStringLiteral("Size"), CTxFieldInfo::Long)};
        auto *made = dynamic_cast<CDatasetVector *>(source->CreateDataset(def));
        EXPECT_TRUE(made && made->Open()) << lastError();
        return made;
    }

    static CDatasetVector *vector(CTxDataSource *source, const QString &name)
    {
        auto *found = dynamic_cast<CDatasetVector *>(source->GetDataset(name));
        EXPECT_TRUE(found && found->Open()) << lastError();
        return found;
    }

    static RecordsetPtr query(CDatasetVector *dataset, const QString &filter = QString())
    {
        CTxQueryDef def;
        def.filter = filter;
        RecordsetPtr recordset(dataset->Query(def));
        EXPECT_TRUE(recordset) << lastError();
        return recordset;
    }

    /// The geometry of the current record, null when it has none.
    static std::unique_ptr<CElemGeometry> geometryOf(const CTxRecordset &record)
    {
        CElemGeometry *geometry = nullptr;
        record.GetGeometry(geometry);
        return std::unique_ptr<CElemGeometry>(geometry);
    }

    static QString textOf(const CTxRecordset &record, const char *field)
    {
        CTxVariant value;
        EXPECT_TRUE(record.GetFieldValue(QString::fromLatin1(field), value));
        return value.toText();
    }

    static std::string lastError() { return TxGetErrorMsgObj().GetErrorMessage().toStdString(); }

    /// In memory where the system has such a place: waiting for a disk a thousand times proves nothing.
    QTemporaryDir m_folder{
        QFileInfo(QStringLiteral("/dev/shm")).isWritable() ? QStringLiteral("/dev/shm/terravox-XXXXXX") : QString()};
    CTxDataSources sources;
};
