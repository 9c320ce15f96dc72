#include "colour/ColorListModel.h"

#include "common/TdModule.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <algorithm>

qint32 ColorListModel::mirrored(qint32 place) const
{
    return place < 0 || place >= m_colors.GetCount() ? -1 : m_colors.GetCount() - 1 - place;
}

void ColorListModel::insert(qint32 index, COLORREF color)
{
    const int row = m_colors.GetCount() - std::clamp(index, 0, m_colors.GetCount());
    beginInsertRows({}, row, row);
    m_colors.InsertAt(index, color);
    endInsertRows();
}

void ColorListModel::remove(qint32 index)
{
    const int row = mirrored(index);
    if (row < 0)
        return;
    beginRemoveRows({}, row, row);
    m_colors.RemoveAt(index);
    endRemoveRows();
}

void ColorListModel::set(qint32 index, COLORREF color)
{
    if (m_colors.SetAt(index, color)) {
        const QModelIndex changed = this->index(mirrored(index));
        Q_EMIT dataChanged(changed, changed);
    }
}

void ColorListModel::setAll(const CTxColorFolder &colors)
{
    const bool sameRows = colors.GetCount() == m_colors.GetCount();
    if (!sameRows)
        beginResetModel();
    m_colors = colors;
    if (!sameRows)
        endResetModel();
    else if (m_colors.GetCount() > 0)
        Q_EMIT dataChanged(index(0), index(m_colors.GetCount() - 1));
}

int ColorListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_colors.GetCount();
}

QVariant ColorListModel::data(const QModelIndex &index, int role) const
{
    const qint32 place = index.isValid() ? mirrored(index.row()) : -1;
    if (place < 0)
        return {};
    const COLORREF color = m_colors.GetAt(place);
    switch (role) {
    case Qt::DisplayRole:
        return TxNumberText::whole(place);
    case Qt::BackgroundRole:
        return TxColorRef::toQColor(color);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
        return CTdModule::LoadString(TdStringId::ColorListRow)
            .arg(TxNumberText::whole(place), TxNumberText::whole(TxColorRef::red(color)),
                 TxNumberText::whole(TxColorRef::green(color)), TxNumberText::whole(TxColorRef::blue(color)));
    default:
        return {};
    }
}

QModelIndexList ColorListModel::match(const QModelIndex &start, int role, const QVariant &value, int hits,
                                      Qt::MatchFlags flags) const
{
    if (role != Qt::DisplayRole)
        return QAbstractListModel::match(start, role, value, hits, flags);
    bool isNumber = false;
    const qint32 row = mirrored(value.toString().toInt(&isNumber));
    return isNumber && row >= 0 ? QModelIndexList{index(row)} : QModelIndexList{};
}
