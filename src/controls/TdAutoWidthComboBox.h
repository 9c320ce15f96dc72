#pragma once

#include "common/TdCommonExport.h"

#include <QComboBox>

/// A combo box whose list is as wide as its longest entry, however narrow the box is, and stays on its screen.
///
/// Made for long lists: opening one of 10,000 entries measures only the few that can be the longest, and shows
/// maxVisibleItems() of them beside a scroll bar. The wheel changes nothing as long as the box has no focus.
class TDCOMMON_API CTdAutoWidthComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit CTdAutoWidthComboBox(QWidget *parent = nullptr);
    ~CTdAutoWidthComboBox() override;

    /// The width in pixels that the entries need in the list, with icons, margins and scroll bar; 0 without entries.
    int GetDroppedWidth() const;

    void showPopup() override;
    void hidePopup() override;

protected:
    /// What the entry @p index needs beside its text and its icon, in pixels.
    virtual int extraWidth(const QModelIndex &index) const;

    void initStyleOption(QStyleOptionComboBox *option) const override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_showsLongList = false;
};
