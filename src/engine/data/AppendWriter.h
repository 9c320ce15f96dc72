#pragma once

#include "engine/data/AppendFields.h"
#include "engine/data/AppendGeometry.h"
#include "engine/data/TxCursor.h"

#include <array>

class AppendChange;

/// Writes the records of a walk to a layer, one after the other. A private header.
///
/// One OGR feature is used for all of them: what is not copied keeps its default, what follows from the geometry
/// (lengths, areas, what a text says) is worked out anew.
class AppendWriter
{
public:
    AppendWriter(const TxRecordsetPrivate &source, TxVectorPrivate &target, int tagIndex,
                 const TxReprojector *reprojector, const CRect2D &bounds);

    enum class Result { Written, Outside, Refused };
    /// Writes the current record of @p cursor, whose geometry is taken. Outside: nothing of it lies in the rectangle.
    Result write(TxCursor &cursor, AppendChange &change);
    /// Why the last record was refused, a sentence without a full stop; empty where the driver said it.
    const QString &reason() const { return m_reason; }

    /// Which field goes where.
    const AppendFields &fields() const { return m_fields; }
    /// The feature that all records are written with, to be given what is the same for all.
    OGRFeature &feature() { return *m_feature; }

private:
    bool writeFields(const TxCursor &cursor, AppendChange &change);
    bool takeText(const TxCursor &cursor, const OGRGeometry &geometry);
    void writeDerived(const OGRGeometry *geometry);

    /// What the text of a record says.
    struct Text
    {
        bool isThere = false;
        QByteArray said;
        double angle = 0.0;
        double height = 0.0;
    };

    const TxRecordsetPrivate &m_source;
    TxVectorPrivate &m_target;
    OGRLayer *const m_layer;
    const QString m_targetName;
    AppendFields m_fields;
    AppendGeometry m_geometry;
    OGRFeatureUniquePtr m_feature;
    std::array<int, 6> m_derived; // in the order of NativeSchema::derivedFields; -1 for what the layer does not keep
    bool m_hasDerived = false;
    Text m_text;
    QString m_reason;
};
