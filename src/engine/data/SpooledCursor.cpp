#include "engine/data/SpooledCursor.h"

#include "engine/data/TxFieldTypes.h"

#include <type_traits>

SpooledCursor::SpooledCursor(const std::vector<TxRecordsetField> &fields) : m_stream(&m_file), m_values(fields.size())
{
    for (const TxRecordsetField &field : fields)
        m_types.push_back(field.info.GetType());
    m_stream.setVersion(QDataStream::Qt_6_0);
}

bool SpooledCursor::fill(TxCursor &source, bool onRecord)
{
    static_assert(std::is_trivially_copyable_v<OGRField>);
    if (!m_file.open())
        return false;
    for (; onRecord; onRecord = source.next(), ++m_count) {
        m_stream << source.id();
        for (size_t i = 0; i < m_types.size(); ++i) {
            const TxRawValue raw = source.raw(static_cast<int>(i));
            m_stream << qint8(raw.kind) << raw.integer << raw.real
                     << QByteArray::fromRawData(raw.data, static_cast<qsizetype>(raw.size));
            m_stream.writeRawData(reinterpret_cast<const char *>(&raw.moment), sizeof raw.moment);
        }
        const std::unique_ptr<OGRGeometry> geometry = source.takeGeometry();
        QByteArray wkb;
        if (geometry) {
            wkb.resize(static_cast<qsizetype>(geometry->WkbSize()));
            geometry->exportToWkb(wkbNDR, reinterpret_cast<unsigned char *>(wkb.data()), wkbVariantIso);
        }
        m_stream << wkb << source.style();
    }
    return m_file.flush() && !failed();
}

bool SpooledCursor::first()
{
    m_left = m_count;
    return m_file.seek(0) && next();
}

bool SpooledCursor::next()
{
    if (m_left == 0)
        return false;
    --m_left;
    m_stream >> m_id;
    for (Value &value : m_values) {
        qint8 kind = TxRawValue::Null;
        m_stream >> kind >> value.raw.integer >> value.raw.real >> value.bytes;
        value.raw.kind = static_cast<TxRawValue::Kind>(kind);
        value.raw.data = value.bytes.constData();
        value.raw.size = static_cast<size_t>(value.bytes.size());
        m_stream.readRawData(reinterpret_cast<char *>(&value.raw.moment), sizeof value.raw.moment);
    }
    m_stream >> m_wkb >> m_style;
    return !failed();
}

void SpooledCursor::value(int index, CTxVariant &value) const
{
    value = TxFieldTypes::fromRaw(raw(index), m_types[static_cast<size_t>(index)]);
}

TxRawValue SpooledCursor::raw(int index) const
{
    return m_values[static_cast<size_t>(index)].raw;
}

std::unique_ptr<OGRGeometry> SpooledCursor::geometry() const
{
    OGRGeometry *made = nullptr;
    if (!m_wkb.isEmpty())
        OGRGeometryFactory::createFromWkb(m_wkb.constData(), nullptr, &made, static_cast<size_t>(m_wkb.size()),
                                          wkbVariantIso);
    return std::unique_ptr<OGRGeometry>(made);
}
