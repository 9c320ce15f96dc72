#include "bench/FirstPaint.h"

#include <QApplication>
#include <QDialog>

/// The least that a program with a window can be: what the desktop's start is measured against.
int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QDialog dialog;
    const FirstPaint firstPaint(&dialog);
    dialog.show();
    return QApplication::exec();
}
