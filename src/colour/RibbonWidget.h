#pragma once

#include "colour/RibbonColumns.h"
#include "colour/RibbonStops.h"

#include <QWidget>

class RibbonGeometry;

/// The ribbon with the markers of its stops: shows a ramp and edits it by mouse. Its rectangle is the ribbon's frame.
///
/// The ramp tells of no changes: who changes it calls refresh(), which repaints what looks different.
class RibbonWidget : public QWidget
{
    Q_OBJECT

public:
    explicit RibbonWidget(QWidget *parent = nullptr);
    ~RibbonWidget() override;

    /// The ramp to show and edit, null for none. Not owned; must live until another is set.
    void setRibbon(RibbonStops *ribbon);
    const RibbonStops *ribbon() const { return m_ribbon; }
    const RibbonColumns &columns() const { return m_columns; }
    RibbonGeometry ribbonGeometry() const;

    /// Takes over that the ramp changed, and repaints the columns and markers that look different.
    void refresh();
    /// Selects a stop as a click on its marker does; -1 for none.
    void select(qint32 index);
    /// What is said of a stop: its number, value and colour.
    QString stopName(qint32 index) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user selected a stop, or none.
    void selectionChanged();
    /// The user moved the selected stop.
    void stopMoved();
    /// The user wants a new stop at pixel @p x.
    void insertRequested(int x);
    /// The user wants another colour for the selected stop.
    void colorRequested();
    /// The columns are not what they were.
    void columnsChanged();

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void repaintColumns(const RibbonColumns &next);
    void repaintMarkers();
    void endDrag();
    void showCursor(QPoint point);

    RibbonStops *m_ribbon = nullptr;
    RibbonColumns m_columns;              ///< as painted
    std::vector<RibbonStop> m_shownStops; ///< as painted
    qint32 m_shownSelection = -1;         ///< as painted
    bool m_isDragging = false;
};
