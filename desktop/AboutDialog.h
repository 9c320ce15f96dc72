#pragma once

#include <QDialog>

/// What the program is, its version and what it stands on.
class AboutDialog : public QDialog
{
    Q_OBJECT
public:
    explicit AboutDialog(QWidget *parent = nullptr);
};
