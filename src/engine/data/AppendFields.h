#pragma once

#include "engine/data/TxRawValue.h"
#include "engine/data/TxRecordsetPrivate.h"

#include <vector>

/// Which field of a recordset goes to which field of a dataset that records are appended to, and how its values are
/// converted. A private header.
///
/// Names are compared without letter case. Where a shapefile is on either side a name that it cut is found too: the one
/// that ShapefileFields::cutNames() gives among the other side's, or else what begins with the same ten bytes, if just
/// one field does. Fields that the other side lacks are left out, and so are system fields, but for the keys that tie
/// the edges of a network to its nodes: an empty dataset, which a copy begins as, takes those.
///
/// Values are converted to the target's type as CTxRecordset::SetFieldValue() does: nothing is cut, rounded to a whole
/// number or wrapped around. What does not fit is refused.
class AppendFields
{
public:
    /// Pairs the fields. @p tagIndex is a field of the target's layer that is filled otherwise; -1 for none.
    AppendFields(const TxRecordsetPrivate &source, TxVectorPrivate &target, int tagIndex);

    /// One field that is copied.
    struct Pair
    {
        int from;               ///< index of the recordset's field
        qint16 fromType;        ///< its CTxFieldInfo::Type
        int to;                 ///< index in the target's layer
        OGRFieldType storage;   ///< how the layer keeps it
        CTxFieldInfo info;      ///< of the target
        double lowest, highest; ///< numbers between are written as they are
        size_t safeBytes;       ///< texts and bytes of at most that size are written as they are
        bool isNullable;
    };
    const std::vector<Pair> &pairs() const { return m_pairs; }

    /// Writes @p value to @p feature. @return why it was refused, in words that follow the value; null when it was
    /// written.
    QString write(OGRFeature &feature, const Pair &pair, const TxRawValue &value) const;

    /// The index in the layer of @p target of its field @p name, or of what a shapefile makes of that name; -1 when
    /// there is none.
    static int findTag(TxVectorPrivate &target, const QString &name);

    /// True when the text @p value, which fits @p pair, makes a shapefile widen its field.
    bool widens(const Pair &pair, const TxRawValue &value) const;

private:
    void add(int from, const CTxFieldInfo &source, const TxVectorField &target, const OGRFieldDefn &stored);

    bool isKnownToEncoding(const TxRawValue &text) const;

    bool m_toShapefile;
    QByteArray m_encoding; // of the target's texts; empty for UTF-8 and where it is not known
    std::vector<Pair> m_pairs;
};
