#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"
#include "engine/symbol/TxColorFolder.h"

#include <QListWidget>

/// A list of colours like the legend of heights: every row a swatch and its 0-based index, the last colour in the top
/// row, the first in the bottom row.
class TDCOMMON_API CTdColorListBox : public QListWidget
{
    Q_OBJECT

public:
    explicit CTdColorListBox(QWidget *parent = nullptr);
    ~CTdColorListBox() override;

    /// Empties the list and clears the selection.
    void InitColor();
    /// Adds a colour at the end (in the top row).
    void AddColor(COLORREF color);
    /// Inserts a colour before the one at 0-based @p index.
    void InsertColor(qint32 index, COLORREF color);
    /// Removes the colour at @p index; nothing happens when out of range.
    void RemoveColor(qint32 index);
    /// The index of the selected colour, -1 when none is selected.
    qint32 GetSelIndex() const;

    /// The colours that show, in order of their index.
    const CTxColorFolder &GetColors() const { return m_colors; }

private:
    CTxColorFolder m_colors;
};
