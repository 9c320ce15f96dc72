#pragma once

#include <QCursor>
#include <QGuiApplication>

/// Shows the wait cursor while it lives. May be nested; does nothing where there is no application.
class WaitCursor
{
public:
    WaitCursor()
    {
        if (m_shown)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
    ~WaitCursor()
    {
        if (m_shown)
            QGuiApplication::restoreOverrideCursor();
    }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;

private:
    const bool m_shown = qGuiApp != nullptr;
};
