#pragma once

#include "engine/base/TxExport.h"

#include <QList>
#include <QString>

/// The description of one field of a vector dataset. A value type.
class TX_EXPORT CTxFieldInfo
{
public:
    /// The field-type code, as files and callers know it. Do not change the values.
    enum Type : qint16 {
        Boolean = 1,
        Byte = 2,
        Short = 3,
        Long = 4,
        Currency = 5,
        Single = 6,
        Double = 7,
        Date = 8,
        Binary = 9,
        Text = 10,
        LongBinary = 11,
        Memo = 12,
        Character = 18,
        Numeric = 19,
        Float = 21,
        Time = 22,
        GeometryBinary = 128
    };

    /// What is special about a field; the flags are combined.
    enum Flag : quint32 {
        NoFlag = 0,
        System = 0x1,   ///< kept by the engine
        ReadOnly = 0x2, ///< not to be written by callers
        Required = 0x4, ///< never null
        Unique = 0x8    ///< no value twice
    };

    CTxFieldInfo() = default;
    /// A field called @p name (also its caption) of a Type code. @p size counts characters of texts, bytes of binaries
    /// and digits of numbers, 0 for no bound. A Long of more than 9 digits is kept in 64 bits.
    CTxFieldInfo(const QString &name, qint16 type, qint32 size = 0, quint32 flags = NoFlag);

    const QString &GetName() const { return m_name; }
    void SetName(const QString &name) { m_name = name; }
    /// What users are shown in place of the name; the name where nothing else was set.
    const QString &GetCaption() const { return m_caption.isEmpty() ? m_name : m_caption; }
    void SetCaption(const QString &caption) { m_caption = caption; }
    qint16 GetType() const { return m_type; }
    void SetType(qint16 type) { m_type = type; }
    qint32 GetSize() const { return m_size; }
    void SetSize(qint32 size) { m_size = size; }
    /// Digits behind the point, of numeric fields that fix them; else 0.
    qint32 GetPrecision() const { return m_precision; }
    void SetPrecision(qint32 precision) { m_precision = precision; }
    quint32 GetFlags() const { return m_flags; }
    void SetFlags(quint32 flags) { m_flags = flags; }
    /// The value of records that give none, as text; empty for null.
    const QString &GetDefault() const { return m_default; }
    void SetDefault(const QString &text) { m_default = text; }

    /// True for a field that the engine keeps: one flagged so, or one whose name is in the engine's list of system
    /// names (letter case ignored). "TxUserID" is not in the list: users may write it.
    bool IsSystemField() const;
    /// True when callers may write the field's values.
    bool CanUpdate() const;

    bool operator==(const CTxFieldInfo &other) const = default;

private:
    QString m_name;
    QString m_caption;
    QString m_default;
    qint32 m_size = 0;
    qint32 m_precision = 0;
    quint32 m_flags = NoFlag;
    qint16 m_type = Text;
};

/// An ordered collection of field descriptions. A value type.
class TX_EXPORT CTxFieldInfos : public QList<CTxFieldInfo>
{
public:
    using QList<CTxFieldInfo>::QList;

    int GetCount() const { return static_cast<int>(size()); }
    /// The 0-based place of the field called @p name (letter case ignored), -1 when there is none.
    int Find(const QString &name) const;
};
