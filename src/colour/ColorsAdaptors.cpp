#include "colour/ColorsAdaptors.h"

#include "colour/ColorsObjects.h"
#include "colour/TdColors.h"
#include "colour/TdColorsEnum.h"

#include <algorithm>
#include <vector>

namespace {

/// The path that stands for no object.
QDBusObjectPath nowhere()
{
    return QDBusObjectPath(QStringLiteral("/"));
}

/// Puts an enumerator on the bus, made by a call to another object. It belongs to the caller, and to nobody when that
/// other object does. @return nowhere, with the call refused, when the caller has too many objects
QDBusObjectPath addEnum(std::shared_ptr<TdColorsEnum> walk, ColorsObjects &objects, const QDBusMessage &message)
{
    const QString client = objects.ownerOf(message.path()).isEmpty() ? QString() : message.service();
    if (objects.isFull(client)) {
        objects.refuse(message, HResult::E_OUTOFMEMORY);
        return nowhere();
    }
    new ColorsEnumAdaptor(*walk, objects);
    return QDBusObjectPath(objects.add(std::move(walk), client));
}

void release(ColorsObjects &objects, const QDBusMessage &message)
{
    const HResult code = objects.release(message.path(), message.service());
    if (!succeeded(code))
        objects.refuse(message, code);
}

} // namespace

ColorsFactoryAdaptor::ColorsFactoryAdaptor(QObject *parent, ColorsObjects &objects)
    : QDBusAbstractAdaptor(parent), m_objects(objects)
{
}

QDBusObjectPath ColorsFactoryAdaptor::CreateInstance(const QDBusMessage &message)
{
    return create(message.service(), message);
}

QDBusObjectPath ColorsFactoryAdaptor::CreateShared(const QDBusMessage &message)
{
    return create(QString(), message);
}

QDBusObjectPath ColorsFactoryAdaptor::create(const QString &client, const QDBusMessage &message)
{
    if (m_objects.isFull(client)) {
        m_objects.refuse(message, HResult::E_OUTOFMEMORY);
        return nowhere();
    }
    auto colors = std::make_shared<CTdColors>();
    new ColorsAdaptor(*colors, m_objects);
    return QDBusObjectPath(m_objects.add(std::move(colors), client));
}

ColorsAdaptor::ColorsAdaptor(CTdColors &colors, ColorsObjects &objects)
    : QDBusAbstractAdaptor(&colors), m_colors(colors), m_objects(objects)
{
}

int ColorsAdaptor::count() const
{
    return m_colors.GetCount();
}

int ColorsAdaptor::Remove(int index, int count, const QDBusMessage &message)
{
    return call(ColorsDispatch::Remove, ColorsDispatch::Method, {index, count}, message).toInt();
}

bool ColorsAdaptor::InsertAt(int index, int color, const QDBusMessage &message)
{
    return call(ColorsDispatch::InsertAt, ColorsDispatch::Method, {index, color}, message).toBool();
}

bool ColorsAdaptor::Exchange(int first, int second, const QDBusMessage &message)
{
    return call(ColorsDispatch::Exchange, ColorsDispatch::Method, {first, second}, message).toBool();
}

void ColorsAdaptor::RemoveAll(const QDBusMessage &message)
{
    call(ColorsDispatch::RemoveAll, ColorsDispatch::Method, {}, message);
}

bool ColorsAdaptor::Add(int color, const QDBusMessage &message)
{
    return call(ColorsDispatch::Add, ColorsDispatch::Method, {color}, message).toBool();
}

int ColorsAdaptor::MakeGradientColorset(int count, int color1, int color2, const QDBusMessage &message)
{
    return call(ColorsDispatch::MakeGradientColorset, ColorsDispatch::Method, {count, color1, color2}, message).toInt();
}

int ColorsAdaptor::MakeGradientColorsetEx(int count, const QDBusObjectPath &colors, const QDBusMessage &message)
{
    return call(ColorsDispatch::MakeGradientColorsetEx, ColorsDispatch::Method, {count, QVariant::fromValue(colors)},
                message)
        .toInt();
}

int ColorsAdaptor::MakeStockGradientColorset(int count, int style, bool reverse, const QDBusMessage &message)
{
    return call(ColorsDispatch::MakeStockGradientColorset, ColorsDispatch::Method, {count, style, reverse}, message)
        .toInt();
}

int ColorsAdaptor::MakeRandomColorset(int count, const QDBusMessage &message)
{
    return call(ColorsDispatch::MakeRandomColorset, ColorsDispatch::Method, {count}, message).toInt();
}

int ColorsAdaptor::Item(int index, const QDBusMessage &message)
{
    return call(ColorsDispatch::Item, ColorsDispatch::PropertyGet, {index}, message).toInt();
}

void ColorsAdaptor::SetItem(int index, int color, const QDBusMessage &message)
{
    call(ColorsDispatch::Item, ColorsDispatch::PropertyPut, {index, color}, message);
}

// NOLINTNEXTLINE(bugprone-reserved-identifier)
QDBusObjectPath ColorsAdaptor::_NewEnum(const QDBusMessage &message)
{
    const QVariant path = call(ColorsDispatch::NewEnum, ColorsDispatch::PropertyGet, {}, message);
    return path.isValid() ? path.value<QDBusObjectPath>() : nowhere();
}

QList<int> ColorsAdaptor::GetIDsOfNames(const QStringList &names, const QDBusMessage &message)
{
    m_objects.touch(message.path());
    QList<int> numbers;
    for (const QString &name : names) {
        qint32 number = 0;
        const HResult code = ColorsDispatch::numberOf(name, number);
        if (!succeeded(code)) {
            m_objects.refuse(message, code);
            return {};
        }
        numbers << number;
    }
    return numbers;
}

QVariantList ColorsAdaptor::Invoke(int number, uint kinds, const QVariantList &arguments, const QDBusMessage &message)
{
    const QVariant result = call(number, kinds, arguments, message);
    return result.isValid() ? QVariantList{result} : QVariantList();
}

void ColorsAdaptor::Release(const QDBusMessage &message)
{
    release(m_objects, message);
}

/// Calls a member with the arguments as the bus brings them, and makes of the answer what the bus can take: an object
/// becomes its path. @return an invalid value for no answer, and when the call was refused
QVariant ColorsAdaptor::call(qint32 number, quint32 kinds, QVariantList arguments, const QDBusMessage &message)
{
    m_objects.touch(message.path());
    for (QVariant &argument : arguments) {
        if (argument.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
            QObject *object = m_objects.collection(argument.value<QDBusObjectPath>().path());
            argument = QVariant::fromValue(object);
        }
    }
    QVariant result;
    const int before = count();
    const HResult code = ColorsDispatch::invoke(m_colors, number, kinds, arguments, result, ColorsObjects::maxColors);
    if (!succeeded(code)) {
        m_objects.refuse(message, code);
        return {};
    }
    if (count() != before)
        m_objects.tellChange(message.path(), QStringLiteral("Terravox.TdColors"), QStringLiteral("Count"), count());
    if (result.metaType() == QMetaType::fromType<std::shared_ptr<TdColorsEnum>>())
        return QVariant::fromValue(addEnum(result.value<std::shared_ptr<TdColorsEnum>>(), m_objects, message));
    return result;
}

ColorsEnumAdaptor::ColorsEnumAdaptor(TdColorsEnum &walk, ColorsObjects &objects)
    : QDBusAbstractAdaptor(&walk), m_walk(walk), m_objects(objects)
{
}

int ColorsEnumAdaptor::Next(int count, const QDBusMessage &message, QVariantList &colors)
{
    if (count < 0)
        return answer(HResult::E_INVALIDARG, message);
    // Room for those that are there, however many are asked for; one more tells that there are fewer.
    const quint32 asked = static_cast<quint32>(count);
    std::vector<CTxVariant> room(std::min(asked, m_walk.remaining() + 1));
    quint32 fetched = 0;
    const HResult code = m_walk.Next(static_cast<quint32>(room.size()), room.data(), &fetched);
    for (quint32 i = 0; i < fetched; ++i)
        colors << room[i].toInt32();
    return answer(code, message);
}

int ColorsEnumAdaptor::Reset(const QDBusMessage &message)
{
    return answer(m_walk.Reset(), message);
}

int ColorsEnumAdaptor::Skip(int count, const QDBusMessage &message)
{
    return answer(count < 0 ? HResult::E_INVALIDARG : m_walk.Skip(static_cast<quint32>(count)), message);
}

QDBusObjectPath ColorsEnumAdaptor::Clone(const QDBusMessage &message)
{
    std::unique_ptr<TdColorsEnum> copy;
    if (const HResult code = m_walk.Clone(copy); !succeeded(code)) {
        answer(code, message);
        return nowhere();
    }
    m_objects.touch(message.path());
    return addEnum(std::move(copy), m_objects, message);
}

void ColorsEnumAdaptor::Release(const QDBusMessage &message)
{
    release(m_objects, message);
}

int ColorsEnumAdaptor::answer(HResult code, const QDBusMessage &message) const
{
    m_objects.touch(message.path());
    if (!succeeded(code))
        m_objects.refuse(message, code);
    return static_cast<int>(code);
}
