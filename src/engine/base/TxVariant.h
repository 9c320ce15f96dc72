#pragma once

#include "engine/base/TxExport.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <variant>

/// A field's value: one of the kinds below, with the code that says which.
///
/// The codes are those that files and callers know. Do not change them.
class TX_EXPORT CTxVariant
{
public:
    /// The code of what a variant holds.
    enum Type : quint16 {
        Empty = 0,          ///< nothing was ever stored
        Null = 1,           ///< the field is null
        Short = 2,          ///< signed, 16 bits
        Long = 3,           ///< signed, 32 bits
        Float = 4,          ///< floating point, 32 bits
        Double = 5,         ///< floating point, 64 bits
        Currency = 6,       ///< signed, 64 bits, in ten-thousandths
        Date = 7,           ///< date and time
        String = 8,         ///< text
        Dispatch = 9,       ///< an automation object: carried as a code only
        Error = 10,         ///< an error code, 32 bits
        Boolean = 11,       ///< true (-1) or false (0)
        Nested = 12,        ///< a variant by reference: carried as a code only
        Unknown = 13,       ///< an unknown object: carried as a code only
        Decimal = 14,       ///< a decimal number, held as a double
        SignedByte = 16,    ///< signed, 8 bits
        Byte = 17,          ///< unsigned, 8 bits
        UnsignedShort = 18, ///< unsigned, 16 bits
        UnsignedLong = 19,  ///< unsigned, 32 bits
        Int64 = 20,         ///< signed, 64 bits
        UnsignedInt64 = 21, ///< unsigned, 64 bits
        Int = 22,           ///< signed, 32 bits
        UnsignedInt = 23,   ///< unsigned, 32 bits
        Void = 24,          ///< a raw machine word
        NarrowString = 30,  ///< text from a narrow string
        WideString = 31,    ///< text from a wide string
        Blob = 65,          ///< bytes
        BlobObject = 70,    ///< bytes of an object
        ByteArray = 0x2011  ///< array of unsigned bytes
    };

    /// An empty variant.
    CTxVariant() = default;
    CTxVariant(bool value) : m_type(Boolean), m_value(qint64(value ? -1 : 0)) {}
    CTxVariant(qint16 value) : m_type(Short), m_value(qint64(value)) {}
    CTxVariant(qint32 value) : m_type(Long), m_value(qint64(value)) {}
    CTxVariant(qint64 value) : m_type(Int64), m_value(value) {}
    CTxVariant(quint8 value) : m_type(Byte), m_value(qint64(value)) {}
    CTxVariant(float value) : m_type(Float), m_value(double(value)) {}
    CTxVariant(double value) : m_type(Double), m_value(value) {}
    CTxVariant(const QString &value) : m_type(String), m_value(value) {}
    CTxVariant(QString &&value) : m_type(String), m_value(std::move(value)) {}
    CTxVariant(const QByteArray &value) : m_type(ByteArray), m_value(value) {}
    CTxVariant(const QDateTime &value);
    CTxVariant(const char *) = delete;

    /// A null value, as a database gives it.
    static CTxVariant null();
    /// A whole number under any code that holds one (@p type is not checked against the number's range).
    static CTxVariant fromInteger(Type type, qint64 value);
    /// A floating-point number under any code that holds one (Float, Double, Decimal).
    static CTxVariant fromReal(Type type, double value);
    /// Text under any code that holds one (String, NarrowString, WideString).
    static CTxVariant fromText(Type type, const QString &value);
    /// Bytes under any code that holds them (Blob, BlobObject, ByteArray).
    static CTxVariant fromBytes(Type type, const QByteArray &value);

    /// The code of what is held.
    Type GetType() const { return m_type; }
    /// True for the codes Empty and Null.
    bool IsNull() const { return m_type == Empty || m_type == Null; }

    /// The value as a number of 64 bits: numbers are truncated toward zero and kept within range, text is read as C's
    /// atoll reads it, dates give milliseconds since 1970-01-01 UTC; everything else gives 0.
    qint64 toInt64() const;
    /// The low 32 bits of toInt64(), signed.
    qint32 toInt32() const { return static_cast<qint32>(toInt64()); }
    /// The value as a double: text is read as C's atof reads it; everything that is no number gives 0.
    double toDouble() const;
    /// True for every number but 0 and for texts that are "true" in any letter case or a number but 0.
    bool toBool() const;
    /// The shortest exact text of the value, without regard to the locale (ISO 8601 for dates, empty for bytes). How a
    /// value is shown to users is not decided here.
    QString toText() const;
    /// The bytes held; of a text, its UTF-8 form; else empty.
    QByteArray toBytes() const;
    /// The date held; of a text, what ISO 8601 makes of it; else an invalid date.
    QDateTime toDateTime() const;

    /// Same code and same value.
    bool operator==(const CTxVariant &other) const { return m_type == other.m_type && m_value == other.m_value; }

private:
    Type m_type = Empty;
    std::variant<std::monostate, qint64, double, QString, QByteArray, QDateTime> m_value;
};
