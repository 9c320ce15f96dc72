#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QListView>

class ColorListModel;
class CTxColorFolder;

/// A list of colours like the legend of heights: every row a swatch and its 0-based index, the last colour in the top
/// row, the first in the bottom row. Colours are named by their index, never by their row.
class TDCOMMON_API CTdColorListBox : public QListView
{
    Q_OBJECT

public:
    explicit CTdColorListBox(QWidget *parent = nullptr);
    ~CTdColorListBox() override;

    /// Empties the list, clears the selection and reckons anew how many rows show.
    void InitColor();
    /// Adds a colour at the end (in the top row).
    void AddColor(COLORREF color);
    /// Inserts a colour before the one at 0-based @p index; an index out of range is the nearer end. The selected
    /// colour stays selected.
    void InsertColor(qint32 index, COLORREF color);
    /// Removes the colour at @p index; nothing happens when out of range. After the selected colour the one that comes
    /// into its row is selected, or the one in the last row.
    void RemoveColor(qint32 index);
    /// The index of the selected colour, -1 when none is selected.
    qint32 GetSelIndex() const;

    /// Selects the colour at @p index and scrolls to it; out of range selects none.
    void SelectIndex(qint32 index);
    /// Shows @p color in place of the colour at @p index; nothing happens when out of range.
    void SetColor(qint32 index, COLORREF color);
    /// Shows @p colors in place of all colours, at once however many there are. The selection stays where it was as
    /// long as their number is the same, else it is cleared.
    void SetColors(const CTxColorFolder &colors);
    /// The colours that show, in order of their index.
    const CTxColorFolder &GetColors() const;
    /// How many whole rows fit in, reckoned by the last InitColor().
    int GetVisibleRowCount() const { return m_visibleRows; }

Q_SIGNALS:
    /// Another colour is selected, or none.
    void selectionMoved();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;

private:
    ColorListModel *const m_model; // a child
    int m_visibleRows = 0;
};
