#pragma once

#include "common/TdCommonExport.h"

#include <QHeaderView>

/// The header of a report list, with sort marks and check boxes.
///
/// A section has a check box when the model gives it a state in Qt::CheckStateRole of its header data; a click on the
/// box, or Space, asks the model for the other state by setHeaderData(). A click on the rest of the section, or Enter,
/// moves the sort mark to it or turns it round, which sorts views whose sorting is enabled.
/// The header takes part in the tab chain: the arrow keys, Home and End move along it, Down goes back to the list.
class TDCOMMON_API CTdHeaderCtrl : public QHeaderView
{
    Q_OBJECT

public:
    explicit CTdHeaderCtrl(Qt::Orientation orientation = Qt::Horizontal, QWidget *parent = nullptr);
    ~CTdHeaderCtrl() override;

    /// Whether the section shows a check box; no for sections out of range.
    bool HasCheckBox(int section) const;
    /// What the box of the section shows; Qt::Unchecked for sections without one.
    Qt::CheckState GetCheckState(int section) const;
    /// The place of the section's box in the viewport; empty without one.
    QRect GetCheckBoxRect(int section) const;
    /// Shows the sort mark on @p section without sorting; -1, or a section out of range, takes it away.
    void SetSortMark(int section, Qt::SortOrder order = Qt::AscendingOrder);
    /// The section with the sort mark, -1 without one.
    int GetSortSection() const;
    /// The section that the keys act on, -1 when there is none.
    int GetCurrentSection() const;

Q_SIGNALS:
    /// The user clicked the box of @p section, or pressed Space on it; @p state is what the model made of it.
    void checkBoxClicked(int section, Qt::CheckState state);

protected:
    bool event(QEvent *event) override;
    void paintSection(QPainter *painter, const QRect &rect, int section) const override;
    QSize sectionSizeFromContents(int section) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    QRect checkBoxRect(const QRect &section) const;
    int checkBoxAt(const QPoint &position) const;
    void clickCheckBox(int section);
    void sortBy(int section);
    void moveTo(int visual, int step);
    void describe();

    int m_current = 0;     ///< logical index of the section that the keys act on
    int m_pressedBox = -1; ///< logical index of the section whose box the mouse was pressed on
};
