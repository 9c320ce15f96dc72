#pragma once

#include "colour/HResult.h"
#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QEventLoopLocker>
#include <QList>
#include <QObject>

#include <memory>

class CTxColorFolder;
class TdColorsEnum;

/// An ordered list of colours that other programs can fill and read: ColorsDispatch.h numbers its members for scripts,
/// ColorsServer offers it on the session bus, docs/automation.md tells how to drive it.
///
/// Indices count from 1. An index that is out of range is no error: getters give 0, setters do nothing, operations
/// answer 0 or false. Colours are COLORREF values; all 32 bits are kept as they are given.
///
/// While one lives, the application does not end by itself when its last window closes. It needs a QCoreApplication.
class TDCOMMON_API CTdColors : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int Count READ GetCount)

public:
    Q_INVOKABLE explicit CTdColors(QObject *parent = nullptr);
    ~CTdColors() override;

    /// How many colours there are.
    qint32 GetCount() const { return static_cast<qint32>(m_colors.size()); }
    /// Refuses: the property is read-only. @return CTL_E_SETNOTSUPPORTED
    HResult SetCount(int count);
    /// Removes up to @p count colours from @p index on.
    /// @return how many were removed: 0 also when the index is out of range or the count below 1
    Q_INVOKABLE int Remove(int index, int count);
    /// Inserts a colour before the one at @p index; an index below 1 is the first, one above Count appends.
    /// @return true
    Q_INVOKABLE bool InsertAt(int index, int color);
    /// Swaps two colours. @return false when an index is out of range
    Q_INVOKABLE bool Exchange(int first, int second);
    Q_INVOKABLE void RemoveAll();
    /// Adds a colour at the end. @return true
    Q_INVOKABLE bool Add(int color);
    /// The colour at @p index, 0 when out of range. It is the default member.
    Q_INVOKABLE int GetItem(int index) const;
    /// Replaces the colour at @p index; nothing happens when out of range.
    Q_INVOKABLE void SetItem(int index, int color);
    /// A new enumerator that stands before the first colour (the member "_NewEnum"). It may outlive the list.
    std::unique_ptr<TdColorsEnum> GetNewEnum() const;

    /// Replaces the list by a ramp from one colour to another, given as OleColor.h tells.
    /// @return how many colours were made; 0, with the list as it was, when one of the two means no colour
    Q_INVOKABLE int MakeGradientColorset(int count, int color1, int color2);
    /// Replaces the list by a ramp through the colours of @p colors, another CTdColors or this one.
    /// @return how many colours were made; 0, with the list as it was, when @p colors is none
    Q_INVOKABLE int MakeGradientColorsetEx(int count, QObject *colors);
    /// Replaces the list by the engine's stock ramp @p style. @return how many colours were made
    Q_INVOKABLE int MakeStockGradientColorset(int count, int style, bool reverse);
    /// Replaces the list by random colours, the same ones for all calls within a second. @return the new Count: 0 for a
    /// count below 1 or above CTxColorFolder::maxGradientCount
    Q_INVOKABLE int MakeRandomColorset(int count);

    /// Replaces the list by the folder's colours. @return true when there are any
    bool FromColorFolder(const CTxColorFolder &folder);
    /// Replaces the folder's colours by the list's. @return true when there are any
    bool ToColorFolder(CTxColorFolder &folder) const;

private:
    bool has(int index) const { return index >= 1 && index <= m_colors.size(); }

    QList<COLORREF> m_colors;
    QEventLoopLocker m_applicationLock;
};
