#pragma once

#include "basic/TdBasicExport.h"

#include <QObject>
#include <QPointer>

class QDropEvent;
class QWidget;

/// A drop target: turns the drags that come over a widget into host messages to that widget.
///
/// The widget gets CTdHostMessage DragEnter when a drag comes in, DragOver while it moves, and Drop when it is let go.
/// The message's position is in the widget's coordinates. The answer (setResult()) is the Qt::DropAction that the
/// widget wants; 0, or an action that the drag does not offer, refuses. A refused DragEnter does not end the drag: the
/// next DragOver is asked again. The widget itself never sees the drag events.
class TDBASIC_API COleDropTargetEx : public QObject
{
    Q_OBJECT

public:
    explicit COleDropTargetEx(QObject *parent = nullptr);
    ~COleDropTargetEx() override;

    /// Makes @p widget take drops (of a scroll area or item view: its viewport). A widget registered before is let go.
    /// @return false when @p widget is null.
    bool Register(QWidget *widget);
    /// Lets the widget go; it no longer takes drops.
    void Revoke();
    /// The widget that gets the messages; null when there is none, or it is gone.
    QWidget *GetWidget() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void forward(QDropEvent &event) const;

    QPointer<QWidget> m_widget; // gets the messages; not owned
    QPointer<QWidget> m_area;   // gets the drag events: the widget or its viewport; not owned
};
