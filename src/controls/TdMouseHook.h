#pragma once

#include "common/TdCommonExport.h"

#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

class QMouseEvent;

/// Watches the mouse in all windows of the program for as long as it exists: pop-ups close at a click beside them, an
/// entry ends at a click anywhere else, what follows the mouse learns that it has gone.
///
/// It only watches: who was clicked gets the event afterwards. Each event is told once, however many controls pass it
/// on to what they stand in. Where another window has taken the mouse (an open menu, a drag of a slider), places and
/// what lies under them are told as the user sees them.
///
/// Any number may exist at once, and be made and deleted by those whom they tell; those may also delete what was
/// clicked, which then gets no event, or run a dialog. User-interface thread only.
class TDCOMMON_API CTdMouseHook : public QObject
{
    Q_OBJECT

public:
    /// Watches from now on.
    explicit CTdMouseHook(QObject *parent = nullptr);
    ~CTdMouseHook() override;

    /// With widgets set, what happens inside them is not told: on them, on what stands in them, and on the windows that
    /// they opened. None at first. Those that are deleted are forgotten.
    void SetInside(const QList<QWidget *> &widgets);

    /// A hook that is not active tells nothing.
    bool IsActive() const { return m_isActive; }
    void SetActive(bool active);

Q_SIGNALS:
    /// A button went down, also the second time of a double click. @param under null where no widget of the program is
    /// @param place on the screen
    void pressed(QWidget *under, const QPoint &place, Qt::MouseButton button);
    void released(QWidget *under, const QPoint &place, Qt::MouseButton button);
    /// The mouse moved, with or without a button.
    void moved(QWidget *under, const QPoint &place);
    /// The mouse came into the widgets that are set (where none are: into any window of the program), or left them.
    void crossed(bool inside);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// What tells an event from the next.
    struct Trace
    {
        QPointer<QWidget> receiver;
        int type = 0;
        quint64 time = 0;
        QPointF place;
    };
    bool isPassedOn(QWidget *receiver, const QMouseEvent &event);
    bool isInside(const QWidget *widget) const;
    void tell(QWidget *under, const QMouseEvent &event);
    void cross(bool inside);

    QList<QPointer<QWidget>> m_inside;
    Trace m_last;
    bool m_isActive = false;
    bool m_isMouseInside = false;
};
