#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QList>
#include <QObject>

class CTxColorFolder;

/// An ordered list of colours that other programs can fill and read. Indices count from 1. An index that is out of
/// range is no error: getters give 0, setters do nothing, operations answer 0 or false.
class TDCOMMON_API CTdColors : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int Count READ GetCount)

public:
    explicit CTdColors(QObject *parent = nullptr);
    ~CTdColors() override;

    /// How many colours there are.
    qint32 GetCount() const;
    /// Removes up to @p count colours from @p index on.
    /// @return how many were removed
    Q_INVOKABLE int Remove(int index, int count);
    /// Inserts a colour before the one at @p index; an index below 1 is the first, one above Count appends.
    Q_INVOKABLE bool InsertAt(int index, int color);
    /// Swaps two colours. @return false when an index is out of range
    Q_INVOKABLE bool Exchange(int first, int second);
    Q_INVOKABLE void RemoveAll();
    /// Adds a colour at the end.
    Q_INVOKABLE bool Add(int color);
    /// The colour at @p index, 0 when out of range.
    Q_INVOKABLE int GetItem(int index) const;
    /// Replaces the colour at @p index; nothing happens when out of range.
    Q_INVOKABLE void SetItem(int index, int color);

    /// Replaces the list by a ramp from one colour to another. @return how many colours were made
    Q_INVOKABLE int MakeGradientColorset(int count, int color1, int color2);
    /// Replaces the list by a ramp through the colours of @p colors, another CTdColors.
    /// @return how many colours were made; 0, with the list as it was, when @p colors is none
    Q_INVOKABLE int MakeGradientColorsetEx(int count, QObject *colors);
    /// Replaces the list by the engine's stock ramp @p style. @return how many colours were made
    Q_INVOKABLE int MakeStockGradientColorset(int count, int style, bool reverse);
    /// Replaces the list by random colours, the same ones for all calls within a second. @return the new Count
    Q_INVOKABLE int MakeRandomColorset(int count);

    /// Replaces the list by the folder's colours. @return true when there are any
    bool FromColorFolder(const CTxColorFolder &folder);
    /// Replaces the folder's colours by the list's. @return true when there are any
    bool ToColorFolder(CTxColorFolder &folder) const;

private:
    QList<COLORREF> m_colors;
};
