#pragma once

#include <QWidget>

/// What the middle of the main window shows while no map and no table is open: how to begin.
class WelcomePage : public QWidget
{
    Q_OBJECT
public:
    explicit WelcomePage(QWidget *parent = nullptr);
};
