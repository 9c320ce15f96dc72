#pragma once

#include <QEvent>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

/// Ends the process as soon as a window is on the screen for the first time, for the start-up benchmark.
class FirstPaint : public QObject
{
public:
    explicit FirstPaint(QWidget *window) : QObject(window) { window->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // What is queued here runs when the whole window, its children included, has been painted and shown.
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, this, [] {
                std::puts("painted");
                std::fflush(stdout);
                std::_Exit(0);
            });
        return QObject::eventFilter(watched, event);
    }
};
