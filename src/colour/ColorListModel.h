#pragma once

#include "engine/symbol/TxColorFolder.h"

#include <QAbstractListModel>

/// The rows of a colour list: colour k of the folder stands in row Count - 1 - k.
class ColorListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    const CTxColorFolder &colors() const { return m_colors; }
    /// The index of the colour in a row, and the row of a colour; -1 when out of range.
    qint32 mirrored(qint32 place) const;

    void insert(qint32 index, COLORREF color);
    void remove(qint32 index);
    void set(qint32 index, COLORREF color);
    void setAll(const CTxColorFolder &colors);

    int rowCount(const QModelIndex &parent = {}) const override;
    /// DisplayRole is the index of the colour, BackgroundRole a QColor; tool tip and accessible text tell both.
    QVariant data(const QModelIndex &index, int role) const override;
    /// A text searched for is an index, which is typed to go to it: found at once among a million.
    QModelIndexList match(const QModelIndex &start, int role, const QVariant &value, int hits,
                          Qt::MatchFlags flags) const override;

private:
    CTxColorFolder m_colors;
};
