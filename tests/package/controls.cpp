// A form of a stranger: an edit for an angle, and the dialogs of colours. It ends by itself: 0 when all works.
#include <QApplication>
#include <QKeyEvent>
#include <colour/TdDlgRibbon.h>
#include <colour/TdIDEDlgColorSet.h>
#include <controls/AngleParser.h>
#include <controls/TdDMSMakEdit.h>
#include <controls/TdNumEdit.h>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    CTdDMSMakEdit angle;
    angle.SetMask(QStringLiteral("####:##:##.####"));
    angle.SetDegree(AngleParser::parse(QStringLiteral("45 30 15.2 S")).degrees);
    angle.show();
    if (angle.text() != QStringLiteral("- 45:30:15.2000"))
        return 1;
    CTdNumEdit number;
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QCoreApplication::sendEvent(&number, &letter);
    if (!number.text().isEmpty())
        return 2;
    CTdDlgRibbon ramp;
    CTdIDEDlgColorSet colors;
    for (QDialog *dialog : {static_cast<QDialog *>(&ramp), static_cast<QDialog *>(&colors)}) {
        dialog->show();
        if (dialog->grab().isNull())
            return 3;
    }
    return 0;
}
