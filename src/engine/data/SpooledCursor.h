#pragma once

#include "engine/data/TxCursor.h"
#include "engine/data/TxRecordsetPrivate.h"

#include <QDataStream>
#include <QTemporaryFile>

#include <vector>

/// The records of another walk, laid aside in a temporary file: read when the storage they come from is written to, and
/// cannot be walked. Memory stays flat. A private header.
class SpooledCursor : public TxCursor
{
public:
    explicit SpooledCursor(const std::vector<TxRecordsetField> &fields);

    /// Takes over the records from the current one of @p source to its last. @return false when they do not all reach
    /// the file.
    bool fill(TxCursor &source, bool onRecord);

    bool first() override;
    bool next() override;
    qint64 id() const override { return m_id; }
    void value(int index, CTxVariant &value) const override;
    TxRawValue raw(int index) const override;
    std::unique_ptr<OGRGeometry> geometry() const override;
    QByteArray style() const override { return m_style; }
    /// Not possible: records are read in their order.
    bool fetch(qint64, bool, TxRecord &) override { return false; }
    qint64 count() override { return m_count; }
    /// True when the file could not be read back.
    bool failed() const { return m_stream.status() != QDataStream::Ok; }

private:
    /// A value that owns its bytes.
    struct Value
    {
        TxRawValue raw;
        QByteArray bytes;
    };

    QTemporaryFile m_file;
    QDataStream m_stream;
    qint64 m_count = 0;
    qint64 m_left = 0; // behind the current record
    std::vector<qint16> m_types;
    qint64 m_id = -1;
    std::vector<Value> m_values;
    QByteArray m_wkb; // empty for no geometry
    QByteArray m_style;
};
