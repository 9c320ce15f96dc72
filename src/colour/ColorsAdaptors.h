#pragma once

#include "colour/ColorsDispatch.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QStringList>

class ColorsObjects;
class CTdColors;
class TdColorsEnum;

// What the automation bus shows of the objects. The names of slots and arguments are those that clients see;
// docs/automation.md describes them. Each slot takes the message of the call last, which clients do not see.

/// Makes collections.
class ColorsFactoryAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "Terravox.ClassFactory")

public:
    ColorsFactoryAdaptor(QObject *parent, ColorsObjects &objects);

public Q_SLOTS:
    QDBusObjectPath CreateInstance(const QDBusMessage &message);
    QDBusObjectPath CreateShared(const QDBusMessage &message);

private:
    QDBusObjectPath create(const QString &client, const QDBusMessage &message);

    ColorsObjects &m_objects;
};

/// A collection. Every member goes through ColorsDispatch, by its number.
class ColorsAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "Terravox.TdColors")
    Q_PROPERTY(int Count READ count)

public:
    ColorsAdaptor(CTdColors &colors, ColorsObjects &objects);

    int count() const;

public Q_SLOTS:
    int Remove(int index, int count, const QDBusMessage &message);
    bool InsertAt(int index, int color, const QDBusMessage &message);
    bool Exchange(int first, int second, const QDBusMessage &message);
    void RemoveAll(const QDBusMessage &message);
    bool Add(int color, const QDBusMessage &message);
    int MakeGradientColorset(int count, int color1, int color2, const QDBusMessage &message);
    int MakeGradientColorsetEx(int count, const QDBusObjectPath &colors, const QDBusMessage &message);
    int MakeStockGradientColorset(int count, int style, bool reverse, const QDBusMessage &message);
    int MakeRandomColorset(int count, const QDBusMessage &message);
    int Item(int index, const QDBusMessage &message);
    void SetItem(int index, int color, const QDBusMessage &message);
    // The name is the member's, whatever C++ keeps for itself. NOLINTNEXTLINE(bugprone-reserved-identifier)
    QDBusObjectPath _NewEnum(const QDBusMessage &message);

    QList<int> GetIDsOfNames(const QStringList &names, const QDBusMessage &message);
    QVariantList Invoke(int number, uint kinds, const QVariantList &arguments, const QDBusMessage &message);
    void Release(const QDBusMessage &message);

private:
    QVariant call(qint32 number, quint32 kinds, QVariantList arguments, const QDBusMessage &message);

    CTdColors &m_colors;
    ColorsObjects &m_objects;
};

/// An enumerator.
class ColorsEnumAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "Terravox.TdColorsEnum")

public:
    ColorsEnumAdaptor(TdColorsEnum &walk, ColorsObjects &objects);

public Q_SLOTS:
    int Next(int count, const QDBusMessage &message, QVariantList &colors);
    int Reset(const QDBusMessage &message);
    int Skip(int count, const QDBusMessage &message);
    QDBusObjectPath Clone(const QDBusMessage &message);
    void Release(const QDBusMessage &message);

private:
    /// Refuses what failed. @return the code
    int answer(HResult code, const QDBusMessage &message) const;

    TdColorsEnum &m_walk;
    ColorsObjects &m_objects;
};
