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
#include <utility>

/// Gives a recordset back when it goes.
struct RecordsetReleaser
{
    void operator()(CTxRecordset *recordset) const { recordset->GetDataset()->ReleaseRecordset(recordset); }
};
using RecordsetPtr = std::unique_ptr<CTxRecordset, RecordsetReleaser>;

/// A test with a folder of its own and the datasources of a workspace.
class DataFixture : public testing::Test
{
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }

    /// A new datasource, a native database unless @p type says another, open under the alias "db".
    CTxDataSource *create(const QString &name = "new.tdb",
                          CTxDataSourceStorage::Type type = CTxDataSourceStorage::Native)
    {
        CTxDataSource *made = sources.Create(path(name), "db", type);
        EXPECT_TRUE(made) << lastError();
        return made;
    }

    CTxDataSource *open(const QString &file, const QString &alias = QString())
    {
        CTxDataSource *opened = sources.Open(file, alias);
        EXPECT_TRUE(opened) << lastError();
        return opened;
    }

    /// Closes the datasource "db" and opens it again.
    CTxDataSource *reopen(const QString &name = "new.tdb")
    {
        EXPECT_TRUE(sources.Close("db"));
        return open(path(name), "db");
    }

    static CTxDatasetDef definition(const QString &name, CElemDatasetInfo::Type type = CElemDatasetInfo::Point,
                                    const CTxFieldInfos &fields = {}, const QString &coordSys = QString())
    {
        CTxDatasetDef def;
        def.name = name;
        def.type = type;
        def.fields = fields;
        def.coordSys = coordSys;
        return def;
    }

    /// A raster of cells of one unit.
    static CTxDatasetDef rasterDefinition(const QString &name, const CRect2D &bounds,
                                          const QString &pixelFormat = "Float32")
    {
        CTxDatasetDef def = definition(name, CElemDatasetInfo::Grid);
        def.rasterBounds = bounds;
        def.rasterSize = QSize(int(bounds.Width()), int(bounds.Height()));
        def.pixelFormat = pixelFormat;
        return def;
    }

    /// A dataset with the fields Name (text of 5 characters) and Size (whole number), open.
    static CDatasetVector *makeVector(CTxDataSource *source, const QString &name,
                                      CElemDatasetInfo::Type type = CElemDatasetInfo::Point)
    {
        auto *made = dynamic_cast<CDatasetVector *>(source->CreateDataset(definition(
            name, type, {CTxFieldInfo("Name", CTxFieldInfo::Text, 5), CTxFieldInfo("Size", CTxFieldInfo::Long)})));
        EXPECT_TRUE(made && made->Open()) << lastError();
        return made;
    }

    /// The vector or raster dataset @p name, or the first one, open.
    template<typename Dataset>
    static Dataset *opened(CTxDataSource *source, const QString &name = QString())
    {
        auto *found = dynamic_cast<Dataset *>(name.isEmpty() ? source->GetDatasetAt(0) : source->GetDataset(name));
        EXPECT_TRUE(found && found->Open()) << lastError();
        return found;
    }
    static CDatasetVector *vector(CTxDataSource *source, const QString &name = QString())
    {
        return opened<CDatasetVector>(source, name);
    }
    static CDatasetRaster *raster(CTxDataSource *source, const QString &name = QString())
    {
        return opened<CDatasetRaster>(source, name);
    }

    static RecordsetPtr query(CDatasetVector *dataset, const CTxQueryDef &def)
    {
        RecordsetPtr recordset(dataset->Query(def));
        EXPECT_TRUE(recordset) << lastError();
        return recordset;
    }
    static RecordsetPtr query(CDatasetVector *dataset, const QString &filter = QString())
    {
        CTxQueryDef def;
        def.filter = filter;
        return query(dataset, def);
    }

    /// Adds a record. @return false when any step fails.
    static bool addRecord(CTxRecordset &records, const QList<std::pair<const char *, CTxVariant>> &values = {},
                          const CElemGeometry *geometry = nullptr)
    {
        bool done = records.AddNew();
        for (const auto &[field, value] : values)
            done = done && records.SetFieldValue(field, value);
        return done && (!geometry || records.SetGeometry(geometry)) && records.Update();
    }

    /// The geometry of the current record, null when it has none.
    static std::unique_ptr<CElemGeometry> geometryOf(const CTxRecordset &record)
    {
        CElemGeometry *geometry = nullptr;
        record.GetGeometry(geometry);
        return std::unique_ptr<CElemGeometry>(geometry);
    }

    static std::string textOf(const CTxRecordset &record, const char *field)
    {
        CTxVariant value;
        EXPECT_TRUE(record.GetFieldValue(field, value));
        return value.toText().toStdString();
    }

    /// The values of @p field of all records from the current one, joined by blanks.
    static std::string column(CTxRecordset &records, const char *field)
    {
        std::string all;
        for (const char *gap = ""; !records.IsEOF(); records.MoveNext(), gap = " ")
            all += gap + textOf(records, field);
        return all;
    }

    /// The description of a field of a dataset or a recordset.
    template<typename Fields>
    static CTxFieldInfo fieldOf(const Fields &fields, const char *name)
    {
        CTxFieldInfo info;
        EXPECT_TRUE(fields.GetFieldInfo(fields.FindField(name), info)) << name;
        return info;
    }

    static std::string lastError() { return TxGetErrorMsgObj().GetErrorMessage().toStdString(); }

    /// In memory where the system has such a place: waiting for a disk a thousand times proves nothing.
    QTemporaryDir m_folder{QFileInfo("/dev/shm").isWritable() ? "/dev/shm/terravox-XXXXXX" : QString()};
    CTxDataSources sources;
};
