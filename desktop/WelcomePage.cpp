#include "WelcomePage.h"

#include <QFont>
#include <QLabel>
#include <QVBoxLayout>

WelcomePage::WelcomePage(QWidget *parent) : QWidget(parent)
{
    auto *title = new QLabel(tr("No map is open"));
    QFont font = title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    title->setFont(font);
    title->setAlignment(Qt::AlignCenter);
    auto *hint =
        new QLabel(tr("Double-click a dataset or a map in the workspace tree,\nor drop files here to open them."));
    hint->setAlignment(Qt::AlignCenter);
    hint->setForegroundRole(QPalette::PlaceholderText);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch(2);
    layout->addWidget(title);
    layout->addSpacing(6);
    layout->addWidget(hint);
    layout->addStretch(3);
}
